#include "Oru/DataModel/MediaAssets/Database/Rows/UnusedRows.h"

#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "support/CapturedLog.h"
#include "support/ClipBuilder.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Sqlite::TransactionGuard;

class UnusedRowsTest : public testing::Test {
 protected:
  UnusedRowsTest() { database.Open(); }

  void Store(const std::string& id, const std::string& resource, const std::string& track) {
    MediaAsset asset{MediaAssetId(id)};
    asset.MediaResources().Insert(TestSupport::MakeResource(resource));
    asset.Tracks().Insert(std::make_shared<Track>(TrackId(track)));
    EXPECT_TRUE(assets.Save(asset)) << log.Text();
  }
  bool Delete(const std::string& id) {
    return assets.Delete(assets.GetObjectIdFromIdentifier(MediaAssetId(id)));
  }
  std::vector<std::string> Shared() {
    return TestSupport::Column(database,
                               "SELECT id FROM MediaResource UNION ALL SELECT id FROM Track ORDER BY 1");
  }
  using Ids = std::vector<std::string>;

  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string file = "file:" + directory.File("clips.db") + "?_busy_timeout=0&_synchronous=off";
  DataModelDatabase database{file, log.Stream()};
  MediaAssetTable& assets = database.GetMediaAssetTable();
};

TEST_F(UnusedRowsTest, ALockedOrClosedDatabaseIsRefusedWithoutAnException) {
  Store("m1", "r1", "t1");
  ASSERT_TRUE(assets.CleanUpDependentData());
  Store("m2", "r2", "t2");
  ASSERT_TRUE(database.GetRelationMediaAssetMediaResource().DeleteAll());
  {
    DataModelDatabase other(file, nullptr);
    other.Open();
    ASSERT_TRUE(other.ExecuteStatement("BEGIN EXCLUSIVE"));
    EXPECT_FALSE(assets.CleanUpDependentData());
    EXPECT_TRUE(log.Contains("database is locked"));
    ASSERT_TRUE(other.ExecuteStatement("COMMIT; DELETE FROM RelationAssetTrack"));
  }
  ASSERT_TRUE(assets.CleanUpDependentData());
  EXPECT_EQ(Shared(), Ids());

  database.Close();
  EXPECT_FALSE(assets.DeleteUnusedMediaResources() || assets.DeleteUnusedTracks() ||
               assets.DeleteEmptyAssetGroups() || assets.CleanUpDependentData());
  EXPECT_TRUE(log.Contains("closed database"));
  database.Open();
  EXPECT_TRUE(assets.CleanUpDependentData());
}

// With the tables go the triggers that note changes.
TEST_F(UnusedRowsTest, LooksAtAllAgainAfterALinkTableWasMadeNewAndFailsWithoutOne) {
  const char* const rebuilds[] = {
      "CREATE TABLE Fresh AS SELECT * FROM RelationAssetTrack; DROP TABLE RelationAssetTrack;"
      "ALTER TABLE Fresh RENAME TO RelationAssetTrack",
      "ALTER TABLE RelationAssetTrack RENAME TO Old;"
      "CREATE TABLE RelationAssetTrack AS SELECT * FROM Old"};
  for (const char* rebuild : rebuilds) {
    Store("m1", "r1", "t1");
    Store("m2", "r2", "t2");
    ASSERT_TRUE(assets.CleanUpDependentData());
    ASSERT_TRUE(database.ExecuteStatement(rebuild)) << log.Text();
    ASSERT_TRUE(database.ExecuteStatement(
        "DELETE FROM RelationAssetTrack WHERE refTrack = (SELECT key FROM Track WHERE id = 't1')"));
    EXPECT_TRUE(assets.DeleteUnusedTracks()) << log.Text();
    EXPECT_EQ(Shared(), (Ids{"r1", "r2", "t2"})) << rebuild;
    // The links of a table without foreign keys stay until they are deleted.
    ASSERT_TRUE(database.ExecuteStatement("DELETE FROM RelationAssetTrack; DELETE FROM MediaAsset"));
    ASSERT_TRUE(assets.CleanUpDependentData());
    EXPECT_EQ(Shared(), Ids());
  }
  EXPECT_EQ(log.Text(), "");
  Store("m1", "r1", "t1");
  ASSERT_TRUE(database.ExecuteStatement("DROP TABLE RelationAssetTrack"));
  EXPECT_FALSE(assets.DeleteUnusedTracks());
  EXPECT_FALSE(Delete("m1"));
  EXPECT_TRUE(log.Contains("no such table: RelationAssetTrack")) << log.Text();
  EXPECT_EQ(Shared(), Ids{"t1"}) << "the resources go first";
}

// Each thread deletes through a table of its own while others do and one saves groups, begins and ends
// transactions; the first deletions of a connection meet in particular.
TEST_F(UnusedRowsTest, ThreadsOfOneConnectionMayDeleteAtOnce) {
  constexpr int perThread = 4, deleters = 3;
  for (int round = 0; round < 10; ++round) {
    for (int i = 0; i < perThread * deleters; ++i)
      Store("m" + std::to_string(i), "r" + std::to_string(i / 2), "t" + std::to_string(i));
    Store("m100", "r100", "t100");
    database.Close();
    database.Open();

    std::atomic<int> ready{0};
    const auto meet = [&] {
      for (++ready; ready < deleters + 1;)
        std::this_thread::yield();
    };
    std::vector<std::thread> threads;
    for (int number = 0; number < deleters; ++number) {
      threads.emplace_back([&, number] {
        MediaAssetTable table(database);
        meet();
        for (int i = number; i < perThread * deleters; i += deleters)
          EXPECT_TRUE(table.Delete(table.GetObjectIdFromIdentifier(MediaAssetId("m" + std::to_string(i)))));
      });
    }
    threads.emplace_back([&] {
      meet();
      for (int i = 0; i < 10; ++i) {
        TransactionGuard transaction(database);
        BusinessEntityModel::Edits::Edit edit(BusinessEntityModel::Edits::EditId("edit"));
        EXPECT_TRUE(database.GetEditTable().Save(edit));
        EXPECT_EQ(edit.ObjectId(), database.GetEditTable().GetObjectIdFromIdentifier(edit.Id()));
        transaction.Commit();
      }
    });
    for (std::thread& thread : threads)
      thread.join();
    ASSERT_EQ(Shared(), (Ids{"r100", "t100"})) << "round " << round << "\n" << log.Text();
  }
  EXPECT_EQ(log.Text(), "");
}

}  // namespace Oru::DataModel::MediaAssets::Database
