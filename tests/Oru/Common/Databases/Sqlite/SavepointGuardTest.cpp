#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "support/SqlValues.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <optional>
#include <random>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

class SavepointGuardTest : public testing::Test {
 protected:
  SavepointGuardTest() {
    db.Open();
    db.ExecuteStatement("CREATE TABLE A (x unique)");
  }
  void Insert(int x) { EXPECT_TRUE(db.ExecuteStatement("INSERT INTO A VALUES (" + std::to_string(x) + ")")); }
  int64_t Count() { return std::stoll(TestSupport::Value(db, "SELECT count(*) FROM A")); }
  void ExpectRefusal(const std::string& reason) {
    EXPECT_THROW(SavepointGuard{db}, InvalidOperationException);
    EXPECT_EQ(db.LastFailure(), "begin of a savepoint refused: " + reason);
  }

  DatabaseSqlite db{":memory:", nullptr};
};

// Guards that begin, end and are left in any order, beside a stack of how many rows there were at each begin.
TEST_F(SavepointGuardTest, TakesBackWhatWasWrittenSinceItsBegin) {
  struct Level {
    std::unique_ptr<SavepointGuard> guard;
    int64_t countAtBegin = 0;
  };
  std::mt19937 random(20261125);
  int next = 0;
  for (int round = 0; round < 300; ++round) {
    const int64_t countBefore = Count();
    int64_t count = countBefore;
    std::vector<Level> open;
    std::vector<Level> ended;
    TransactionGuard transaction(db);
    for (int i = 0; i < 30; ++i) {
      const auto action = random() % 5;
      if (action < 2) {
        Insert(++next);
        ++count;
      } else if (action == 2) {
        open.push_back({std::make_unique<SavepointGuard>(db), count});
      } else if (!open.empty()) {
        const auto place = static_cast<std::ptrdiff_t>(random() % open.size());
        Level& level = open[static_cast<std::size_t>(place)];
        if (action == 3) {
          level.guard->Commit();
        } else {
          count = level.countAtBegin;
          if (random() % 2 == 0) {
            level.guard->Rollback();
          } else {
            level.guard.reset();
          }
        }
        std::move(open.begin() + place, open.end(), std::back_inserter(ended));
        open.erase(open.begin() + place, open.end());
      }
      ASSERT_EQ(Count(), count);
      for (const Level& level : open)
        ASSERT_TRUE(level.guard->IsActive());
      for (const Level& level : ended) {
        if (!level.guard) continue;
        ASSERT_FALSE(level.guard->IsActive());
        ASSERT_THROW(level.guard->Commit(), InvalidOperationException);
        level.guard->Rollback();
      }
    }
    if (random() % 2 == 0) {
      ASSERT_EQ(transaction.Commit(), count - countBefore);
    } else {
      transaction.Rollback();
      count = countBefore;
    }
    for (const Level& level : open)
      ASSERT_FALSE(level.guard->IsActive());
    ASSERT_EQ(Count(), count);
  }
}

TEST_F(SavepointGuardTest, NeedsATransactionThatMayWrite) {
  ExpectRefusal("no transaction was begun");
  {
    const ReadGuard reading(db);
    ExpectRefusal("no transaction was begun");
  }
  Insert(1);
  {
    const TransactionGuard guard(db);
    CursorSqlite writing(db, "INSERT INTO A VALUES (7), (8) RETURNING x");
    EXPECT_TRUE(writing.Step());
    ExpectRefusal("cannot open savepoint - SQL statements in progress");
    writing.Close();
    EXPECT_FALSE(db.ExecuteStatement("INSERT OR ROLLBACK INTO A VALUES (1)"));
    ExpectRefusal("the transaction was rolled back at an earlier failure and must be ended first");
  }
  db.Close();
  ExpectRefusal("the database is not open");
}

TEST_F(SavepointGuardTest, LeavesASavepointAloneThatIsNotItsOwn) {
  EXPECT_TRUE(db.ExecuteStatement("BEGIN"));
  auto first = std::make_unique<SavepointGuard>(db);
  Insert(1);
  EXPECT_TRUE(db.ExecuteStatement("COMMIT; BEGIN"));
  EXPECT_FALSE(first->IsActive());
  SavepointGuard second(db);
  Insert(2);
  first.reset();
  EXPECT_EQ(Count(), 2);
  second.Rollback();
  EXPECT_TRUE(db.ExecuteStatement("SAVEPOINT s"));
  {
    SavepointGuard within(db);
    Insert(3);
    EXPECT_TRUE(db.ExecuteStatement("RELEASE s"));
    EXPECT_THROW(within.Commit(), InvalidOperationException);
  }
  auto last = std::make_unique<SavepointGuard>(db);
  Insert(4);
  db.Close();
  EXPECT_FALSE(last->IsActive());
  db.Open();
  EXPECT_TRUE(db.ExecuteStatement("CREATE TABLE A (x); BEGIN"));
  SavepointGuard reopened(db);
  Insert(5);
  last.reset();
  reopened.Commit();
  EXPECT_EQ(Count(), 1);
}

// SQLite can hardly be made to fail at it; a function that the caller has registered can forbid it.
TEST_F(SavepointGuardTest, ARollbackThatFailsLosesTheWholeTransaction) {
  TransactionGuard transaction(db);
  Insert(1);
  std::optional<SavepointGuard> guard(db);
  Insert(2);
  // The refusal comes when the kept statement is prepared again, after a change of the schema.
  EXPECT_TRUE(db.ExecuteStatement("CREATE TABLE B (x)"));
  sqlite3_set_authorizer(
      db.Handle(),
      [](void*, int action, const char*, const char*, const char*, const char*) {
        return action == SQLITE_SAVEPOINT ? SQLITE_DENY : SQLITE_OK;
      },
      nullptr);
  EXPECT_THROW(guard->Rollback(), InvalidOperationException);
  sqlite3_set_authorizer(db.Handle(), nullptr, nullptr);
  EXPECT_NE(db.LastFailure().find("the whole transaction was rolled back: not authorized"), std::string::npos)
      << db.LastFailure();
  EXPECT_FALSE(guard->IsActive());
  EXPECT_FALSE(db.ExecuteStatement("INSERT INTO A VALUES (3)"));
  EXPECT_THROW(transaction.Commit(), InvalidOperationException);
  EXPECT_EQ(Count(), 0);
}

}  // namespace Oru::Common::Databases::Sqlite
