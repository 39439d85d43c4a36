#include "Oru/BusinessEntityModel/Edits/Database/EditRepository.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "reliability/ChildProcess.h"
#include "reliability/Clips.h"
#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace Oru::Reliability {

namespace Edits = BusinessEntityModel::Edits;
using Common::Databases::Sqlite::ReadGuard;
using Common::Databases::Sqlite::TransactionGuard;
using namespace DataModel::MediaAssets::Database;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int WorkerCount = 4;

std::string ClipId(int worker, int number) {
  return std::to_string(worker) + "/" + std::to_string(number);
}

// Saves, reads and deletes clips of one worker until the time is up, every other worker by a repository. What it
// has saved and not deleted must be there all the time, and in a whole version.
// @return the log, with a line for each clip that was lost or refused
std::string Work(const std::string& connection, int worker, Clock::time_point end) {
  TestSupport::CapturedLog log;
  DataModelDatabase db(connection, log.Stream());
  db.Open();
  auto& assets = db.GetMediaAssetTable();
  MediaAssetRepository repository(db);
  std::vector<int> versions(5, 0);
  for (int round = 1; Clock::now() < end; ++round) {
    const int number = round % 5;
    MediaAsset clip = MakeClip(ClipId(worker, number), round);
    const bool isDeletion = round % 4 == 0 && versions[number] != 0;
    if (worker % 2 == 1) {
      if (isDeletion) {
        if (repository.Remove(clip.Id()) != RemoveOutcome::Removed) *log.Stream() << "gone\n";
      } else {
        repository.Put(clip);
      }
    } else {
      // Without a transaction, the clean-up of another worker's deletion could take a resource that is stored
      // and not linked yet.
      TransactionGuard transaction(db);
      if (isDeletion) clip.ObjectId(assets.GetObjectIdFromIdentifier(clip.Id()));
      if (!(isDeletion ? assets.Delete(clip) : assets.Save(clip))) *log.Stream() << "refused\n";
      transaction.Commit();
    }
    versions[number] = isDeletion ? 0 : round;
    const ReadGuard reading(db);
    for (int i = 0; i < 5; ++i) {
      if (StoredVersion(db, ClipId(worker, i)) != versions[i]) *log.Stream() << "lost\n";
    }
    StoredVersion(db, ClipId((worker + 1) % WorkerCount, number));
  }
  return log.Text();
}

Clock::time_point InSeconds(int seconds) {
  return Clock::now() + std::chrono::seconds(seconds);
}

void RunThreads(const std::vector<std::function<void()>>& works) {
  std::vector<std::thread> threads(works.begin(), works.end());
  for (std::thread& thread : threads)
    thread.join();
}

}  // namespace

class ConcurrencyTest : public testing::TestWithParam<const char*> {
 protected:
  void RunProcesses(Clock::time_point begin, Clock::time_point end) {
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int worker = 0; worker < WorkerCount; ++worker) {
      children.push_back(std::make_unique<ChildProcess>([&, worker](int pipe) {
        std::this_thread::sleep_until(begin);
        const std::string text = Work(connection, worker, end);
        return write(pipe, text.data(), text.size()) == 0;
      }));
    }
    for (const auto& child : children) {
      EXPECT_EQ(child->Heard(), "");
      EXPECT_TRUE(child->Succeeds());
    }
    ExpectSound();
  }
  void ExpectSound() {
    EXPECT_EQ(Faults(path), "");
    EXPECT_FALSE(HasSideFiles(path));
  }

  const TestSupport::TemporaryDirectory directory;
  const std::string path = directory.File("clips.db");
  const std::string connection = "file:" + path + "?_busy_timeout=20000&_journal_mode=" + GetParam();
};

TEST_P(ConcurrencyTest, ProcessesShareAFile) {
  RunProcesses(Clock::now(), InSeconds(IsLong() ? 30 : 4));
}

TEST_P(ConcurrencyTest, ThreadsShareAFileWithADatabaseEach) {
  std::vector<std::function<void()>> works;
  for (int worker = 0; worker < WorkerCount; ++worker) {
    works.push_back(
        [this, worker, end = InSeconds(IsLong() ? 30 : 4)] { EXPECT_EQ(Work(connection, worker, end), ""); });
  }
  RunThreads(works);
  ExpectSound();
}

TEST_P(ConcurrencyTest, ProcessesOpenANewFileAtOnce) {
  for (int round = 0; round < (IsLong() ? 200 : 20) && !HasFailure(); ++round) {
    Restore(path, "");
    RunProcesses(Clock::now() + std::chrono::milliseconds(20), Clock::now());
  }
}

// A transaction would be that of all the threads, and a deletion would clean up after half-done saves:
// neither is for threads that share a connection.
TEST_P(ConcurrencyTest, ThreadsShareADatabaseThroughTablesOfTheirOwn) {
  TestSupport::CapturedLog log;
  DataModelDatabase db(connection + "&_synchronous=off", log.Stream());
  db.Open();
  MediaAsset clip = MakeClip("shared", 1);
  ASSERT_TRUE(db.GetMediaAssetTable().Save(clip));
  const auto end = InSeconds(2);
  const auto assets = [&](int worker) {
    MediaAssetTable table(db);
    for (int round = 1; Clock::now() < end; ++round) {
      MediaAsset own = MakeClip(ClipId(worker, 0), round);
      EXPECT_TRUE(table.Save(own));
      MediaAsset read;
      EXPECT_TRUE(table.GetObject(own.ObjectId(), read));
      table.ReadMediaResources(read);
      table.ReadTrack(read);
      EXPECT_EQ(read.Name(), std::to_string(round));
      EXPECT_EQ(read.Tracks().Size(), 3U);
    }
  };
  RunThreads({[&] { assets(1); }, [&] { assets(2); },
              [&] {
                for (int round = 1; Clock::now() < end; ++round) {
                  AnglesMediaAssetGroup group = MakeGroup("group", round, {"shared", "shared"});
                  EXPECT_TRUE(db.GetAnglesMediaAssetGroupTable().Save(group));
                }
              },
              [&] {
                for (int round = 1; Clock::now() < end; ++round) {
                  Edits::Edit edit("edit");
                  edit.Name(std::to_string(round));
                  EXPECT_TRUE(db.GetEditTable().Save(edit));
                  EXPECT_EQ(TestSupport::Value(db, "SELECT name FROM Edit WHERE id = 'edit'"),
                            std::to_string(round));
                }
              }});
  EXPECT_EQ(log.Text(), "");
  db.Close();
  ExpectSound();
}

// Each operation has the connection to itself: what one thread has refused takes nothing of the others along, and
// no change is lost.
TEST_P(ConcurrencyTest, ThreadsShareADatabaseThroughRepositoriesOfTheirOwn) {
  TestSupport::CapturedLog log;
  DataModelDatabase db(connection + "&_synchronous=off", log.Stream());
  db.Open();
  MediaAsset shared = MakeClip("shared", 0);
  MediaAssetRepository(db).Put(shared);
  const auto end = InSeconds(2);
  std::atomic<int> changes = 0;
  const auto clips = [&](int worker) {
    MediaAssetRepository repository(db);
    for (int round = 1; Clock::now() < end; ++round) {
      MediaAsset own = MakeClip(ClipId(worker, 0), round);
      repository.Put(own);
      std::vector<MediaAsset> batch(3);
      for (int number : {0, 1, 2})
        batch[static_cast<std::size_t>(number)] = MakeClip(ClipId(worker, number), round);
      batch[0].MediaResources().Insert(BusinessEntityModel::BaseTypes::Identifier("none"));
      EXPECT_EQ(repository.PutAll(batch).size(), 1U);
      EXPECT_EQ(repository.Find(own.Id()), own);
      repository.Change(shared.Id(),
                        [&changes](MediaAsset& asset) { asset.Description(std::to_string(++changes)); });
      for (MediaAsset& asset : repository.Each(MediaAssetSearch(), MediaAssetParts::All))
        EXPECT_EQ(asset.Tracks().Size(), 3U);
      EXPECT_EQ(repository.Remove(batch[1].Id()), RemoveOutcome::Removed);
      EXPECT_EQ(repository.Find(batch[2].Id()), batch[2]);
    }
  };
  RunThreads({[&] { clips(1); }, [&] { clips(2); },
              [&] {
                MediaAssetGroupRepository groups(db);
                for (int round = 1; Clock::now() < end; ++round) {
                  AnglesMediaAssetGroup group = MakeGroup("group", round, {"shared", "shared"});
                  groups.Put(group);
                  EXPECT_EQ(groups.FindAngles(group.Id()), group);
                  EXPECT_EQ(groups.All().size(), 1U);
                }
              },
              [&] {
                Edits::Database::EditRepository edits(db);
                for (int round = 1; Clock::now() < end; ++round) {
                  Edits::Edit edit("edit");
                  edit.Name(std::to_string(round));
                  edit.Sequences().Add(Edits::Sequence("sequence"));
                  edits.Put(edit);
                  EXPECT_EQ(edits.Find(edit.Id()), edit);
                }
              }});
  EXPECT_EQ(log.Text(), "");
  EXPECT_EQ(MediaAssetRepository(db).Find(shared.Id())->Description(), std::to_string(changes));
  db.Close();
  ExpectSound();
}

INSTANTIATE_TEST_SUITE_P(Journal, ConcurrencyTest, testing::Values("delete", "wal"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace Oru::Reliability
