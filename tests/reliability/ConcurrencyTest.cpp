#include "reliability/Clips.h"

namespace Oru::Reliability {

class ConcurrencyTest : public testing::TestWithParam<const char*> {
 protected:
  // Repeats each work in a thread of its own for two seconds, and looks at the file that they share.
  void RunThreads(const std::vector<std::function<void(int)>>& works) {
    std::vector<std::thread> threads;
    threads.reserve(works.size());
    for (const auto& work : works) {
      threads.emplace_back([&work, end = Clock::now() + std::chrono::seconds(2)] {
        for (int round = 1; Clock::now() < end; ++round)
          work(round);
      });
    }
    for (std::thread& thread : threads)
      thread.join();
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(Faults(path), "");
  }

  const TestSupport::TemporaryDirectory directory;
  const std::string path = directory.File("clips.db");
  TestSupport::CapturedLog log;
  DataModelDatabase shared{"file:" + path + "?_synchronous=off&_journal_mode=" + GetParam(), log.Stream()};
};

TEST_P(ConcurrencyTest, ThreadsShareADatabaseThroughTablesOfTheirOwn) {
  shared.Open();
  MediaAsset clip = MakeClip("shared", 1);
  ASSERT_TRUE(shared.GetMediaAssetTable().Save(clip));
  const auto assets = [&](int worker) {
    return [worker, table = std::make_shared<MediaAssetTable>(shared)](int round) {
      MediaAsset own = MakeClip(std::to_string(worker), round);
      EXPECT_TRUE(table->Save(own));
      MediaAsset read;
      EXPECT_TRUE(table->GetObject(own.ObjectId(), read));
      table->ReadMediaResources(read);
      table->ReadTrack(read);
      EXPECT_EQ(read.Name(), own.Name());
      EXPECT_EQ(read.Tracks().Size(), 2U);
    };
  };
  RunThreads({assets(1), assets(2),
              [&](int round) {
                AnglesMediaAssetGroup group = MakeGroup("group", round, {"shared", "shared"});
                EXPECT_TRUE(shared.GetAnglesMediaAssetGroupTable().Save(group));
              },
              [&](int round) {
                Edits::Edit edit("edit");
                edit.Name(std::to_string(round));
                EXPECT_TRUE(shared.GetEditTable().Save(edit));
                EXPECT_EQ(TestSupport::Value(shared, "SELECT name FROM Edit WHERE id = 'edit'"), edit.Name());
              }});
}

// Each operation has the connection to itself: what one thread has refused takes nothing of the others along, and
// no change is lost.
TEST_P(ConcurrencyTest, ThreadsShareADatabaseThroughRepositoriesOfTheirOwn) {
  shared.Open();
  MediaAsset changed = MakeClip("shared", 0);
  MediaAssetRepository(shared).Put(changed);
  std::atomic<int> changes = 0;
  const auto clips = [&](const std::string& worker) {
    return [&, worker, repository = std::make_shared<MediaAssetRepository>(shared)](int round) {
      std::vector<MediaAsset> batch;
      for (const char* number : {"/0", "/1", "/2"})
        batch.push_back(MakeClip(worker + number, round));
      batch[0].MediaResources().Insert(Identifier("none"));
      EXPECT_EQ(repository->PutAll(batch).size(), 1U);
      repository->Change("shared", [&](MediaAsset& asset) { asset.Description(std::to_string(++changes)); });
      for (MediaAsset& asset : repository->Each(MediaAssetSearch(), MediaAssetParts::All))
        EXPECT_EQ(asset.Tracks().Size(), 2U);
      EXPECT_EQ(repository->Remove(batch[1].Id()), RemoveOutcome::Removed);
      EXPECT_EQ(repository->Find(batch[2].Id()), batch[2]);
    };
  };
  MediaAssetGroupRepository groups(shared);
  Edits::Database::EditRepository edits(shared);
  RunThreads({clips("a"), clips("b"), [&](int round) {
                AnglesMediaAssetGroup group = MakeGroup("group", round, {"shared", "shared"});
                groups.Put(group);
                EXPECT_EQ(groups.FindAngles(group.Id()), group);
                Edits::Edit edit("edit");
                edit.Name(std::to_string(round));
                edits.Put(edit);
                EXPECT_EQ(edits.Find(edit.Id()), edit);
              }});
  EXPECT_EQ(MediaAssetRepository(shared).Find("shared")->Description(), std::to_string(changes));
}

INSTANTIATE_TEST_SUITE_P(Journal, ConcurrencyTest, testing::Values("delete", "wal"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace Oru::Reliability
