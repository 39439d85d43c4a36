#include "Oru/Common/Databases/Sqlite/ChangeListener.h"

#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"

#include "support/OpenSqlite.h"

namespace Oru::Common::Databases::Sqlite {

using TestSupport::Value;

class ChangeListenerTest : public TestSupport::OpenSqlite {
 protected:
  ChangeListenerTest() {
    Run("CREATE TABLE A (key integer primary key, x unique);"
        "CREATE TABLE Child (key integer primary key, a references A(key) on delete cascade);"
        "CREATE TABLE Free (x);"
        "CREATE VIRTUAL TABLE Words USING fts5(x, content='A', content_rowid='key');"
        "CREATE TRIGGER Copy AFTER INSERT ON A BEGIN INSERT INTO Words(rowid, x) VALUES (new.key, new.x); "
        "END;"
        "INSERT INTO A VALUES (1, 'one'), (2, 'two'); INSERT INTO Child VALUES (7, 1), (8, 2);"
        "INSERT INTO Free VALUES (1), (2);");
    listener.emplace(db, [this](const ChangeNotice& notice) { Note(notice); });
  }
  // "A+1 A-2 A~3 A?4;" for rows inserted, deleted, updated and unknown, "A*;" for all rows of a table.
  void Note(const ChangeNotice& notice) {
    for (const auto& table : notice.tables) {
      if (table.areAllRows) reported += table.name + "* ";
      for (const auto& row : table.rows)
        reported += table.name + "+~-?"[static_cast<int>(row.kind)] + std::to_string(row.key) + " ";
    }
    reported.back() = ';';
  }
  std::string Reported() { return std::exchange(reported, {}); }

  std::string reported;
  std::optional<ChangeListener> listener;
};

TEST_F(ChangeListenerTest, ReportsWhatItCanAndNothingOfTablesThatAreNotTheCallers) {
  const std::pair<const char*, const char*> cases[] = {
      {"DELETE FROM Free", "Free-1 Free-2;"},
      {"DELETE FROM A WHERE key = 1; INSERT INTO A VALUES (1, 'new')", "A-1 Child-7;A+1;"},
      {"CREATE TEMP TABLE T (x); INSERT INTO T VALUES (1)", ""},
      {"INSERT INTO Words(Words) VALUES('rebuild')", ""},
      // A rollback to a savepoint of the caller's may have undone anything.
      {"BEGIN; INSERT INTO A VALUES (6, 'z'); SAVEPOINT t; DELETE FROM A WHERE key = 6; RELEASE t; COMMIT",
       ""},
      {"BEGIN; INSERT INTO A VALUES (6, 'z'); SAVEPOINT s; DELETE FROM A; /* */ rollback to s; COMMIT",
       "A?1 A?2 A?6 Child?8;"},
  };
  for (const auto& [sql, expected] : cases) {
    Run(sql);
    EXPECT_EQ(Reported(), expected) << sql;
  }
}

TEST_F(ChangeListenerTest, ReportsWhicheverWayACommitComesAbout) {
  CursorSqlite cursor(db, "INSERT INTO Free VALUES (4), (5) RETURNING rowid");
  EXPECT_TRUE(cursor.Step());
  EXPECT_EQ(Value(db, "SELECT 1"), "1");
  EXPECT_EQ(Reported(), "");
  cursor.Reset();
  EXPECT_EQ(Reported(), "Free+3 Free+4;");
  EXPECT_TRUE(cursor.Step());
  cursor.Close();
  EXPECT_EQ(Reported(), "Free+5 Free+6;");
  {
    const ConnectionLock lock(db.Parts());
    Run("INSERT INTO Free VALUES (8); BEGIN; INSERT INTO Free VALUES (9); ROLLBACK");
    Run("DELETE FROM Free WHERE x = 8; UPDATE Free SET x = 0 WHERE rowid = 1");
    EXPECT_EQ(Reported(), "");
  }
  EXPECT_EQ(Reported(), "Free~1;");
}

TEST_F(ChangeListenerTest, TheFunctionMayReadWriteThrowComeAndGo) {
  listener.reset();
  Run("INSERT INTO Free VALUES (3)");
  int depth = 0;
  std::unique_ptr<ChangeListener> second;
  const ChangeListener first(db, [&](const ChangeNotice& notice) {
    EXPECT_EQ(++depth, 1);
    EXPECT_FALSE(db.IsInTransaction());
    Note(notice);
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
  Run("INSERT INTO Free VALUES (4)");
  EXPECT_EQ(Reported(), "Free+4;Free+5;Free+6;");
  EXPECT_EQ(log.Lines().size(), 4U);
  EXPECT_TRUE(log.Contains("a listener of changes threw: no more paper"));
  EXPECT_TRUE(log.Contains("something that is no exception"));
  EXPECT_EQ(second, nullptr);
}

TEST_F(ChangeListenerTest, OfTooManyRowsReportsTheTable) {
  Run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 100000) INSERT INTO Free SELECT "
      "i FROM n");
  EXPECT_THAT(Reported(), testing::EndsWith(" Free+100002;"));
  Run("BEGIN; UPDATE Free SET x = x + 1; DELETE FROM A WHERE key = 1; COMMIT");
  EXPECT_EQ(Reported(), "A-1 Child-7 Free*;");
}

TEST_F(ChangeListenerTest, OutlivesItsDatabase) {
  auto late = std::make_unique<DatabaseSqlite>(":memory:", nullptr);
  const ChangeListener early(*late, [this](const ChangeNotice& notice) { Note(notice); });
  late->Open();
  EXPECT_TRUE(late->ExecuteStatement("CREATE TABLE T (x); INSERT INTO T VALUES (1)"));
  EXPECT_EQ(Reported(), "T+1;");
  late.reset();
}

// Threads: two write on one connection, beside transactions on a third. A fourth comes and goes as a listener, at
// first beside another one and then as the only one.
TEST_F(ChangeListenerTest, ThreadsReportOneAtATimeAndMissNothing) {
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
  const auto work = [&](const ChangeListener::Function& passing) {
    std::vector<std::thread> threads;
    const auto repeat = [&](const std::function<void()>& step) {
      threads.emplace_back([step] {
        for (int round = 0; round < rounds; ++round)
          step();
      });
    };
    for (int writer = 0; writer < 2; ++writer)
      repeat([&] { Run("INSERT INTO Free VALUES (0)"); });
    // What another thread writes after a commit isn't taken for a write after a lost transaction.
    repeat([&] { TransactionGuard(db).Commit(); });
    repeat([&] { const ChangeListener comesAndGoes(db, passing); });
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
