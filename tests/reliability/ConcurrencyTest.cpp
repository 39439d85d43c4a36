#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"

#include "reliability/ChildProcess.h"
#include "reliability/Clips.h"

namespace Oru::Reliability {

namespace Edits = BusinessEntityModel::Edits;
using namespace DataModel::MediaAssets::Database;
using Clock = std::chrono::steady_clock;

namespace {

std::string ClipId(int worker, int number) {
  return std::to_string(worker) + "/" + std::to_string(number);
}

}  // namespace

class ConcurrencyTest : public testing::TestWithParam<const char*> {
 protected:
  // Repeats each work in a thread of its own for two seconds, and closes the database that they share.
  void RunThreads(const std::vector<std::function<void(int)>>& works) {
    std::vector<std::thread> threads;
    for (const auto& work : works) {
      threads.emplace_back([&work, end = Clock::now() + std::chrono::seconds(2)] {
        for (int round = 1; Clock::now() < end; ++round)
          work(round);
      });
    }
    for (std::thread& thread : threads)
      thread.join();
    EXPECT_EQ(log.Text(), "");
    shared.Close();
    ExpectSound();
  }
  void ExpectSound() {
    EXPECT_EQ(Faults(path), "");
    EXPECT_FALSE(HasSideFiles(path));
  }

  const TestSupport::TemporaryDirectory directory;
  const std::string path = directory.File("clips.db");
  const std::string connection = "file:" + path + "?_busy_timeout=20000&_journal_mode=" + GetParam();
  TestSupport::CapturedLog log;
  DataModelDatabase shared{connection + "&_synchronous=off", log.Stream()};
};

TEST_P(ConcurrencyTest, ProcessesOpenANewFileAtOnce) {
  for (int round = 0; round < (IsLong() ? 200 : 20) && !HasFailure(); ++round) {
    Restore(path, "");
    const auto begin = Clock::now() + std::chrono::milliseconds(20);
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int worker = 0; worker < 4; ++worker) {
      children.push_back(std::make_unique<ChildProcess>([&, worker](int pipe) {
        std::this_thread::sleep_until(begin);
        DataModelDatabase db(connection, log.Stream());
        db.Open();
        MediaAsset clip = MakeClip(ClipId(worker, 0), 1);
        MediaAssetRepository(db).Put(clip);
        const std::string text = log.Text();
        return StoredVersion(db, ClipId(worker, 0)) == 1 && write(pipe, text.data(), text.size()) == 0;
      }));
    }
    for (const auto& child : children) {
      EXPECT_EQ(child->Heard(), "");
      EXPECT_TRUE(child->Succeeds());
    }
    ExpectSound();
  }
}

// A transaction would be that of all the threads, and a deletion would clean up after half-done saves:
// neither is for threads that share a connection.
TEST_P(ConcurrencyTest, ThreadsShareADatabaseThroughTablesOfTheirOwn) {
  shared.Open();
  MediaAsset clip = MakeClip("shared", 1);
  ASSERT_TRUE(shared.GetMediaAssetTable().Save(clip));
  const auto assets = [&](int worker) {
    return [worker, table = std::make_shared<MediaAssetTable>(shared)](int round) {
      MediaAsset own = MakeClip(ClipId(worker, 0), round);
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
  const auto clips = [&](int worker) {
    return [worker, &changes, repository = std::make_shared<MediaAssetRepository>(shared)](int round) {
      MediaAsset own = MakeClip(ClipId(worker, 0), round);
      repository->Put(own);
      std::vector<MediaAsset> batch;
      for (int number : {0, 1, 2})
        batch.push_back(MakeClip(ClipId(worker, number), round));
      batch[0].MediaResources().Insert(BusinessEntityModel::BaseTypes::Identifier("none"));
      EXPECT_EQ(repository->PutAll(batch).size(), 1U);
      EXPECT_EQ(repository->Find(own.Id()), own);
      repository->Change("shared", [&](MediaAsset& asset) { asset.Description(std::to_string(++changes)); });
      for (MediaAsset& asset : repository->Each(MediaAssetSearch(), MediaAssetParts::All))
        EXPECT_EQ(asset.Tracks().Size(), 2U);
      EXPECT_EQ(repository->Remove(batch[1].Id()), RemoveOutcome::Removed);
      EXPECT_EQ(repository->Find(batch[2].Id()), batch[2]);
    };
  };
  MediaAssetGroupRepository groups(shared);
  Edits::Database::EditRepository edits(shared);
  RunThreads({clips(1), clips(2),
              [&](int round) {
                AnglesMediaAssetGroup group = MakeGroup("group", round, {"shared", "shared"});
                groups.Put(group);
                EXPECT_EQ(groups.FindAngles(group.Id()), group);
                EXPECT_EQ(groups.All().size(), 1U);
              },
              [&](int round) {
                Edits::Edit edit("edit");
                edit.Name(std::to_string(round));
                edit.Sequences().Add(Edits::Sequence("sequence"));
                edits.Put(edit);
                EXPECT_EQ(edits.Find(edit.Id()), edit);
              }});
  shared.Open();
  EXPECT_EQ(MediaAssetRepository(shared).Find("shared")->Description(), std::to_string(changes));
}

INSTANTIATE_TEST_SUITE_P(Journal, ConcurrencyTest, testing::Values("delete", "wal"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace Oru::Reliability
