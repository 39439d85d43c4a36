#include "reliability/Clips.h"

#include <future>

namespace Oru::Reliability {

namespace {

// What another tool does to the tables. Each moves them, or gives them something that every write has to
// keep.
constexpr const char* Changes[] = {
    "CREATE INDEX OfTool ON MediaAsset(assetType, name); CREATE INDEX AlsoOfTool ON Annotation(data)",
    "CREATE TRIGGER OfTool AFTER UPDATE ON MediaAsset BEGIN INSERT INTO Seen VALUES (new.name); END",
    // So that the tables come to lie elsewhere.
    "DROP INDEX LookupMediaAssetName; DROP INDEX LookupEssenceRefStream; CREATE TABLE Other (a);"
    "CREATE INDEX LookupEssenceRefStream ON Essence(refStream); CREATE INDEX LookupMediaAssetName ON "
    "MediaAsset(name);"
    "DROP TABLE Other; VACUUM",
};

}  // namespace

class SchemaChangeTest : public testing::TestWithParam<const char*> {
 protected:
  const TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string path = directory.File("clips.db");
  const std::string connection = "file:" + path + "?_synchronous=off&_journal_mode=" + GetParam();
};

// SQLite notices that the tables have changed by a number that each opening sets back.
TEST_P(SchemaChangeTest, AnIdleConnectionNoticesWhatAnOpeningAfterItHides) {
  const std::function<void(DataModelDatabase&, MediaAsset&)> uses[] = {
      [](DataModelDatabase& db, MediaAsset& clip) { EXPECT_TRUE(db.GetMediaAssetTable().Save(clip)); },
      [](DataModelDatabase& db, MediaAsset& clip) {
        TransactionGuard transaction(db);
        EXPECT_TRUE(db.GetMediaAssetTable().Save(clip));
        transaction.Commit();
      },
      [](DataModelDatabase& db, MediaAsset& clip) {
        EXPECT_TRUE(db.ExecuteStatement("BEGIN"));
        EXPECT_TRUE(db.GetMediaAssetTable().Save(clip));
        EXPECT_TRUE(db.ExecuteStatement("COMMIT"));
      },
      [](DataModelDatabase& db, MediaAsset& clip) {
        {
          const ReadGuard reading(db);
          EXPECT_EQ(StoredVersion(db, "clip"), 1);
        }
        EXPECT_TRUE(db.GetMediaAssetTable().Save(clip));
      },
      [](DataModelDatabase& db, MediaAsset& clip) {
        const ChangeListener listener(db, [](const auto&) {});
        EXPECT_TRUE(db.GetMediaAssetTable().Save(clip));
      },
  };
  for (int round = 0; round < (IsLong() ? 17 : 1); ++round) {
    for (const std::string change : Changes) {
      for (const auto& use : uses) {
        Restore(path, "");
        DataModelDatabase idle(connection, log.Stream()), opened(connection, log.Stream());
        idle.Open();
        // From here on the file's number is the one that openings set.
        opened.Open();
        opened.Close();
        MediaAsset first = MakeClip("clip", 1), second = MakeClip("clip", 2), other = MakeClip("other", 1);
        EXPECT_TRUE(idle.ExecuteStatement("CREATE TABLE Seen (name)") &&
                    idle.GetMediaAssetTable().Save(first));
        opened.Open();
        opened.Close();
        EXPECT_EQ(StoredVersion(idle, "clip"), 1);
        {
          DatabaseSqlite tool(connection, log.Stream());
          tool.Open();
          EXPECT_TRUE(tool.ExecuteStatement(change)) << log.Text();
        }
        opened.Open();
        EXPECT_EQ(TestSupport::Value(opened, "PRAGMA schema_version"), "2");
        use(idle, second);
        EXPECT_EQ(StoredVersion(idle, "clip"), 2);
        EXPECT_TRUE(opened.GetMediaAssetTable().Save(other));
        EXPECT_EQ(StoredVersion(opened, "clip"), 2);
        const std::string seen = change.find("TRIGGER") == std::string::npos ? "(no row)" : "v2";
        EXPECT_EQ(TestSupport::Value(opened, "SELECT name FROM Seen"), seen);
        idle.Close();
        opened.Close();
        ASSERT_EQ(Faults(path), "") << change;
      }
    }
  }
  EXPECT_EQ(log.Text(), "");
}

// The look at the tables is old when the write gets its lock.
TEST_P(SchemaChangeTest, AWriteThatWaitsForTheChangeOfTheTablesNoticesIt) {
  DataModelDatabase waiting(connection, log.Stream());
  DatabaseSqlite tool(connection, log.Stream());
  waiting.Open();
  tool.Open();
  MediaAsset clip = MakeClip("clip", 1), again = MakeClip("clip", 2);
  ASSERT_TRUE(waiting.GetMediaAssetTable().Save(clip));
  const std::string version = TestSupport::Value(tool, "PRAGMA schema_version");
  TransactionGuard change(tool);
  ASSERT_TRUE(tool.ExecuteStatement(Changes[0]) &&
              tool.ExecuteStatement("PRAGMA schema_version = " + version));
  auto saving = std::async(std::launch::async, [&] { return waiting.GetMediaAssetTable().Save(again); });
  EXPECT_EQ(saving.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
  change.Commit();
  EXPECT_TRUE(saving.get()) << log.Text();
  EXPECT_EQ(StoredVersion(waiting, "clip"), 2);
  EXPECT_EQ(Faults(path), "");
}

INSTANTIATE_TEST_SUITE_P(Journal, SchemaChangeTest, testing::Values("delete", "wal"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace Oru::Reliability
