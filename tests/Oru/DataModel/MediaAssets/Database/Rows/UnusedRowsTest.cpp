#include "Oru/DataModel/MediaAssets/Database/Rows/UnusedRows.h"

#include "support/DatabasePrelude.h"

namespace Oru::DataModel::MediaAssets::Database {

class UnusedRowsTest : public testing::Test {
 protected:
  UnusedRowsTest() { database.Open(); }

  void Store(int number, int resource) {
    MediaAsset asset{MediaAssetId("m" + std::to_string(number))};
    asset.MediaResources().Insert(TestSupport::MakeResource("r" + std::to_string(resource)));
    asset.Tracks().Insert(std::make_shared<Track>(TrackId("t" + std::to_string(number))));
    EXPECT_TRUE(assets.Save(asset)) << log.Text();
  }
  std::string Shared() {
    return TestSupport::Value(database,
                              "SELECT ifnull(group_concat(id, ' '), '') FROM (SELECT id FROM MediaResource"
                              " UNION ALL SELECT id FROM Track ORDER BY 1)");
  }

  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string file = "file:" + directory.File("clips.db") + "?_busy_timeout=0&_synchronous=off";
  DataModelDatabase database{file, log.Stream()};
  MediaAssetTable& assets = database.GetMediaAssetTable();
};

TEST_F(UnusedRowsTest, ALockedOrClosedDatabaseIsRefusedWithoutAnException) {
  Store(1, 1);
  ASSERT_TRUE(assets.CleanUpDependentData());
  Store(2, 2);
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
  EXPECT_EQ(Shared(), "");
  database.Close();
  EXPECT_FALSE(assets.DeleteUnusedMediaResources() || assets.DeleteUnusedTracks() ||
               assets.DeleteEmptyAssetGroups() || assets.CleanUpDependentData());
  EXPECT_TRUE(log.Contains("closed database"));
}

// With the tables go the triggers that note changes.
TEST_F(UnusedRowsTest, LooksAtAllAgainAfterALinkTableWasMadeNewAndFailsWithoutOne) {
  for (const char* rebuild :
       {"CREATE TABLE Fresh AS SELECT * FROM RelationAssetTrack; DROP TABLE RelationAssetTrack;"
        "ALTER TABLE Fresh RENAME TO RelationAssetTrack",
        "ALTER TABLE RelationAssetTrack RENAME TO Old;"
        "CREATE TABLE RelationAssetTrack AS SELECT * FROM Old"}) {
    Store(1, 1);
    Store(2, 2);
    ASSERT_TRUE(assets.CleanUpDependentData());
    ASSERT_TRUE(database.ExecuteStatement(rebuild)) << log.Text();
    ASSERT_TRUE(database.ExecuteStatement(
        "DELETE FROM RelationAssetTrack WHERE refTrack = (SELECT key FROM Track WHERE id = 't1')"));
    EXPECT_TRUE(assets.DeleteUnusedTracks()) << log.Text();
    EXPECT_EQ(Shared(), "r1 r2 t2") << rebuild;
    // The links of a table without foreign keys stay until they are deleted.
    ASSERT_TRUE(database.ExecuteStatement("DELETE FROM RelationAssetTrack; DELETE FROM MediaAsset"));
    ASSERT_TRUE(assets.CleanUpDependentData());
    EXPECT_EQ(Shared(), "");
  }
  EXPECT_EQ(log.Text(), "");
  Store(1, 1);
  ASSERT_TRUE(database.ExecuteStatement("DROP TABLE RelationAssetTrack"));
  EXPECT_FALSE(assets.DeleteUnusedTracks() || assets.Delete(assets.GetObjectIdFromIdentifier("m1")));
  EXPECT_TRUE(log.Contains("no such table: RelationAssetTrack")) << log.Text();
  EXPECT_EQ(Shared(), "t1") << "the resources go first";
}

// Each thread deletes through a table of its own while others do and one saves edits, begins and ends
// transactions; the first deletions of a connection meet in particular.
TEST_F(UnusedRowsTest, ThreadsOfOneConnectionMayDeleteAtOnce) {
  constexpr int clips = 12, deleters = 3;
  for (int round = 0; round < 10; ++round) {
    for (int i = 0; i < clips; ++i)
      Store(i, i / 2);
    Store(100, 100);
    database.Close();
    database.Open();

    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int number = 0; number <= deleters; ++number) {
      threads.emplace_back([&, number] {
        MediaAssetTable table(database);
        for (++ready; ready <= deleters;)
          std::this_thread::yield();
        for (int i = number; number < deleters && i < clips; i += deleters)
          EXPECT_TRUE(table.Delete(table.GetObjectIdFromIdentifier(MediaAssetId("m" + std::to_string(i)))));
        for (int i = 0; number == deleters && i < 10; ++i) {
          TransactionGuard transaction(database);
          BusinessEntityModel::Edits::Edit edit(BusinessEntityModel::Edits::EditId("edit"));
          EXPECT_TRUE(database.GetEditTable().Save(edit));
          EXPECT_EQ(edit.ObjectId(), database.GetEditTable().GetObjectIdFromIdentifier(edit.Id()));
          transaction.Commit();
        }
      });
    }
    for (std::thread& thread : threads)
      thread.join();
    ASSERT_EQ(Shared(), "r100 t100") << "round " << round << "\n" << log.Text();
  }
  EXPECT_EQ(log.Text(), "");
}

}  // namespace Oru::DataModel::MediaAssets::Database
