#include "Oru/Common/Databases/Sqlite/Statements/StatementCache.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>

namespace Oru::Common::Databases::Sqlite {

class StatementCacheTest : public testing::Test {
 protected:
  StatementCacheTest() {
    db.Open();
    db.ExecuteStatement(
        "CREATE TABLE T (k integer primary key, t text); INSERT INTO T VALUES (1, 'it''s'), (2, 'b');"
        "PRAGMA user_version");
    newestOfConnection = sqlite3_next_stmt(db.Handle(), nullptr);
  }

  std::unique_ptr<StatementHandle> Take(const std::string& text) { return cache.Take(db.Handle(), text); }
  // The first column of the first row, with the statement going back to the cache.
  std::string Run(const std::string& text) {
    auto statement = Take(text);
    EXPECT_NE(statement, nullptr) << text;
    const bool hasRow = sqlite3_step(statement->Handle()) == SQLITE_ROW;
    std::string value =
        hasRow ? reinterpret_cast<const char*>(sqlite3_column_text(statement->Handle(), 0)) : "";
    cache.Return(std::move(statement), true);
    return value;
  }
  static std::string Text(int number) { return "SELECT 'value " + std::to_string(number) + "'"; }
  // Whether a statement of the text lies idle, seen from the handle that a second taking gives.
  bool IsKept(const std::string& text) {
    const std::size_t idle = cache.Count();
    auto statement = Take(text);
    const bool isKept = cache.Count() < idle;
    cache.Return(std::move(statement), isKept);
    return isKept;
  }

  DatabaseSqlite db{":memory:", nullptr};
  StatementCache cache{3};
  // The connection has statements of its own; what is newer than them is of the cache.
  sqlite3_stmt* newestOfConnection = nullptr;
};

TEST_F(StatementCacheTest, KeepsWhatReadsAndWritesRowsByItsExactText) {
  for (const std::string text :
       {"SELECT k FROM T WHERE k = 1", "SELECT k FROM T WHERE k = 2", " delete FROM T;\n"}) {
    Run(text);
    EXPECT_TRUE(IsKept(text)) << text;
  }
  const std::string tooLong = "SELECT 1" + std::string(StatementCache::LongestText, ' ');
  for (const std::string& text :
       {std::string("PRAGMA user_version"), std::string("SELECT 1; SELECT 2"), tooLong}) {
    Run(text);
    EXPECT_EQ(Take(text)->slot, nullptr) << text;
  }
  std::string_view rest;
  cache.Return(cache.Take(db.Handle(), "SELECT 1; SELECT 2", &rest), true);
  EXPECT_EQ(rest, " SELECT 2");
}

TEST_F(StatementCacheTest, DropsTheLeastRecentlyUsedBeyondItsBound) {
  for (const int number : {0, 1, 2, 0, 3})
    EXPECT_EQ(Run(Text(number)), "value " + std::to_string(number));
  EXPECT_EQ(cache.Count(), 3U);
  EXPECT_FALSE(IsKept(Text(1)));
  EXPECT_TRUE(IsKept(Text(0)) && IsKept(Text(2)) && IsKept(Text(3)));
}

TEST_F(StatementCacheTest, NeverSharesAStatementAndClearsItForTheNextUser) {
  const std::string text = "SELECT ifnull(:a, 'nothing')";
  auto first = Take(text), second = Take(text);
  ASSERT_NE(first->Handle(), second->Handle());
  sqlite3_bind_int(first->Handle(), 1, 5);
  EXPECT_EQ(sqlite3_step(first->Handle()), SQLITE_ROW);
  cache.Return(std::move(first), true);
  cache.Return(std::move(second), true);
  EXPECT_EQ(cache.Count(), 2U);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(Run(text), "nothing");
}

TEST_F(StatementCacheTest, DropsStatementsThatFailedAndRefusesThoseThatAreNotItsOwn) {
  cache.Return(Take(Text(1)), false);
  EXPECT_EQ(cache.Count(), 0U);
  EXPECT_EQ(Take("SELECT nosuch FROM T"), nullptr);
  EXPECT_EQ(sqlite3_next_stmt(db.Handle(), nullptr), newestOfConnection);
  cache.Return(StatementHandle::Prepare(db.Handle(), "SELECT 1", false), true);
  EXPECT_EQ(sqlite3_next_stmt(db.Handle(), nullptr), newestOfConnection);
}

}  // namespace Oru::Common::Databases::Sqlite
