#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>

namespace Oru::Common::Databases::Sqlite {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// What `DatabaseSqlite` promises of its check and its rebuild.
class IntegrityCheckTest : public testing::Test {
 protected:
  IntegrityCheckTest() {
    db.Open();
    Run("CREATE TABLE Owner (key integer primary key, name text);"
        "CREATE TABLE Part (key integer primary key, owner references Owner, code text);"
        "CREATE INDEX ByCode ON Part (code);"
        "CREATE VIRTUAL TABLE \"A b\"\"c\" USING fts5(name, content='Owner', content_rowid='key');"
        "CREATE VIRTUAL TABLE OfItsOwn USING fts5(text);"
        "INSERT INTO Owner VALUES (1, 'one'), (2, 'two');"
        "INSERT INTO Part SELECT key, key, 'code ' || key FROM Owner;"
        "INSERT INTO OfItsOwn VALUES ('three');");
    EXPECT_TRUE(db.RebuildFullTextIndex("A b\"c"));
  }
  void Run(const std::string& sql) { ASSERT_TRUE(db.ExecuteStatement(sql)) << log.Text(); }
  int Found(const std::string& word) {
    return std::stoi(TestSupport::Value(db, "SELECT count(*) FROM \"A b\"\"c\"('" + word + "')"));
  }

  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string path = directory.File("clips.db");
  DatabaseSqlite db{"file:" + path + "?_busy_timeout=0", log.Stream()};
};

TEST_F(IntegrityCheckTest, NamesARowWhoseOwnerIsMissingAndNothingElse) {
  EXPECT_THAT(db.CheckIntegrity(), IsEmpty());
  Run("PRAGMA foreign_keys = off; DELETE FROM Owner WHERE key = 2; PRAGMA foreign_keys = on");
  EXPECT_TRUE(db.RebuildFullTextIndex("A b\"c"));
  EXPECT_THAT(db.CheckIntegrity(), ElementsAre("row 2 of Part refers to a missing row of Owner"));
}

TEST_F(IntegrityCheckTest, FindsAFullTextIndexThatLagsBehindAndRebuildsIt) {
  Run("UPDATE Owner SET name = 'seven' WHERE key = 1");
  EXPECT_EQ(Found("seven"), 0);
  EXPECT_THAT(db.CheckIntegrity(), ElementsAre(HasSubstr("full-text index A b\"c: ")));
  Run("DELETE FROM OfItsOwn_data WHERE id > 10");
  EXPECT_EQ(db.CheckIntegrity().size(), 2U);
  EXPECT_TRUE(db.RebuildFullTextIndex("A b\"c"));
  EXPECT_TRUE(db.RebuildFullTextIndex("OfItsOwn"));
  EXPECT_THAT(db.CheckIntegrity(), IsEmpty());
  EXPECT_EQ(Found("seven"), 1);
  EXPECT_EQ(Found("one"), 0);
  EXPECT_EQ(log.Text(), "");
  EXPECT_FALSE(db.RebuildFullTextIndex("Owner"));
  EXPECT_FALSE(db.RebuildFullTextIndex("missing"));
  EXPECT_TRUE(log.Contains("no such table: main.missing")) << log.Text();
}

TEST_F(IntegrityCheckTest, FindsBytesThatWereOverwritten) {
  const int64_t root =
      std::stoll(TestSupport::Value(db, "SELECT rootpage FROM sqlite_schema WHERE name = 'ByCode'"));
  db.Close();
  {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(root * 4096 - 4);
    file.write("????", 4);
  }
  db.Open();
  const auto findings = db.CheckIntegrity();
  EXPECT_THAT(findings, testing::Contains(HasSubstr("ByCode")));
  EXPECT_EQ(log.Text(), "");
  db.Close();
  std::ofstream(path, std::ios::in | std::ios::out | std::ios::binary).seekp((root - 1) * 4096) << "????????";
  db.Open();
  EXPECT_THAT(db.CheckIntegrity(), testing::Contains(HasSubstr("Page")));
}

TEST_F(IntegrityCheckTest, ThrowsWhereItCannotLook) {
  DatabaseSqlite other(path, nullptr);
  other.Open();
  EXPECT_TRUE(other.ExecuteStatement("BEGIN EXCLUSIVE"));
  EXPECT_THROW(db.CheckIntegrity(), InvalidOperationException);
  EXPECT_TRUE(log.Contains("integrity check refused: database is locked")) << log.Text();
  EXPECT_TRUE(other.ExecuteStatement("ROLLBACK"));
  db.Close();
  EXPECT_THROW(db.CheckIntegrity(), InvalidOperationException);
  DatabaseSqlite reader("file:" + path + "?mode=ro", nullptr);
  reader.Open();
  EXPECT_THAT(reader.CheckIntegrity(), IsEmpty());
}

}  // namespace Oru::Common::Databases::Sqlite
