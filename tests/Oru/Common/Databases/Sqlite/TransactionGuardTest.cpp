#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include "support/SqlValues.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <ostream>
#include <streambuf>

namespace Oru::Common::Databases::Sqlite {

class TransactionGuardTest : public testing::Test {
 protected:
  TransactionGuardTest() {
    db.Open();
    db.ExecuteStatement("CREATE TABLE A (x unique)");
  }
  void Insert(int x) { EXPECT_TRUE(db.ExecuteStatement("INSERT INTO A VALUES (" + std::to_string(x) + ")")); }
  std::string Sum() { return TestSupport::Value(db, "SELECT total(x) FROM A"); }

  DatabaseSqlite db{":memory:", nullptr};
};

TEST_F(TransactionGuardTest, CommitsOnceAndRollsBackWhatWasNotCommitted) {
  {
    TransactionGuard guard(db);
    Insert(1);
    EXPECT_TRUE(guard.IsActive());
    EXPECT_EQ(guard.Commit(), 1);
    EXPECT_FALSE(guard.IsActive());
    EXPECT_THROW(guard.Commit(), InvalidOperationException);
    Insert(2);
    guard.Rollback();
  }
  {
    const TransactionGuard guard(db);
    Insert(4);
  }
  {
    TransactionGuard guard(db);
    Insert(8);
    guard.Rollback();
    EXPECT_FALSE(db.IsInTransaction());
    Insert(16);
  }
  EXPECT_EQ(Sum(), "19.0");
}

TEST_F(TransactionGuardTest, LeavesATransactionAloneThatIsNotItsOwn) {
  auto first = std::make_unique<TransactionGuard>(db);
  Insert(1);
  EXPECT_EQ(db.EndTransaction(true), 1);
  TransactionGuard second(db);
  Insert(2);
  EXPECT_FALSE(first->IsActive());
  EXPECT_THROW(first->Commit(), InvalidOperationException);
  first.reset();
  EXPECT_TRUE(second.IsActive());
  second.Commit();
  {
    const TransactionGuard closed(db);
    Insert(4);
    EXPECT_TRUE(db.ExecuteStatement("COMMIT; BEGIN; INSERT INTO A VALUES (8)"));
  }
  EXPECT_TRUE(db.ExecuteStatement("COMMIT"));
  EXPECT_EQ(Sum(), "15.0");
  for (const char* end : {"COMMIT", "ROLLBACK"}) {
    const TransactionGuard ended(db);
    Insert(16);
    CursorSqlite(db, end).Run();
    EXPECT_FALSE(ended.IsActive());
    Insert(32);
    EXPECT_TRUE(db.ExecuteStatement("DELETE FROM A WHERE x >= 16")) << end;
  }
  EXPECT_EQ(Sum(), "15.0");
  const TransactionGuard last(db);
  db.Close();
  EXPECT_FALSE(last.IsActive());
}

TEST_F(TransactionGuardTest, EndsATransactionThatWasLost) {
  Insert(1);
  {
    TransactionGuard guard(db);
    Insert(2);
    EXPECT_FALSE(db.ExecuteStatement("INSERT OR ROLLBACK INTO A VALUES (1)"));
    EXPECT_THROW(guard.Commit(), InvalidOperationException);
    EXPECT_FALSE(guard.IsActive());
  }
  Insert(4);
  EXPECT_EQ(Sum(), "5.0");
}

// A log whose buffer fails in the most awkward way there is.
class ThrowingBuffer : public std::streambuf {
  std::streamsize xsputn(const char*, std::streamsize) override { throw 1; }
};

TEST(GuardTest, DestructorsThrowNothingWhenTheirEndIsRefusedAndTheLogThrows) {
  ThrowingBuffer buffer;
  const auto log = std::make_shared<std::ostream>(&buffer);
  log->exceptions(std::ios_base::badbit);
  DatabaseSqlite db(":memory:", log);
  db.Open();
  EXPECT_TRUE(
      db.ExecuteStatement("CREATE TABLE B (id integer primary key);"
                          "CREATE TABLE A (b references B deferrable initially deferred)"));
  {
    const TransactionGuard guard(db);
    EXPECT_TRUE(db.ExecuteStatement("INSERT INTO B VALUES (1)"));
    sqlite3_set_authorizer(
        db.Handle(),
        [](void*, int action, const char*, const char*, const char*, const char*) {
          return action == SQLITE_TRANSACTION ? SQLITE_DENY : SQLITE_OK;
        },
        nullptr);
  }
  EXPECT_TRUE(db.HasBegunTransaction());
  sqlite3_set_authorizer(db.Handle(), nullptr, nullptr);
  EXPECT_EQ(db.EndTransaction(false), 0);
  {
    const ReadGuard reading(db);
    EXPECT_EQ(sqlite3_exec(db.Handle(), "INSERT INTO A VALUES (99)", nullptr, nullptr, nullptr), SQLITE_OK);
  }
  EXPECT_FALSE(db.IsInTransaction());
  EXPECT_EQ(TestSupport::Value(db, "SELECT count(*) || (SELECT count(*) FROM B) FROM A"), "00");
}

}  // namespace Oru::Common::Databases::Sqlite
