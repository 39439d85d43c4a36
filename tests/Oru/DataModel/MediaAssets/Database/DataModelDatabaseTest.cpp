#include "support/DatabasePrelude.h"

#include <sys/stat.h>
#include <unistd.h>

namespace Oru::DataModel::MediaAssets::Database {

class DataModelDatabaseTest : public testing::Test {
 protected:
  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string path = directory.File("clips.db");
};

// A file that was opened once only still lacks its version, and stays as it is.
TEST_F(DataModelDatabaseTest, AFileOrFolderThatCanOnlyBeReadIsReadAndNotWritten) {
  MediaAsset clip = MakeClip("clip"), added = MakeClip("added");
  {
    DataModelDatabase writer(path, log.Stream());
    writer.Open();
    ASSERT_TRUE(writer.GetMediaAssetTable().Save(clip));
  }
  const std::string before = TestSupport::FileContent(path);
  const struct {
    const char* option;
    mode_t file, folder;
  } cases[] = {{"?mode=ro", 0666, 0777}, {"?immutable=1", 0666, 0777}, {"", 0444, 0777}, {"", 0666, 0555}};
  for (const auto& [option, file, folder] : cases) {
    SCOPED_TRACE(testing::Message() << option << ' ' << file << ' ' << folder);
    ASSERT_EQ(chmod(path.c_str(), file) + chmod(directory.Path().c_str(), folder), 0);
    // Root, whom no permission hinders, is another user until the end of the scope.
    const bool wasRoot = geteuid() == 0;
    ASSERT_TRUE(!wasRoot || seteuid(65534) == 0);
    const std::shared_ptr<void> user(nullptr, [=](void*) { EXPECT_TRUE(!wasRoot || seteuid(0) == 0); });
    DataModelDatabase reader("file:" + path + option, log.Stream());
    reader.Open();
    EXPECT_EQ(log.Text(), "");
    EXPECT_FALSE(reader.GetMediaAssetTable().Save(added));
    EXPECT_EQ(added.ObjectId(), -1);
    EXPECT_NE(log.Text(), "");
    log.Clear();
    EXPECT_TRUE(IsStored(reader, clip));
    reader.Close();
    EXPECT_EQ(TestSupport::FileContent(path), before);
  }
  ASSERT_EQ(chmod(directory.Path().c_str(), 0700), 0);
}

TEST_F(DataModelDatabaseTest, AnOpeningThatFailsLeavesTheObjectClosed) {
  std::ofstream(directory.File("empty")) << "";
  std::ofstream(directory.File("text")) << "This is no database, though it is long enough to be looked at.";
  for (const std::string name : {"empty", "text"}) {
    DataModelDatabase database("file:" + directory.File(name) + "?mode=ro", log.Stream());
    EXPECT_THROW(database.Open(), NotSupportedException) << name;
    EXPECT_FALSE(database.IsOpen());
    EXPECT_THROW(database.Open(), NotSupportedException) << name;
  }
  EXPECT_TRUE(log.Contains("attempt to write a readonly database")) << log.Text();
  EXPECT_THROW(DataModelDatabase(log.Stream()).Open(), ArgumentException);
}

// The second opening sets the version that the first one's tables have raised; from then on there is nothing
// to write.
TEST_F(DataModelDatabaseTest, AFileThatHasEverythingIsOpenedBesideAWriterWithoutAWrite) {
  for (const std::string journal : {"delete", "wal"}) {
    const std::string text = "file:" + path + "?_busy_timeout=0&_journal_mode=" + journal;
    DataModelDatabase writer(text, log.Stream()), opened(text, log.Stream());
    writer.Open();
    opened.Open();
    opened.Close();
    ASSERT_TRUE(writer.ExecuteStatement("PRAGMA wal_checkpoint(TRUNCATE)"));
    const std::string before = TestSupport::FileContent(path) + TestSupport::FileContent(path + "-wal");
    writer.HasChanged();
    {
      const Sqlite::TransactionGuard writing(writer);
      opened.Open();
      opened.Close();
    }
    EXPECT_FALSE(writer.HasChanged());
    EXPECT_EQ(TestSupport::FileContent(path) + TestSupport::FileContent(path + "-wal"), before) << journal;
  }
  EXPECT_EQ(log.Text(), "");
}

TEST_F(DataModelDatabaseTest, AFirstOpeningBesideAWriterIsRefusedOnceAndLeavesNothingHalf) {
  const std::string text = "file:" + path + "?_busy_timeout=0";
  Sqlite::DatabaseSqlite writer(text, log.Stream());
  writer.Open();
  DataModelDatabase database(text, log.Stream());
  {
    const Sqlite::TransactionGuard writing(writer);
    EXPECT_THROW(database.Open(), NotSupportedException);
  }
  EXPECT_THAT(log.Lines(), testing::ElementsAre(testing::HasSubstr("database is locked")));
  EXPECT_EQ(TestSupport::FileContent(path), "");
  database.Open();
  database.Close();
  log.Clear();
  ASSERT_TRUE(writer.ExecuteStatement("DROP INDEX LookupMediaAssetName"));
  {
    const Sqlite::TransactionGuard writing(writer);
    database.Open();
    EXPECT_EQ(TestSupport::Value(database, "SELECT count(*) FROM MediaAsset"), "0");
  }
  EXPECT_THAT(log.Lines(), testing::ElementsAre(testing::HasSubstr("database is locked")));
}

TEST_F(DataModelDatabaseTest, AnOpeningCompletesWhatAnotherHasLeftHalfWhateverWasStoredMeanwhile) {
  const std::string schema =
      "SELECT type || name || coalesce(sql, '') FROM sqlite_schema WHERE name NOT LIKE 'MediaAssetFts\\_%'"
      " ESCAPE '\\' ORDER BY type, name";
  const std::string dropIndex =
      "DROP TRIGGER MediaAssetFtsAfterInsert; DROP TRIGGER MediaAssetFtsAfterDelete;"
      "DROP TRIGGER MediaAssetFtsAfterUpdate; DROP TABLE MediaAssetFts;";
  const std::string dropEdits = "DROP TABLE DapOperatorMetadataSequence; DROP TABLE MetadataSequence;";
  const std::string losses[] = {dropIndex,
                                "DROP TRIGGER MediaAssetFtsAfterInsert",
                                "DROP TRIGGER MediaAssetFtsAfterUpdate",
                                dropIndex + dropEdits + "DROP TABLE Props; DROP INDEX LookupMediaAssetName",
                                "DROP TABLE sqlite_stat1",
                                "ANALYZE"};
  for (const std::string& lost : losses) {
    SCOPED_TRACE(lost);
    DataModelDatabase database("file:" + path + "?_synchronous=off", log.Stream());
    database.Open();
    const auto whole = TestSupport::Column(database, schema);
    MediaAsset early = MakeClip("early", "winter"), late = MakeClip("late", "winter");
    ASSERT_TRUE(database.GetMediaAssetTable().Save(early));
    ASSERT_TRUE(database.ExecuteStatement(lost)) << log.Text();
    ASSERT_TRUE(database.ExecuteStatement(
        "UPDATE MediaAsset SET name = 'summer'; INSERT INTO MediaAsset(id, name) VALUES('late', 'summer')"));
    database.Close();
    database.Open();
    EXPECT_EQ(TestSupport::Column(database, schema), whole);
    const std::string matches = "SELECT count(*) FROM MediaAssetFts WHERE MediaAssetFts MATCH ";
    EXPECT_EQ(TestSupport::Value(database, matches + "'summer'"), "2");
    EXPECT_TRUE(database.GetMediaAssetTable().Save(early) && database.GetMediaAssetTable().Save(late));
    EXPECT_EQ(TestSupport::Value(database, matches + "'winter'"), "2");
    EXPECT_EQ(TestSupport::Value(
                  database, "SELECT group_concat(DISTINCT stat) FROM sqlite_stat1 WHERE tbl = 'MediaAsset'"),
              "1000 1");
    EXPECT_TRUE(database.GetMediaAssetTable().DeleteAll());
    EXPECT_EQ(database.CheckIntegrity(), std::vector<std::string>());
  }
  EXPECT_EQ(log.Text(), "");
}

}  // namespace Oru::DataModel::MediaAssets::Database
