#include "support/OpenSqlite.h"

// What DatabaseSqlite promises of its check, its rebuild and its backup.
namespace Oru::Common::Databases::Sqlite {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TestSupport::FileContent;
using TestSupport::Value;

class IntegrityCheckTest : public TestSupport::OpenSqlite {
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
    EXPECT_THAT(db.CheckIntegrity(), IsEmpty());
  }
};

TEST_F(IntegrityCheckTest, NamesARowWhoseOwnerIsMissingAndNothingElse) {
  Run("PRAGMA foreign_keys = off; DELETE FROM Owner WHERE key = 2; PRAGMA foreign_keys = on");
  EXPECT_TRUE(db.RebuildFullTextIndex("A b\"c"));
  EXPECT_THAT(db.CheckIntegrity(), ElementsAre("row 2 of Part refers to a missing row of Owner"));
}

TEST_F(IntegrityCheckTest, FindsAnOutdatedFullTextIndexAndRebuildsIt) {
  Run("UPDATE Owner SET name = 'seven' WHERE key = 1");
  EXPECT_THAT(db.CheckIntegrity(), ElementsAre(HasSubstr("full-text index A b\"c: ")));
  Run("DELETE FROM OfItsOwn_data WHERE id > 10");
  EXPECT_EQ(db.CheckIntegrity().size(), 2U);
  EXPECT_TRUE(db.RebuildFullTextIndex("A b\"c") && db.RebuildFullTextIndex("OfItsOwn"));
  EXPECT_THAT(db.CheckIntegrity(), IsEmpty());
  EXPECT_EQ(Value(db, "SELECT name FROM \"A b\"\"c\"('one OR seven')"), "seven");
  EXPECT_EQ(log.Text(), "");
  EXPECT_FALSE(db.RebuildFullTextIndex("Owner") || db.RebuildFullTextIndex("missing"));
  EXPECT_THAT(db.LastFailure(), HasSubstr("no such table: main.missing"));
}

TEST_F(IntegrityCheckTest, FindsBytesThatWereOverwritten) {
  const int64_t root = std::stoll(Value(db, "SELECT rootpage FROM sqlite_schema WHERE name = 'ByCode'"));
  const std::pair<int64_t, const char*> cases[] = {{root * 4096 - 4, "ByCode"}, {(root - 1) * 4096, "Page"}};
  for (const auto& [position, finding] : cases) {
    db.Close();
    std::fstream(path, std::ios::in | std::ios::out | std::ios::binary).seekp(position) << "????";
    db.Open();
    EXPECT_THAT(db.CheckIntegrity(), testing::Contains(HasSubstr(finding)));
  }
  EXPECT_EQ(log.Text(), "");
}

TEST_F(IntegrityCheckTest, ThrowsWhereItCannotLook) {
  DatabaseSqlite other(path, nullptr);
  other.Open();
  EXPECT_TRUE(other.ExecuteStatement("BEGIN EXCLUSIVE"));
  EXPECT_THROW(db.CheckIntegrity(), InvalidOperationException);
  EXPECT_THAT(db.LastFailure(), HasSubstr("integrity check refused: database is locked"));
  other.Close();
  db.Close();
  EXPECT_THROW(db.CheckIntegrity(), InvalidOperationException);
  DatabaseSqlite reader("file:" + path + "?mode=ro", nullptr);
  reader.Open();
  EXPECT_THAT(reader.CheckIntegrity(), IsEmpty());
}

class OnlineCopyTest : public TestSupport::OpenSqlite {
 protected:
  // 600 pages: three steps.
  OnlineCopyTest() {
    Run("CREATE TABLE A (x integer primary key, bytes);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 600)"
        " INSERT INTO A SELECT i, randomblob(3500) FROM n;"
        "CREATE TABLE Sums (total); INSERT INTO Sums VALUES (600);");
  }

  // The number of rows in a copy, which must be sound and of one state.
  int RowsOfCopy(const std::string& file) {
    DatabaseSqlite opened(file, nullptr);
    opened.Open();
    EXPECT_THAT(opened.CheckIntegrity(), IsEmpty());
    EXPECT_EQ(Value(opened, "SELECT total FROM Sums"), Value(opened, "SELECT count(*) FROM A"));
    return std::stoi(Value(opened, "SELECT total FROM Sums"));
  }
  // Beside the source and what belongs to it.
  std::ptrdiff_t FileCount() const {
    const std::filesystem::directory_iterator files(directory.Path());
    return std::count_if(begin(files), end(files),
                         [&](const auto& file) { return file.path().string().rfind(path, 0) != 0; });
  }
  template <class Exception>
  void ExpectRefusal(const std::string& file, const std::string& reason) {
    const auto before = FileCount();
    EXPECT_THROW(db.Backup(file), Exception) << file;
    EXPECT_THAT(db.LastFailure(), HasSubstr(reason));
    EXPECT_EQ(FileCount(), before) << file;
  }

  const std::string copy = directory.File("copy.db");
};

TEST_F(OnlineCopyTest, CopiesStepByStepAndReportsHowFarItHasCome) {
  std::filesystem::permissions(path, std::filesystem::perms(0600));
  std::vector<int32_t> steps;
  EXPECT_TRUE(db.Backup(copy, [&](int32_t remaining, int32_t total) {
    EXPECT_FALSE(std::filesystem::exists(copy));
    EXPECT_EQ(std::to_string(total), Value(db, "PRAGMA page_count"));
    steps.push_back(remaining);
    return true;
  }));
  ASSERT_GE(steps.size(), 3U);
  EXPECT_EQ(steps[0] - steps[1], 256);
  EXPECT_EQ(steps.back(), 0);
  EXPECT_EQ(RowsOfCopy(copy), 600);
  EXPECT_EQ(FileCount(), 1);
  EXPECT_EQ(std::filesystem::status(copy).permissions(), std::filesystem::perms(0600));
}

TEST_F(OnlineCopyTest, LeavesNothingWhenItIsStopped) {
  EXPECT_FALSE(db.Backup(copy, [](int32_t, int32_t) { return false; }));
  EXPECT_FALSE(db.Backup(copy, [](int32_t remaining, int32_t) { return remaining > 0; }));
  const auto failing = [](int32_t, int32_t) -> bool { throw std::runtime_error("a display that fails"); };
  EXPECT_THROW(db.Backup(copy, failing), std::runtime_error);
  EXPECT_EQ(FileCount(), 0);
  EXPECT_EQ(log.Text(), "");
  EXPECT_TRUE(db.Backup(copy));
}

TEST_F(OnlineCopyTest, RefusesATargetThatIsThereAlreadyOrCannotBe) {
  const std::string old = directory.File("old.db"), link = directory.File("link.db");
  for (const std::string& file : {old, directory.File("gone.db-journal")})
    std::ofstream(file) << "old";
  std::filesystem::create_symlink("nowhere", link);
  for (const std::string& file : {path, directory.Path().string(), old, directory.File("gone.db"), link})
    ExpectRefusal<ArgumentException>(file, "exists already");
  for (const std::string& file : {std::string(), std::string(":memory:"), "file:" + copy, copy + '\0' + "x"})
    ExpectRefusal<ArgumentException>(file, "is no path");
  ExpectRefusal<NotSupportedException>(directory.File("no/such/folder.db"), "No such file");
  ExpectRefusal<NotSupportedException>(old + "/copy.db", "Not a directory");
  // A file that another process puts there meanwhile stays.
  const auto race = [&](int32_t, int32_t) { return bool(std::ofstream(copy) << "new"); };
  EXPECT_THROW(db.Backup(copy, race), NotSupportedException);
  EXPECT_EQ(FileContent(old) + FileContent(copy), "oldnew");
  EXPECT_EQ(FileCount(), 4);
}

TEST_F(OnlineCopyTest, RefusesWhileTheSourceIsWrittenOrClosed) {
  db.BeginTransaction();
  ExpectRefusal<InvalidOperationException>(copy, "a transaction is open");
  db.EndTransaction(false);
  DatabaseSqlite other(path, nullptr);
  other.Open();
  EXPECT_TRUE(other.ExecuteStatement("BEGIN EXCLUSIVE"));
  ExpectRefusal<NotSupportedException>(copy, "database is locked");
  other.Close();
  // A transaction that begins in between is waited for.
  const auto begin = [&](int32_t, int32_t) { return db.ExecuteStatement("BEGIN IMMEDIATE"); };
  EXPECT_THROW(db.Backup(copy, begin), NotSupportedException);
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
    while (!isOver) {
      EXPECT_TRUE(
          on.ExecuteStatement("BEGIN IMMEDIATE; INSERT INTO A VALUES (NULL, randomblob(100));"
                              "UPDATE Sums SET total = (SELECT count(*) FROM A); COMMIT"))
          << log.Text();
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
  };
  std::thread elsewhere(write, std::ref(other)), here(write, std::ref(source));
  for (int done = 0; done < 6;) {
    try {
      EXPECT_TRUE(source.Backup(copy + std::to_string(done)));
      ++done;
    } catch (const InvalidOperationException&) {
      // A backup that finds a transaction of its connection open at its begin is refused.
      std::this_thread::yield();
    }
  }
  isOver = true;
  elsewhere.join();
  here.join();
  for (int i = 0; i < 6; ++i)
    EXPECT_GE(RowsOfCopy(copy + std::to_string(i)), 600);
}

}  // namespace Oru::Common::Databases::Sqlite
