#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/stat.h>
#include <thread>

// What DatabaseSqlite promises of its check, its rebuild and its backup.
namespace Oru::Common::Databases::Sqlite {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TestSupport::FileContent;
using TestSupport::Value;

class UpkeepTest : public testing::Test {
 protected:
  UpkeepTest() { db.Open(); }

  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string path = directory.File("clips.db");
  DatabaseSqlite db{"file:" + path + "?_busy_timeout=50", log.Stream()};
};

class IntegrityCheckTest : public UpkeepTest {
 protected:
  IntegrityCheckTest() {
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
    return std::stoi(Value(db, "SELECT count(*) FROM \"A b\"\"c\"('" + word + "')"));
  }
};

TEST_F(IntegrityCheckTest, NamesARowWhoseOwnerIsMissingAndNothingElse) {
  EXPECT_THAT(db.CheckIntegrity(), IsEmpty());
  Run("PRAGMA foreign_keys = off; DELETE FROM Owner WHERE key = 2; PRAGMA foreign_keys = on");
  EXPECT_TRUE(db.RebuildFullTextIndex("A b\"c"));
  EXPECT_THAT(db.CheckIntegrity(), ElementsAre("row 2 of Part refers to a missing row of Owner"));
}

TEST_F(IntegrityCheckTest, FindsAnOutdatedFullTextIndexAndRebuildsIt) {
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
  const int64_t root = std::stoll(Value(db, "SELECT rootpage FROM sqlite_schema WHERE name = 'ByCode'"));
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

class OnlineCopyTest : public UpkeepTest {
 protected:
  OnlineCopyTest() {
    // 600 pages: three steps.
    EXPECT_TRUE(
        db.ExecuteStatement("CREATE TABLE A (x integer primary key, bytes);"
                            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 600)"
                            " INSERT INTO A SELECT i, randomblob(3500) FROM n;"
                            "CREATE TABLE Sums (total); INSERT INTO Sums VALUES (600);"));
  }

  static std::string Total(DatabaseSqlite& database) {
    return Value(database, "SELECT (SELECT total FROM Sums) || '/' || count(*) FROM A");
  }
  // The sum as the copy reports it, which must be that of its own rows.
  std::string TotalOfCopy(const std::string& name) {
    DatabaseSqlite copy(directory.File(name), nullptr);
    copy.Open();
    EXPECT_TRUE(copy.CheckIntegrity().empty());
    return Total(copy);
  }
  int FileCount() const {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(directory.Path())) {
      count += entry.path().string().rfind(path, 0) == 0 ? 0 : 1;
    }
    return count;
  }
  template <class Exception>
  void ExpectRefusal(const std::string& file, const std::string& reason) {
    const int before = FileCount();
    log.Clear();
    EXPECT_THROW(db.Backup(file), Exception) << file;
    EXPECT_TRUE(log.Contains(reason)) << log.Text();
    EXPECT_EQ(FileCount(), before) << file;
  }
};

TEST_F(OnlineCopyTest, CopiesStepByStepAndReportsHowFarItHasCome) {
  chmod(path.c_str(), 0600);
  std::vector<int32_t> steps;
  int32_t total = 0;
  EXPECT_TRUE(db.Backup(directory.File("copy.db"), [&](int32_t remaining, int32_t of) {
    EXPECT_FALSE(std::filesystem::exists(directory.File("copy.db")));
    steps.push_back(remaining);
    total = of;
    return true;
  }));
  ASSERT_GE(steps.size(), 3U);
  EXPECT_EQ(steps[0] - steps[1], 256);
  EXPECT_EQ(steps.back(), 0);
  EXPECT_EQ(std::to_string(total), Value(db, "PRAGMA page_count"));
  EXPECT_EQ(TotalOfCopy("copy.db"), "600/600");
  EXPECT_EQ(FileCount(), 1);
  struct stat status = {};
  EXPECT_EQ(stat(directory.File("copy.db").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(OnlineCopyTest, LeavesNothingWhenItIsStopped) {
  EXPECT_FALSE(db.Backup(directory.File("copy.db"), [](int32_t, int32_t) { return false; }));
  EXPECT_FALSE(
      db.Backup(directory.File("copy.db"), [](int32_t remaining, int32_t) { return remaining > 0; }));
  const auto failing = [](int32_t, int32_t) -> bool { throw std::runtime_error("a display that fails"); };
  EXPECT_THROW(db.Backup(directory.File("copy.db"), failing), std::runtime_error);
  EXPECT_EQ(FileCount(), 0);
  EXPECT_EQ(log.Text(), "");
  EXPECT_TRUE(db.Backup(directory.File("copy.db")));
}

TEST_F(OnlineCopyTest, RefusesATargetThatIsThereAlreadyOrCannotBe) {
  std::ofstream(directory.File("old.db")) << "old";
  std::ofstream(directory.File("gone.db-journal")) << "old";
  std::filesystem::create_symlink("nowhere", directory.File("link.db"));
  for (const std::string& file : {path, directory.Path().string(), directory.File("old.db"),
                                  directory.File("gone.db"), directory.File("link.db")}) {
    ExpectRefusal<ArgumentException>(file, "exists already");
  }
  EXPECT_EQ(FileContent(directory.File("old.db")), "old");
  for (const std::string& file : {std::string(), std::string(":memory:"), std::string("file:copy.db"),
                                  directory.File("copy.db") + '\0' + "x"})
    ExpectRefusal<ArgumentException>(file, "is no path");
  ExpectRefusal<NotSupportedException>(directory.File("no/such/folder.db"), "No such file");
  ExpectRefusal<NotSupportedException>(directory.File("old.db/copy.db"), "Not a directory");
  // A file that another process puts there meanwhile stays.
  const auto race = [&](int32_t, int32_t) { return bool(std::ofstream(directory.File("new.db")) << "new"); };
  EXPECT_THROW(db.Backup(directory.File("new.db"), race), NotSupportedException);
  EXPECT_EQ(FileContent(directory.File("new.db")), "new");
  EXPECT_EQ(FileCount(), 4);
}

TEST_F(OnlineCopyTest, RefusesWhileTheSourceIsWrittenOrClosed) {
  const std::string copy = directory.File("copy.db");
  {
    const TransactionGuard guard(db);
    ExpectRefusal<InvalidOperationException>(copy, "a transaction is open");
  }
  DatabaseSqlite other(path, nullptr);
  other.Open();
  EXPECT_TRUE(other.ExecuteStatement("BEGIN EXCLUSIVE"));
  ExpectRefusal<NotSupportedException>(copy, "database is locked");
  EXPECT_TRUE(other.ExecuteStatement("ROLLBACK"));
  // A transaction that begins in between is waited for.
  EXPECT_THROW(db.Backup(copy,
                         [&](int32_t, int32_t) {
                           db.BeginTransaction();
                           return true;
                         }),
               NotSupportedException);
  EXPECT_EQ(db.EndTransaction(false), 0);
  db.Close();
  ExpectRefusal<InvalidOperationException>(copy, "not open");
}

// Threads: others write, on a connection of its own and on that of the backup.
TEST_F(OnlineCopyTest, EndsWhileOthersWriteAndCopiesOneState) {
  const std::string patient = "file:" + path + "?_synchronous=off&_busy_timeout=60000";
  DatabaseSqlite other(patient, log.Stream()), source(patient, log.Stream());
  other.Open();
  source.Open();
  std::atomic<bool> isOver{false};
  const auto write = [&](DatabaseSqlite& on) {
    for (int i = 0; !isOver; ++i) {
      const bool isIn = on.ExecuteStatement(
          "BEGIN IMMEDIATE; INSERT INTO A VALUES (NULL, randomblob(100));"
          "UPDATE Sums SET total = (SELECT count(*) FROM A); COMMIT");
      EXPECT_TRUE(isIn) << log.Text();
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
  };
  // A backup that finds a transaction of its connection open at its begin is refused.
  const auto backUp = [&](int number) {
    for (;;) {
      try {
        return source.Backup(directory.File(std::to_string(number)));
      } catch (const InvalidOperationException&) {
        std::this_thread::yield();
      }
    }
  };
  std::thread elsewhere(write, std::ref(other)), here(write, std::ref(source));
  for (int i = 0; i < 6; ++i)
    EXPECT_TRUE(backUp(i));
  isOver = true;
  elsewhere.join();
  here.join();
  for (int i = 0; i < 6; ++i) {
    const std::string total = TotalOfCopy(std::to_string(i));
    EXPECT_EQ(total.substr(0, total.find('/')), total.substr(total.find('/') + 1));
  }
}

}  // namespace Oru::Common::Databases::Sqlite
