#include "Oru/Common/Databases/Sqlite/ChangeListener.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "support/CapturedLog.h"
#include "support/DescribedTable.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::Value;

namespace {

// "A+1 A-2 A~3 A?4" for rows inserted, deleted, updated and unknown, "A*" for all rows of a table, "*" for
// all.
std::string Text(const ChangeNotice& notice) {
  std::string text = notice.areAllTables ? "*" : "";
  for (const auto& table : notice.tables) {
    if (table.areAllRows) text += " " + table.name + "*";
    for (const auto& row : table.rows)
      text += " " + table.name + "+~-?"[static_cast<int>(row.kind)] + std::to_string(row.key);
  }
  return text.substr(text.empty() ? 0 : 1);
}

}  // namespace

class ChangeListenerTest : public testing::Test {
 protected:
  ChangeListenerTest() {
    db.Open();
    Run("CREATE TABLE A (key integer primary key, x unique);"
        "CREATE TABLE Child (key integer primary key, a references A(key) on delete cascade);"
        "CREATE TABLE Free (x);"
        "CREATE VIRTUAL TABLE Words USING fts5(x, content='A', content_rowid='key');"
        "CREATE TRIGGER Copy AFTER INSERT ON A BEGIN INSERT INTO Words(rowid, x) VALUES (new.key, new.x); "
        "END;"
        "INSERT INTO A VALUES (1, 'one'), (2, 'two'); INSERT INTO Child VALUES (7, 1), (8, 2);"
        "INSERT INTO Free VALUES (1), (2);");
    listener.emplace(db, [this](const ChangeNotice& notice) { told.push_back(Text(notice)); });
  }
  void Run(const std::string& sql) { ASSERT_TRUE(db.ExecuteStatement(sql)) << log.Text(); }
  std::vector<std::string> Told() { return std::exchange(told, {}); }

  TestSupport::CapturedLog log;
  TestSupport::TemporaryDirectory directory;
  const std::string path = directory.File("clips.db");
  DatabaseSqlite db{"file:" + path + "?_busy_timeout=0&_synchronous=off", log.Stream()};
  std::vector<std::string> told;
  std::optional<ChangeListener> listener;
};

TEST_F(ChangeListenerTest, TellsEachRowOnceBehindTheCommit) {
  const std::pair<const char*, const char*> cases[] = {
      {"INSERT INTO A VALUES (3, 'three')", "A+3"},
      {"UPDATE A SET x = 'iii' WHERE key = 3", "A~3"},
      {"BEGIN; INSERT INTO A VALUES (4, 'a'); UPDATE A SET x = 'b' WHERE key = 4; COMMIT", "A+4"},
      {"BEGIN; INSERT INTO A VALUES (5, 'c'); DELETE FROM A WHERE key = 5; DELETE FROM A WHERE key = 4; "
       "COMMIT",
       "A-4"},
      {"BEGIN; DELETE FROM A WHERE key = 3; INSERT INTO A VALUES (3, 'new'); COMMIT", "A~3"},
      {"BEGIN; UPDATE A SET x = 'd' WHERE key = 3; DELETE FROM A WHERE key = 3; COMMIT", "A-3"},
      {"DELETE FROM A WHERE key = 1", "A-1 Child-7"},
      {"DELETE FROM Free", "Free-1 Free-2"},
      {"CREATE TEMP TABLE T (x); INSERT INTO T VALUES (1)", nullptr},
      {"BEGIN; INSERT INTO A VALUES (6, 'e'); ROLLBACK", nullptr},
      {"INSERT INTO Words(Words) VALUES('rebuild')", nullptr},
      {"SELECT * FROM A", nullptr},
  };
  for (const auto& [sql, expected] : cases) {
    Run(sql);
    if (expected) {
      EXPECT_THAT(Told(), ElementsAre(expected)) << sql;
    } else {
      EXPECT_THAT(Told(), IsEmpty()) << sql;
    }
  }
}

TEST_F(ChangeListenerTest, TellsNothingOfWhatFailsAndDoubtsWhatMayBeUndone) {
  EXPECT_FALSE(db.ExecuteStatement("INSERT INTO A VALUES (3, 'x'), (4, 'one')"));
  EXPECT_FALSE(db.ExecuteStatement("INSERT INTO A VALUES (3, 'x'), (4, 'y'), (1, 'z')"));
  EXPECT_THAT(Told(), IsEmpty());
  {
    TransactionGuard guard(db);
    Run("INSERT INTO A VALUES (3, 'x')");
    // Fails ahead of its first row.
    EXPECT_FALSE(db.ExecuteStatement("INSERT INTO A VALUES (9, 'x')"));
    guard.Commit();
  }
  EXPECT_THAT(Told(), ElementsAre("A+3"));
  {
    TransactionGuard guard(db);
    EXPECT_FALSE(db.ExecuteStatement("INSERT INTO A VALUES (4, 'y'), (5, 'one')"));
    Run("INSERT INTO A VALUES (5, 'five')");
    guard.Commit();
  }
  EXPECT_THAT(Told(), ElementsAre("A?4 A+5"));
  {
    TransactionGuard guard(db);
    EXPECT_FALSE(db.ExecuteStatement("INSERT INTO A VALUES (4, 'y'), (5, 'one')"));
    Run("DELETE FROM A WHERE key = 3; SAVEPOINT s; DELETE FROM A WHERE key = 2; /* back */ rollback to s");
    Run("INSERT INTO A VALUES (6, 'z'); SAVEPOINT t; DELETE FROM A WHERE key = 6; RELEASE t");
    guard.Commit();
  }
  EXPECT_THAT(Told(), ElementsAre("A?2 A?3 A?4 Child?8"));
  {
    TransactionGuard guard(db);
    Run("INSERT INTO A VALUES (6, 'z'); SAVEPOINT s; DELETE FROM A WHERE key = 6; ROLLBACK TO s");
    guard.Commit();
  }
  EXPECT_THAT(Told(), ElementsAre("A?6"));
  DatabaseSqlite other("file:" + path, nullptr);
  other.Open();
  {
    ReadGuard reading(other);
    EXPECT_EQ(Value(other, "SELECT count(*) FROM Free"), "2");
    db.BeginTransaction();
    Run("INSERT INTO Free VALUES (3)");
    EXPECT_THROW(db.EndTransaction(true), InvalidOperationException);
    EXPECT_FALSE(db.ExecuteStatement("INSERT INTO A VALUES (1, 'again')"));
    EXPECT_THAT(Told(), IsEmpty());
  }
  EXPECT_EQ(db.EndTransaction(true), 1);
  EXPECT_THAT(Told(), ElementsAre("Free+3"));
}

TEST_F(ChangeListenerTest, TellsWhicheverWayACommitComesAbout) {
  TestSupport::NoteTable notes(db);
  Run(TestSupport::NoteTable::CreateText);
  TestSupport::Note note{-1, "a", 1};
  EXPECT_TRUE(notes.Save(note));
  EXPECT_TRUE(notes.Save(note));
  EXPECT_TRUE(notes.DeleteAll());
  EXPECT_THAT(Told(), ElementsAre("Note+1", "Note~1", "Note-1"));
  Run("INSERT INTO Free VALUES (3)");
  EXPECT_THAT(Told(), ElementsAre("Free+3"));
  CursorSqlite cursor(db, "INSERT INTO Free VALUES (4), (5) RETURNING rowid");
  EXPECT_TRUE(cursor.Step());
  EXPECT_EQ(Value(db, "SELECT 1"), "1");
  EXPECT_THAT(Told(), IsEmpty());
  cursor.Reset();
  EXPECT_THAT(Told(), ElementsAre("Free+4 Free+5"));
  EXPECT_TRUE(cursor.Step());
  cursor.Close();
  EXPECT_THAT(Told(), ElementsAre("Free+6 Free+7"));
  {
    const ConnectionLock lock(db);
    Run("INSERT INTO Free VALUES (8); BEGIN; INSERT INTO Free VALUES (9); ROLLBACK");
    Run("DELETE FROM Free WHERE x = 8; UPDATE Free SET x = 0 WHERE rowid = 1");
    EXPECT_THAT(Told(), IsEmpty());
  }
  EXPECT_THAT(Told(), ElementsAre("Free~1"));
  db.BeginTransaction();
  Run("INSERT INTO Free VALUES (10)");
  db.Close();
  db.Open();
  Run("INSERT INTO Free VALUES (11)");
  EXPECT_THAT(Told(), ElementsAre("Free+8"));
}

TEST_F(ChangeListenerTest, TheFunctionMayReadWriteThrowComeAndGo) {
  listener.reset();
  Run("INSERT INTO Free VALUES (3)");
  EXPECT_THAT(Told(), IsEmpty());
  int depth = 0;
  std::unique_ptr<ChangeListener> second;
  const ChangeListener first(db, [&](const ChangeNotice& notice) {
    EXPECT_EQ(++depth, 1);
    EXPECT_FALSE(db.IsInTransaction());
    told.push_back(Text(notice) + " of " + Value(db, "SELECT count(*) FROM Free"));
    if (Value(db, "SELECT count(*) FROM Free") < "6") {
      TransactionGuard guard(db);
      Run("INSERT INTO Free VALUES (0)");
      guard.Commit();
    }
    --depth;
    throw std::runtime_error("no more paper");
  });
  second = std::make_unique<ChangeListener>(db, [&](const ChangeNotice&) {
    second.reset();
    throw 1;
  });
  EXPECT_TRUE(db.ExecuteStatement("INSERT INTO Free VALUES (4)"));
  EXPECT_THAT(Told(), ElementsAre("Free+4 of 4", "Free+5 of 5", "Free+6 of 6"));
  EXPECT_EQ(log.Lines().size(), 4U);
  EXPECT_TRUE(log.Contains("a listener of changes threw: no more paper"));
  EXPECT_TRUE(log.Contains("something that is no exception"));
  EXPECT_EQ(second, nullptr);
}

TEST_F(ChangeListenerTest, OfTooManyRowsTellsTheTable) {
  Run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 100000) INSERT INTO Free SELECT "
      "i FROM n");
  EXPECT_THAT(Told(), ElementsAre(testing::EndsWith(" Free+100002")));
  Run("BEGIN; UPDATE Free SET x = x + 1; DELETE FROM A WHERE key = 1; COMMIT");
  EXPECT_THAT(Told(), ElementsAre("A-1 Child-7 Free*"));
}

TEST_F(ChangeListenerTest, OutlivesItsDatabase) {
  auto late = std::make_unique<DatabaseSqlite>(":memory:", nullptr);
  const ChangeListener early(*late, [this](const ChangeNotice& notice) { told.push_back(Text(notice)); });
  late->Open();
  EXPECT_TRUE(late->ExecuteStatement("CREATE TABLE T (x); INSERT INTO T VALUES (1)"));
  EXPECT_THAT(Told(), ElementsAre("T+1"));
  late.reset();
}

// What is told of random transactions, beside what the tables held before and after.
TEST_F(ChangeListenerTest, TellsTheDifferenceThatATransactionMakes) {
  using Rows = std::map<std::string, std::string>;
  const auto rows = [&] {
    Rows all;
    for (const char* table : {"A", "Child"}) {
      CursorSqlite cursor(db, std::string("SELECT * FROM ") + table);
      while (cursor.Step())
        all[table + std::to_string(cursor.GetInt64(0))] = cursor.GetString(1);
    }
    return all;
  };
  Rows kinds;
  const ChangeListener model(db, [&](const ChangeNotice& notice) {
    for (const auto& table : notice.tables) {
      for (const auto& row : table.rows)
        kinds[table.name + std::to_string(row.key)] = "+~-?"[static_cast<int>(row.kind)];
    }
  });
  std::mt19937 random(20261124);
  const auto pick = [&](int below) { return std::to_string(random() % static_cast<unsigned int>(below)); };
  Run("PRAGMA recursive_triggers = on");
  for (int round = 0; round < 1500; ++round) {
    const Rows before = rows();
    kinds.clear();
    bool hasDoubts = false;
    db.BeginTransaction();
    std::vector<std::unique_ptr<SavepointGuard>> guards;
    for (int i = static_cast<int>(random() % 12); i >= 0; --i) {
      if (round % 3 == 1 && random() % 3 == 0) {
        if (random() % 2 == 0) {
          guards.push_back(std::make_unique<SavepointGuard>(db));
        } else if (!guards.empty()) {
          SavepointGuard& ended = *guards[random() % guards.size()];
          if (random() % 2 == 0 && ended.IsActive()) ended.Commit();
          ended.Rollback();
        }
      }
      const std::string key = pick(20);
      const std::string texts[] = {
          "INSERT INTO A VALUES (" + key + ", '" + pick(99) + "')",
          "INSERT OR IGNORE INTO A VALUES (" + key + ", '" + pick(99) + "')",
          "INSERT INTO Child VALUES (" + key + ", " + pick(20) + ")",
          "UPDATE A SET x = '" + pick(99) + "' WHERE key = " + key,
          "UPDATE Child SET a = " + pick(20) + " WHERE key < " + key,
          "DELETE FROM A WHERE key = " + key,
          "DELETE FROM Child WHERE key = " + key,
          round % 3 == 0 ? "SAVEPOINT s" : "SELECT 1",
          round % 3 == 0 ? "ROLLBACK TO s" : "SELECT 1",
      };
      const auto choice = random() % 9;
      const bool isDone = db.ExecuteStatement(texts[choice]);
      hasDoubts = hasDoubts || !isDone || choice == 8;
    }
    const bool commits = random() % 4 != 0;
    db.EndTransaction(commits);
    const Rows after = rows();
    Rows difference;
    for (const auto& [row, text] : before) {
      const auto found = after.find(row);
      if (found == after.end() || found->second != text) difference[row] = found == after.end() ? "-" : "~";
    }
    for (const auto& [row, text] : after) {
      if (before.count(row) == 0) difference[row] = "+";
    }
    if (!commits) {
      EXPECT_TRUE(kinds.empty() && difference.empty());
    }
    for (const auto& [row, kind] : difference)
      EXPECT_TRUE(kinds[row] == kind || (hasDoubts && kinds[row] == "?")) << row << kind << kinds[row];
    for (const auto& [row, kind] : kinds) {
      // An update may change nothing, and a row be deleted and inserted as it was.
      const bool isThere = after.count(row) == 1 && before.count(row) == 1;
      EXPECT_TRUE(difference.count(row) == 1 || (kind == "~" && isThere) || (hasDoubts && kind == "?"))
          << row << kind;
    }
    ASSERT_FALSE(HasFailure()) << "round " << round;
  }
}

// Threads: two write on one connection, and a third comes and goes as a listener, at first beside another one
// and then as the only one.
TEST_F(ChangeListenerTest, ThreadsTellOneAtATimeAndMissNothing) {
  std::atomic<int> callers{0};
  int rows = 0;
  const auto count = [&](const ChangeNotice& notice) {
    EXPECT_EQ(++callers, 1);
    for (const auto& table : notice.tables)
      rows += static_cast<int>(table.rows.size());
    EXPECT_NE(Value(db, "SELECT count(*) FROM Free"), "");
    --callers;
  };
  constexpr int rounds = 300;
  const auto write = [&] {
    for (int i = 0; i < rounds; ++i)
      EXPECT_TRUE(db.ExecuteStatement("INSERT INTO Free VALUES (0)"));
  };
  const auto work = [&](const ChangeListener::Function& passing) {
    std::thread threads[] = {std::thread(write), std::thread(write), std::thread([&] {
                               for (int i = 0; i < rounds; ++i)
                                 const ChangeListener comesAndGoes(db, passing);
                             })};
    for (std::thread& thread : threads)
      thread.join();
  };
  listener.emplace(db, count);
  int heard = 0;
  work([&](const ChangeNotice&) { ++heard; });
  EXPECT_EQ(rows, 2 * rounds);
  listener.reset();
  work(count);
  EXPECT_EQ(callers, 0);
  EXPECT_LE(rows, 4 * rounds);
}

}  // namespace Oru::Common::Databases::Sqlite
