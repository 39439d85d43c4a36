#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <thread>

namespace Oru::Common::Databases::Sqlite {

using testing::HasSubstr;
using TestSupport::FileContent;
using TestSupport::Value;

class DatabaseSqliteTest : public testing::Test {
 protected:
  DatabaseSqliteTest() : path(directory.File("clips.db")), db(path, log.Stream()) {
    db.Open();
    EXPECT_TRUE(db.ExecuteStatement("CREATE TABLE A (x unique)"));
  }

  std::string Count() { return Value(db, "SELECT count(*) FROM A"); }

  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  const std::string path;
  DatabaseSqlite db;
};

TEST_F(DatabaseSqliteTest, OptionsOfTheConnectionTextReachTheConnection) {
  struct {
    const char *options, *busyTimeout, *journalMode, *synchronous;
  } const cases[] = {
      {"", "5000", "delete", "2"},
      {"?cache=private&_busy_timeout=0", "0", "delete", "2"},
      {"?_busy_timeout=7&_journal_mode=truncate&_synchronous=off", "7", "truncate", "0"},
      {"?_journal_mode=persist&_synchronous=normal#_busy_timeout=8", "5000", "persist", "1"},
      {"?%5fbusy%5Ftimeout=9&&_synchronous=ful%6C", "9", "delete", "2"},
      {"?_journal_mode=memory&_synchronous=extra", "5000", "memory", "3"},
      {"?_journal_mode=off", "5000", "off", "2"},
      {"?_journal_mode=wal", "5000", "wal", "2"},
  };
  db.Close();
  for (const auto& [options, busyTimeout, journalMode, synchronous] : cases) {
    DatabaseSqlite other("file:" + path + options, log.Stream());
    other.Open();
    EXPECT_EQ(Value(other, "PRAGMA busy_timeout"), busyTimeout) << options;
    EXPECT_EQ(std::to_string(other.BusyTimeout()), busyTimeout) << options;
    EXPECT_EQ(Value(other, "PRAGMA journal_mode"), journalMode) << options;
    EXPECT_EQ(Value(other, "PRAGMA synchronous"), synchronous) << options;
    EXPECT_EQ(Value(other, "PRAGMA foreign_keys"), "1") << options;
  }
  DatabaseSqlite large("file:" + path + "?_cache_size=-4096&_mmap_size=1048576", log.Stream());
  large.Open();
  EXPECT_EQ(Value(large, "PRAGMA cache_size"), "-4096");
  EXPECT_EQ(Value(large, "PRAGMA mmap_size"), "1048576");
  EXPECT_EQ(log.Text(), "");
}

TEST_F(DatabaseSqliteTest, BadOptionsAreRefusedByName) {
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"_busy_timeout", {"", "=", "=-1", "=5s", "=99999999999"}},
      {"_statement_timeout", {"=", "=0", "=-5", "=1s"}},
      {"_journal_mode", {"=", "=on"}},
      {"_synchronous", {"=2", "=full;"}},
      {"_cache_size", {"=", "=2000M", "=2147483648"}},
      {"_mmap_size", {"=-1", "=1e6"}},
      {"_timeout", {"=5"}},
      {"_", {"=1"}},
  };
  for (const auto& [name, values] : cases) {
    for (const std::string& value : values) {
      log.Clear();
      DatabaseSqlite other("file:" + directory.File("new.db") + "?mode=rwc&" + name + value, log.Stream());
      EXPECT_THROW(other.Open(), ArgumentException) << name << value;
      EXPECT_FALSE(other.IsOpen());
      EXPECT_TRUE(log.Contains('"' + name + '"')) << log.Text();
    }
  }
  EXPECT_FALSE(std::filesystem::exists(directory.File("new.db")));
}

TEST_F(DatabaseSqliteTest, TextsThatSqliteWouldTakeForAnotherFileAreRefused) {
  const std::string plain = directory.File("a#1.db");
  const std::string refused[] = {plain + "?mode=ro", plain + "?_busy_timeout=", plain + '\0' + "x",
                                 "file:" + directory.File("new%00.db")};
  for (const std::string& connection : refused) {
    DatabaseSqlite other(connection, log.Stream());
    EXPECT_THROW(other.Open(), ArgumentException) << connection;
  }
  EXPECT_EQ(log.Lines().size(), 4U);
  EXPECT_TRUE(log.Contains("write \"file:" + directory.File("a%231.db") + "?mode=ro\"")) << log.Text();
  EXPECT_TRUE(log.Contains("the connection text holds a NUL byte"));
  for (const char* name : {"what?", "what?a b=c", "is it=so", "?=.db"}) {
    DatabaseSqlite other(directory.File(name), log.Stream());
    other.Open();
    EXPECT_TRUE(other.ExecuteStatement("CREATE TABLE T (a)"));
    EXPECT_TRUE(std::filesystem::exists(directory.File(name)));
  }
}

TEST_F(DatabaseSqliteTest, AnOpenThatFailsLeavesTheDatabaseClosedAndTheFileAsItWas) {
  const std::string text = directory.File("notes.txt"), missing = directory.File("sub/clips.db");
  std::ofstream(text) << std::string(5000, 'x');
  struct {
    std::string connection, reason;
  } const cases[] = {
      {text, "file is not a database"},
      {directory.Path().string(), "unable to open database file"},
      {missing, "unable to open database file"},
      {"file:" + missing + "?mode=ro", "unable to open database file"},
      {"file:" + path + "?mode=odd", "no such access mode: odd"},
  };
  for (const auto& [connection, reason] : cases) {
    DatabaseSqlite other(connection, log.Stream());
    log.Clear();
    EXPECT_THAT([&] { other.Open(); }, testing::ThrowsMessage<NotSupportedException>(HasSubstr(reason)));
    EXPECT_FALSE(other.IsOpen());
    EXPECT_THAT(log.Lines(), testing::ElementsAre(HasSubstr(" 0xC0090118 " + reason)));
  }
  EXPECT_EQ(FileContent(text), std::string(5000, 'x'));
  DatabaseSqlite later(missing, log.Stream());
  EXPECT_THROW(later.Open(), NotSupportedException);
  std::filesystem::create_directory(directory.File("sub"));
  later.Open();
  EXPECT_TRUE(later.ExecuteStatement("CREATE TABLE T (a)"));
}

TEST_F(DatabaseSqliteTest, CloseNamesTheStatementThatKeepsTheFileInUse) {
  sqlite3_stmt* foreign = nullptr;
  ASSERT_EQ(sqlite3_prepare_v2(db.Handle(), "SELECT 'mine' FROM A", -1, &foreign, nullptr), SQLITE_OK);
  db.Close();
  EXPECT_THAT(log.Lines(), testing::ElementsAre(HasSubstr("SELECT 'mine' FROM A")));
  sqlite3_finalize(foreign);
}

TEST_F(DatabaseSqliteTest, ExecutesTextsWhole) {
  struct {
    const char* text;
    bool isDone;
    const char* count;
  } const cases[] = {
      {" \n-- nothing\n/* ; */ ;; ", true, "0"},
      {"-- first\nINSERT INTO A VALUES (1); /* and */\n\n;INSERT INTO A VALUES ('a;b') -- end", true, "2"},
      {"BEGIN; INSERT INTO A VALUES (1), (2); SELECT * FROM A; COMMIT;", true, "2"},
      {"INSERT INTO A VALUES (1); INSERT INTO A VALUES (1)", false, "1"},
      {"INSERT INTO A VALUES (1); nonsense; INSERT INTO A VALUES (2)", false, "1"},
      {"BEGIN; INSERT INTO A VALUES (1); INSERT INTO A VALUES (1); COMMIT", false, "0"},
      {"SAVEPOINT s; INSERT INTO A VALUES (1); bad", false, "0"},
      {"INSERT INTO A VALUES ('unfinished", false, "0"},
  };
  for (const auto& [text, isDone, count] : cases) {
    log.Clear();
    EXPECT_EQ(db.ExecuteStatement(text), isDone) << text;
    EXPECT_EQ(log.Lines().size(), isDone ? 0U : 1U) << text;
    EXPECT_EQ(Count(), count) << text;
    EXPECT_FALSE(db.IsInTransaction()) << text;
    ASSERT_TRUE(db.ExecuteStatement("DELETE FROM A"));
  }
}

// SQLite knows which statements are kept.
TEST_F(DatabaseSqliteTest, KeepsTheStatementsThatWereUsedLastWithoutTheirValues) {
  const auto kept = [&] {
    std::multiset<std::string> texts;
    for (sqlite3_stmt* statement = nullptr; (statement = sqlite3_next_stmt(db.Handle(), statement));)
      texts.insert(sqlite3_sql(statement));
    return texts;
  };
  const std::string often = "SELECT ifnull(:a, 'nothing')",
                    notKept[] = {"PRAGMA user_version", "SELECT 1; SELECT 2",
                                 "SELECT 1" + std::string(100000, ' ')};
  const auto number = [](int i) { return "SELECT " + std::to_string(i); };
  const std::size_t before = kept().size();
  {
    CursorSqlite first(db, often), second(db, often);
    EXPECT_TRUE(first.Bind("a", 5) && first.Step() && second.Step());
    EXPECT_EQ(first.GetInt64(0), 5);
    EXPECT_EQ(second.GetString(0), "nothing");
  }
  EXPECT_EQ(kept().count(often), 2U);
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(Value(db, often), "nothing");
    EXPECT_EQ(Value(db, number(i)), std::to_string(i));
  }
  for (const std::string& text : notKept)
    EXPECT_TRUE(db.ExecuteStatement(text));
  EXPECT_FALSE(db.ExecuteStatement("SELECT abs(-9223372036854775807 - 1)"));
  const auto texts = kept();
  EXPECT_EQ(texts.size() - before, 256U);
  EXPECT_TRUE(texts.count(often) == 2 && texts.count(number(999)) == 1 && texts.count(number(700)) == 0);
}

TEST_F(DatabaseSqliteTest, ServesSeveralThreadsWithKeptStatements) {
  const auto work = [this](unsigned int seed) {
    std::minstd_rand random(seed);
    for (int i = 0; i < 10000; ++i) {
      const std::string number = std::to_string(random() % 300);
      ASSERT_EQ(Value(db, "SELECT " + number), number);
    }
  };
  std::thread first(work, 1U), second(work, 2U);
  work(3);
  first.join();
  second.join();
}

TEST_F(DatabaseSqliteTest, AWriteOnAnotherThreadIsNeverTakenForOneAfterALostTransaction) {
  constexpr int count = 2000;
  db.ExecuteStatement("PRAGMA synchronous = off; PRAGMA journal_mode = memory");
  std::thread writer([&] {
    for (int i = 0; i < count; ++i)
      EXPECT_TRUE(db.ExecuteStatement("INSERT INTO A VALUES (" + std::to_string(100 + i) + ")"));
  });
  for (int i = 0; i < 200; ++i) {
    TransactionGuard transaction(db);
    std::this_thread::yield();
    transaction.Commit();
  }
  writer.join();
  EXPECT_EQ(Count(), std::to_string(count));
  EXPECT_EQ(log.Text(), "");
}

// A row, and then no other before a very long time has passed.
constexpr const char* endless =
    "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n) SELECT x FROM n WHERE x = 1 OR x < 0";

TEST_F(DatabaseSqliteTest, AStatementEndsAtItsTimeoutAndAWriteRollsBack) {
  DatabaseSqlite limited("file:" + path + "?_statement_timeout=50&_busy_timeout=600000", log.Stream());
  limited.Open();
  EXPECT_FALSE(limited.ExecuteStatement(endless));
  EXPECT_EQ(limited.LastFailure(), "interrupted");
  CursorSqlite cursor(limited, endless);
  EXPECT_TRUE(cursor.Step());
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(Value(limited, "SELECT 1"), "1") << "the time of another cursor's owner is not the statement's";
  EXPECT_THROW(cursor.Step(), InvalidOperationException);

  limited.BeginTransaction();
  EXPECT_TRUE(limited.ExecuteStatement("INSERT INTO A VALUES (1)"));
  EXPECT_FALSE(limited.ExecuteStatement("INSERT INTO A SELECT x + 5 FROM (" + std::string(endless) + ")"));
  EXPECT_THROW(limited.EndTransaction(true), InvalidOperationException);
  EXPECT_EQ(Count(), "0");

  db.BeginTransaction();
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(limited.ExecuteStatement("INSERT INTO A VALUES (2)"));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60))
      << "the wait for the lock counts";
  EXPECT_EQ(limited.LastFailure(), "database is locked");
  db.EndTransaction(false);
  EXPECT_TRUE(limited.ExecuteStatement("INSERT INTO A VALUES (2)"));
}

TEST_F(DatabaseSqliteTest, AnotherThreadInterruptsWhatRunsAndNothingElse) {
  db.Interrupt();
  EXPECT_TRUE(db.ExecuteStatement("INSERT INTO A VALUES (1)"));
  DatabaseSqlite blocking(path, log.Stream());
  blocking.Open();
  blocking.BeginTransaction();
  DatabaseSqlite waiting("file:" + path + "?_busy_timeout=600000&_statement_timeout=600000", log.Stream());
  waiting.Open();

  std::atomic<bool> isOver{false};
  std::thread other([&] {
    while (!isOver) {
      db.Interrupt();
      waiting.Interrupt();
      std::this_thread::yield();
    }
  });
  EXPECT_FALSE(db.ExecuteStatement(endless));
  EXPECT_EQ(db.LastFailure(), "interrupted");
  EXPECT_FALSE(waiting.ExecuteStatement("DELETE FROM A"));
  EXPECT_THAT(waiting.LastFailure(), testing::AnyOf("database is locked", "interrupted"));
  for (int i = 0; i < 300; ++i) {
    db.Close();
    try {
      db.Open();
    } catch (const NotSupportedException&) {
      // Its first reads may be interrupted as well.
    }
  }
  isOver = true;
  other.join();
  db.Interrupt();
  if (!db.IsOpen()) db.Open();
  EXPECT_EQ(Count(), "1");
}

TEST_F(DatabaseSqliteTest, LoadsAVfsOnceAndSaysWhyItCant) {
  const auto reasonOf = [](const std::string& library) -> std::string {
    try {
      DatabaseSqlite::LoadVfs(library);
    } catch (const NotSupportedException& failure) {
      return failure.what();
    }
    return {};
  };
  const std::string connection = "file:" + path + "?vfs=loadable-test-vfs";
  DatabaseSqlite through(connection, log.Stream());
  EXPECT_THROW(through.Open(), NotSupportedException);
  EXPECT_THAT(reasonOf(directory.File("missing.so")), HasSubstr("cannot open shared object file"));
  EXPECT_THAT(reasonOf(""), HasSubstr("undefined symbol"));
  EXPECT_THAT(reasonOf("libm.so.6"), HasSubstr("undefined symbol"));
  sqlite3_vfs* const defaultVfs = sqlite3_vfs_find(nullptr);
  EXPECT_EQ(reasonOf(LOADABLE_VFS), "");
  EXPECT_EQ(reasonOf(LOADABLE_VFS), "");
  EXPECT_EQ(sqlite3_vfs_find(nullptr), defaultVfs);
  through.Open();
  through.BeginTransaction();
  EXPECT_TRUE(
      through.ExecuteStatement("INSERT INTO A VALUES (1); SAVEPOINT s; UPDATE A SET x = 2; ROLLBACK TO s"))
      << log.Text();
  EXPECT_EQ(through.EndTransaction(true), 2);
  EXPECT_EQ(Count(), "1");

  const std::string copy = directory.File("copy.so");
  std::filesystem::copy(LOADABLE_VFS, copy);
  EXPECT_THAT(reasonOf(copy), HasSubstr("brings no VFS"));
}

TEST_F(DatabaseSqliteTest, ALogEntryIsOneWholeLine) {
  db.Log("Some.Source", 0x1f, "first\r\nsecond");
  EXPECT_EQ(db.LastFailure(), "first  second");
  db.LogFailure("third");
  EXPECT_THAT(
      log.Lines(),
      testing::ElementsAre(
          testing::MatchesRegex("20..-[01].-[0-3].T[0-2].:[0-5].:[0-6].\\....Z Some.Source 0x0000001F "
                                "first  second"),
          testing::MatchesRegex("....-..-..T..:..:..\\....Z Oru.Common.Database 0xC0090118 third")));
  log.Clear();
  const auto write = [&] {
    for (int i = 0; i < 500; ++i)
      db.LogFailure("a message of some length");
  };
  std::thread other(write);
  write();
  other.join();
  EXPECT_EQ(log.Lines().size(), 1000U);
  EXPECT_THAT(log.Lines(),
              testing::Each(testing::EndsWith(" Oru.Common.Database 0xC0090118 a message of some length")));
  DatabaseSqlite silent(":memory:", nullptr);
  silent.Open();
  EXPECT_EQ(silent.LastFailure(), "");
  EXPECT_FALSE(silent.ExecuteStatement("bad"));
  EXPECT_EQ(silent.LastFailure(), "near \"bad\": syntax error");
}

}  // namespace Oru::Common::Databases::Sqlite
