#include "support/OpenSqlite.h"

namespace Oru::Common::Databases::Sqlite {

using testing::HasSubstr;
using TestSupport::FileContent;
using TestSupport::Value;

class DatabaseSqliteTest : public TestSupport::OpenSqlite {
 protected:
  DatabaseSqliteTest() { Run("CREATE TABLE A (x unique)"); }
  std::string Count() { return Value(db, "SELECT count(*) FROM A"); }
};

TEST_F(DatabaseSqliteTest, OptionsOfTheConnectionTextReachTheConnection) {
  const std::pair<std::string, const char*> cases[] = {
      {"", "1 5000 delete 2 "},
      {"?cache=private&_busy_timeout=0", "1 0 delete 2 "},
      {"?_busy_timeout=7&_journal_mode=truncate&_synchronous=off", "1 7 truncate 0 "},
      {"?_journal_mode=persist&_synchronous=normal#_busy_timeout=8", "1 5000 persist 1 "},
      {"?%5fbusy%5Ftimeout=9&&_synchronous=ful%6C", "1 9 delete 2 "},
      {"?_journal_mode=memory&_synchronous=extra", "1 5000 memory 3 "},
      {"?_journal_mode=off&_cache_size=-4096&_mmap_size=1048576", "1 5000 off 2 -4096 1048576"},
      {"?_journal_mode=wal", "1 5000 wal 2 "},
  };
  db.Close();
  for (const auto& [options, expected] : cases) {
    DatabaseSqlite other("file:" + path + options, log.Stream());
    other.Open();
    std::string set;
    for (const std::string name :
         {"foreign_keys", "busy_timeout", "journal_mode", "synchronous", "cache_size", "mmap_size"})
      set += Value(other, "PRAGMA " + name) + ' ';
    EXPECT_THAT(set, testing::StartsWith(expected)) << options;
    EXPECT_EQ(Value(other, "PRAGMA busy_timeout"), std::to_string(other.BusyTimeout())) << options;
  }
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
  };
  const std::string file = directory.File("new.db");
  for (const auto& [name, values] : cases)
    for (const std::string& value : values) {
      DatabaseSqlite other("file:" + file + "?mode=rwc&" + name + value, log.Stream());
      EXPECT_THROW(other.Open(), ArgumentException) << name << value;
      EXPECT_FALSE(other.IsOpen());
      EXPECT_THAT(other.LastFailure(), HasSubstr('"' + name + '"'));
    }
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(DatabaseSqliteTest, TextsThatSqliteWouldTakeForAnotherFileAreRefused) {
  const std::string plain = directory.File("a#1.db"), withNul = "the connection text holds a NUL byte",
                    advice = "write \"file:" + directory.File("a%231.db") + "?";
  const std::pair<std::string, std::string> refused[] = {{plain + "?mode=ro", advice + "mode=ro\""},
                                                         {plain + "?_busy_timeout=", advice},
                                                         {plain + '\0' + "x", withNul},
                                                         {"file:" + directory.File("new%00.db"), withNul}};
  for (const auto& [connection, reason] : refused) {
    DatabaseSqlite other(connection, nullptr);
    EXPECT_THROW(other.Open(), ArgumentException) << connection;
    EXPECT_THAT(other.LastFailure(), HasSubstr(reason));
  }
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
  const std::pair<std::string, std::string> cases[] = {
      {text, "file is not a database"},
      {directory.Path().string(), "unable to open database file"},
      {missing, "unable to open database file"},
      {"file:" + path + "?mode=odd", "no such access mode: odd"},
  };
  for (const auto& [connection, reason] : cases) {
    DatabaseSqlite other(connection, log.Stream());
    log.Clear();
    EXPECT_THAT([&] { other.Open(); }, testing::ThrowsMessage<NotSupportedException>(HasSubstr(reason)));
    EXPECT_FALSE(other.IsOpen());
    EXPECT_THAT(log.Lines(), testing::ElementsAre(HasSubstr(" 0xC0090118 " + reason)));
    if (connection != missing) continue;
    std::filesystem::create_directory(directory.File("sub"));
    other.Open();
    EXPECT_TRUE(other.ExecuteStatement("CREATE TABLE T (a)"));
  }
  EXPECT_EQ(FileContent(text), std::string(5000, 'x'));
}

TEST_F(DatabaseSqliteTest, CloseNamesTheStatementThatKeepsTheFileInUse) {
  sqlite3_stmt* foreign = nullptr;
  ASSERT_EQ(sqlite3_prepare_v2(db.Handle(), "SELECT 'mine' FROM A", -1, &foreign, nullptr), SQLITE_OK);
  db.Close();
  EXPECT_THAT(log.Lines(), testing::ElementsAre(HasSubstr("SELECT 'mine' FROM A")));
  sqlite3_finalize(foreign);
}

TEST_F(DatabaseSqliteTest, ExecutesTextsWhole) {
  const std::tuple<const char*, bool, const char*> cases[] = {
      {" \n-- nothing\n/* ; */ ;; ", true, "0"},
      {"-- first\nINSERT INTO A VALUES (1); /* and */\n\n;INSERT INTO A VALUES ('a;b') -- end", true, "2"},
      {"BEGIN; INSERT INTO A VALUES (1), (2); SELECT * FROM A; COMMIT;", true, "2"},
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
    Run("DELETE FROM A");
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
  const std::string often = "SELECT ifnull(:a, 'nothing')";
  const auto number = [](int i) { return "SELECT " + std::to_string(i); };
  const std::size_t before = kept().size();
  {
    CursorSqlite first(db, often), second(db, often);
    EXPECT_TRUE(first.Bind("a", 5) && first.Step() && second.Step());
    EXPECT_EQ(first.GetString(0) + second.GetString(0), "5nothing");
  }
  for (int i = 0; i < 1000; ++i)
    EXPECT_EQ(Value(db, often) + Value(db, number(i)), "nothing" + std::to_string(i));
  for (const std::string& notKept : {std::string("PRAGMA user_version"), std::string("SELECT 1; SELECT 2"),
                                     "SELECT 1" + std::string(100000, ' ')})
    Run(notKept);
  EXPECT_FALSE(db.ExecuteStatement("SELECT abs(-9223372036854775807 - 1)"));
  const auto texts = kept();
  EXPECT_EQ(texts.size() - before, 256U);
  EXPECT_TRUE(texts.count(often) == 2 && texts.count(number(999)) == 1 && texts.count(number(700)) == 0);
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

  // The wait for a lock counts; else this would be one of ten minutes.
  db.BeginTransaction();
  EXPECT_FALSE(limited.ExecuteStatement("INSERT INTO A VALUES (2)"));
  EXPECT_EQ(limited.LastFailure(), "database is locked");
  db.EndTransaction(false);
  EXPECT_TRUE(limited.ExecuteStatement("INSERT INTO A VALUES (2)"));
}

TEST_F(DatabaseSqliteTest, AnotherThreadInterruptsWhatRunsAndNothingElse) {
  db.Interrupt();
  Run("INSERT INTO A VALUES (1)");
  DatabaseSqlite blocking(path, nullptr);
  blocking.Open();
  blocking.BeginTransaction();
  DatabaseSqlite waiting("file:" + path + "?_busy_timeout=600000&_statement_timeout=600000", nullptr);
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
  DatabaseSqlite through("file:" + path + "?vfs=loadable-test-vfs", log.Stream());
  EXPECT_THROW(through.Open(), NotSupportedException);
  const std::string copy = directory.File("copy.so");
  const auto expectRefusal = [](const std::string& library, const std::string& reason) {
    EXPECT_THAT([&] { DatabaseSqlite::LoadVfs(library); },
                testing::ThrowsMessage<NotSupportedException>(HasSubstr(reason)));
  };
  expectRefusal(copy, "cannot open shared object file");
  expectRefusal("", "undefined symbol");
  expectRefusal("libm.so.6", "undefined symbol");
  sqlite3_vfs* const defaultVfs = sqlite3_vfs_find(nullptr);
  for (int i = 0; i < 2; ++i)
    DatabaseSqlite::LoadVfs(LOADABLE_VFS);
  EXPECT_EQ(sqlite3_vfs_find(nullptr), defaultVfs);
  std::filesystem::copy(LOADABLE_VFS, copy);
  expectRefusal(copy, "brings no VFS");
  log.Clear();
  through.Open();
  through.BeginTransaction();
  EXPECT_TRUE(
      through.ExecuteStatement("INSERT INTO A VALUES (1); SAVEPOINT s; UPDATE A SET x = 2; ROLLBACK TO s"))
      << log.Text();
  EXPECT_EQ(through.EndTransaction(true), 2);
  EXPECT_EQ(Count(), "1");
}

TEST_F(DatabaseSqliteTest, ALogEntryIsOneWholeLine) {
  db.Log("Some.Source", 0x1f, "first\r\nsecond");
  EXPECT_EQ(db.LastFailure(), "first  second");
  EXPECT_THAT(log.Text(),
              testing::MatchesRegex("20..-[01].-[0-3].T[0-2].:[0-5].:[0-6].\\....Z Some.Source 0x0000001F "
                                    "first  second\n"));
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
              testing::Each(testing::EndsWith("Z Oru.Common.Database 0xC0090118 a message of some length")));
  DatabaseSqlite silent(":memory:", nullptr);
  silent.Open();
  EXPECT_FALSE(silent.ExecuteStatement("bad"));
  EXPECT_EQ(silent.LastFailure(), "near \"bad\": syntax error");
}

}  // namespace Oru::Common::Databases::Sqlite
