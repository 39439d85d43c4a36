#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/RawCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/RawReadSqlite.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>
#include <limits>
#include <optional>
#include <regex>

namespace Oru::Common::Databases::Sqlite {

using testing::HasSubstr;

class CursorSqliteTest : public testing::Test {
 protected:
  CursorSqliteTest() {
    db.Open();
    db.ExecuteStatement(
        "CREATE TABLE T (k integer primary key, v);"
        "INSERT INTO T (v) VALUES (NULL), (-7), (2.5), ('12 apples'), (x'00ff'), (9223372036854775807),"
        " (''), (x''), (CAST(x'610062' AS TEXT)), (1e20), (' +2.5e3x');");
  }

  TestSupport::CapturedLog log;
  DatabaseSqlite db{":memory:", log.Stream()};
};

TEST_F(CursorSqliteTest, ReadsEveryKindOfValueAsEveryType) {
  struct {
    bool isNull;
    int64_t integer;
    double real;
    std::string text;
  } const cases[] = {{true, 0, 0, ""},
                     {false, -7, -7, "-7"},
                     {false, 2, 2.5, "2.5"},
                     {false, 12, 12, "12 apples"},
                     {false, 0, 0, {"\0\xff", 2}},
                     {false, std::numeric_limits<int64_t>::max(), 0x1p63, "9223372036854775807"},
                     {false, 0, 0, ""},
                     {false, 0, 0, ""},
                     {false, 0, 0, {"a\0b", 3}},
                     {false, std::numeric_limits<int64_t>::max(), 1e20, "1.0e+20"},
                     {false, 2, 2500, " +2.5e3x"}};
  CursorSqlite cursor(db, "SELECT k, v FROM T ORDER BY k");
  RawCursorSqlite rawCursor(db, "SELECT k, v FROM T ORDER BY k");
  ObjectCursorSqlite<RawReadSqlite, RawReadSqlite> objects(db, "SELECT k, v FROM T ORDER BY k");
  RawReadSqlite row;
  for (const auto& [isNull, integer, real, text] : cases) {
    ASSERT_TRUE(cursor.Step() && objects.Next(row) && rawCursor.Next(row));
    const auto expectAs = [&, isNull = isNull, integer = integer, real = real, text = text](
                              const auto& source, const auto& column) {
      SCOPED_TRACE(text);
      EXPECT_EQ(source.IsNull(column), isNull);
      EXPECT_EQ(source.GetInt64(column), integer);
      EXPECT_EQ(source.GetUInt64(column), static_cast<uint64_t>(integer));
      EXPECT_EQ(source.GetInt32(column), static_cast<int32_t>(integer));
      EXPECT_EQ(source.GetUInt32(column), static_cast<uint32_t>(integer));
      EXPECT_EQ(source.GetDouble(column), real);
      EXPECT_EQ(source.GetBoolean(column), integer != 0);
      EXPECT_EQ(source.GetString(column), text);
    };
    expectAs(cursor, "v");
    expectAs(cursor, 1);
    expectAs(rawCursor, "v");
    expectAs(objects, "v");
    expectAs(objects, 1);
    expectAs(row, "v");
    uint8_t* bytes = nullptr;
    ASSERT_EQ(cursor.GetBytes("v", &bytes), static_cast<int32_t>(text.size()));
    const std::unique_ptr<uint8_t[]> owner(bytes);
    EXPECT_EQ(std::string(bytes, bytes + text.size()), text);
    EXPECT_EQ(bytes == nullptr, text.empty());
    EXPECT_EQ(row.GetBytesArraySize("v"), static_cast<int32_t>(text.size()));
    uint8_t two[2] = {9, 9};
    EXPECT_EQ(row.GetBytesArray("v", two, 2), std::min<int32_t>(2, static_cast<int32_t>(text.size())));
    EXPECT_EQ(two[0], text.empty() ? 9 : static_cast<uint8_t>(text[0]));
  }
}

TEST_F(CursorSqliteTest, IsOnNoRowBeforeTheFirstAndAfterTheLast) {
  EXPECT_THROW(CursorSqlite().GetDatabase(), ArgumentException);
  CursorSqlite cursor(db, "SELECT k, v FROM T WHERE k = 2");
  const auto readsNothing = [&](const auto&... columns) {
    int64_t value = 42;
    EXPECT_FALSE((cursor.Get(columns, value) || ...));
    EXPECT_TRUE(value == 42 && (cursor.IsNull(columns) && ...));
    const auto refuses = [&](const auto& column) {
      EXPECT_THROW(cursor.GetString(column), ArgumentException);
    };
    (refuses(columns), ...);
  };
  uint8_t* bytes = nullptr;
  readsNothing("k", 0);
  EXPECT_EQ(cursor.Get("k", &bytes), -1);
  EXPECT_THROW(cursor.GetBytes("k", &bytes), ArgumentException);
  EXPECT_TRUE(cursor.Step());
  readsNothing("nosuch", "K", 2, -1);
  for (int i = 0; i < 3; ++i)
    EXPECT_FALSE(cursor.Step());
  readsNothing("k", 0);
  cursor.Reset();
  EXPECT_TRUE(cursor.Step());
  EXPECT_EQ(cursor.GetInt64("v"), -7);
  cursor.Reset();
  readsNothing("k", 0);
  // Steps on the statement itself.
  db.ExecuteStatement("ALTER TABLE T ADD COLUMN w DEFAULT 'new'");
  cursor.Reset(db, "SELECT * FROM T WHERE k = 2", "");
  db.ExecuteStatement("ALTER TABLE T RENAME COLUMN w TO x");
  ASSERT_EQ(sqlite3_step(cursor.Statement()), SQLITE_ROW);
  EXPECT_EQ(cursor.GetString("x") + std::to_string(cursor.GetInt64(1)), "new-7");
  EXPECT_FALSE(cursor.IsNull("v"));
  ASSERT_EQ(sqlite3_step(cursor.Statement()), SQLITE_DONE);
  readsNothing("k", 0);
}

TEST_F(CursorSqliteTest, CursorsOfEachClassBindByNameAndNumberAndForgetAtReset) {
  const std::string select =
      "SELECT typeof(:a) || '|' || quote(:a) || '|' || typeof(:b) || '|' || quote(:b) AS s";
  const uint8_t bytes[] = {1, 0, 0xfe};
  const auto expectBindsUntil = [&](auto reset, auto& cursor, auto a, auto b, auto step) {
    const auto result = [&](bool isBound) {
      EXPECT_TRUE(isBound && step());
      const std::string text = cursor.GetString("s");
      reset();
      return text;
    };
    EXPECT_EQ(result(cursor.Bind(a, int64_t{-1}) && cursor.Bind(b, uint64_t{1} << 63)),
              "integer|-1|integer|-9223372036854775808");
    EXPECT_EQ(result(cursor.Bind(b, int32_t{-5}) && cursor.Bind(a, uint32_t{0xffffffff})),
              "integer|4294967295|integer|-5");
    EXPECT_EQ(result(cursor.Bind(a, true) && cursor.Bind(b, 0.5)), "integer|1|real|0.5");
    EXPECT_EQ(result(cursor.Bind(a, "it's") && cursor.Bind(b, std::string())), "text|'it''s'|text|''");
    EXPECT_EQ(result(cursor.Bind(a, bytes, 3) && cursor.Bind(b, nullptr, 0)), "blob|X'0100FE'|blob|X''");
    EXPECT_EQ(result(cursor.Bind(b, std::string(1000, 'x'))),
              "null|NULL|text|'" + std::string(1000, 'x') + "'");
    EXPECT_EQ(result(cursor.Bind(a, 1) && cursor.Bind(a) && cursor.Bind(b, 2.0)), "null|NULL|real|2.0");
    EXPECT_EQ(result(true), "null|NULL|null|NULL");
  };
  const auto expectBinds = [&](auto& cursor, auto a, auto b, auto step) {
    expectBindsUntil([&] { cursor.Reset(); }, cursor, a, b, step);
  };
  CursorSqlite cursor(db, select);
  ObjectCursorSqlite<RawReadSqlite, RawReadSqlite> objects(db, select);
  RawCursorSqlite rows(db, select);
  RawReadSqlite row;
  expectBinds(cursor, "a", "b", [&] { return cursor.Step(); });
  for (const int last : {2, 7, 70}) {
    cursor.Reset(db, std::regex_replace(select, std::regex(":b"), '?' + std::to_string(last)), "");
    const auto step = [&] { return cursor.Step(); };
    expectBinds(cursor, 1, last, step);
    expectBindsUntil([&] { cursor.ResetForSameValues(); }, cursor, 1, last, step);
  }
  expectBinds(objects, "a", "b", [&] { return objects.Next(row); });
  expectBinds(objects, 1, 2, [&] { return objects.Next(row); });
  expectBinds(rows, "a", "b", [&] { return rows.Next(row); });
  // By names that stay, of which the last names none of the parameters; for a second statement they name
  // others.
  const std::string names[] = {"b", "a", "c"};
  cursor.Reset(db, select, "");
  cursor.UseConstantNames(names, 3);
  expectBinds(cursor, std::cref(names[1]), std::cref(names[0]), [&] { return cursor.Step(); });
  EXPECT_FALSE(cursor.Bind(names[2], 1));
  cursor.Reset(db, "SELECT quote(:c) || quote(:b) AS s", "");
  EXPECT_TRUE(cursor.Bind(names[2], 3) && cursor.Bind(names[0], 2) && cursor.Step());
  EXPECT_EQ(cursor.GetString("s"), "32");
}

TEST_F(CursorSqliteTest, WithoutAStatementItIsClosedAndSaysWhy) {
  struct {
    const char *text, *reason;
  } const cases[] = {{"SELECT nosuch FROM T WHERE k = 1", "no such column: nosuch"},
                     {"SELEC", "syntax error"},
                     {"", "the text holds no statement"},
                     {"-- nothing", "the text holds no statement"},
                     {"SELECT 'a", "unrecognized token"}};
  for (const auto& [text, reason] : cases) {
    log.Clear();
    CursorSqlite cursor(db, text);
    EXPECT_THAT(log.Lines(), testing::ElementsAre(HasSubstr(reason))) << text;
    EXPECT_FALSE(cursor.IsOpened() || cursor.Bind("a", 1) || cursor.Bind(1, 1));
    EXPECT_THROW(cursor.Step(), ObjectClosedException);
    EXPECT_EQ(cursor.GetColumnsCount() + cursor.GetColumnIndex("k") + cursor.GetTotalItemsCount(), -2);
    cursor.Reset();
    cursor.Close();
    cursor.Reset(db, "SELECT 3 AS k", "SELECT 4");
    EXPECT_TRUE(cursor.Step());
    EXPECT_EQ(cursor.GetInt64("k") + cursor.GetTotalItemsCount(), 7);
    EXPECT_EQ(log.Lines().size(), 1U);
  }
}

TEST_F(CursorSqliteTest, AStepThatFailsIsLoggedAndTheCursorWorksOn) {
  CursorSqlite insert(db, "INSERT INTO T (k) VALUES (:k)");
  insert.Bind("k", 1);
  EXPECT_THROW(insert.Run(), InvalidOperationException);
  EXPECT_THAT(log.Lines(), testing::ElementsAre(HasSubstr(" 0xC0090118 UNIQUE constraint failed: T.k")));
  EXPECT_TRUE(insert.IsOpened());
  insert.Reset();
  insert.Bind("k", 100);
  insert.Run();
  insert.Close();
  for (sqlite3_stmt* kept = nullptr; (kept = sqlite3_next_stmt(db.Handle(), kept));)
    EXPECT_STRNE(sqlite3_sql(kept), "INSERT INTO T (k) VALUES (:k)");
  CursorSqlite select(db, "SELECT abs(v) FROM (SELECT 1 AS v UNION ALL SELECT -9223372036854775807 - 1)");
  EXPECT_TRUE(select.Step());
  EXPECT_THROW(select.Step(), InvalidOperationException);
  EXPECT_TRUE(select.IsNull(0));
  EXPECT_TRUE(select.Step());
  EXPECT_THROW(CursorSqlite(db, "SELECT 1").Run(), InvalidOperationException);
}

TEST_F(CursorSqliteTest, OutlivesTheOpeningAndTheDatabase) {
  std::optional<DatabaseSqlite> owner;
  owner.emplace(":memory:", log.Stream());
  owner->Open();
  CursorSqlite cursor(*owner, "SELECT 1 AS one");
  RawCursorSqlite raw(*owner, "SELECT 2 AS two", "SELECT 3");
  RawReadSqlite row;
  EXPECT_TRUE(cursor.Step() && raw.Next(row));
  owner->Close();
  EXPECT_FALSE(cursor.IsOpened() || raw.IsOpened());
  owner->Open();
  EXPECT_THROW(cursor.Step(), ObjectClosedException);
  cursor.Reset(*owner, "SELECT 4 AS four", "");
  EXPECT_TRUE(cursor.Step());
  owner.reset();
  EXPECT_FALSE(cursor.IsOpened() || cursor.Bind("a", 1));
  EXPECT_THROW(raw.Next(row), ObjectClosedException);
  EXPECT_EQ(raw.GetTotalItemsCount(), -1);
  cursor.Reset(db, "SELECT 5", "");
  EXPECT_TRUE(cursor.Step());
}

TEST_F(CursorSqliteTest, ReadsTheRightColumnsWhateverHasBecomeOfTheTable) {
  const TestSupport::TemporaryDirectory directory;
  DatabaseSqlite first(directory.File("a.db"), log.Stream()), second(directory.File("a.db"), log.Stream());
  first.Open();
  second.Open();
  first.ExecuteStatement("CREATE TABLE S (a, b); INSERT INTO S VALUES (1, 2);");
  const auto read = [&] {
    CursorSqlite cursor(first, "SELECT * FROM S WHERE b = 2");
    if (!cursor.Step()) return std::string("nothing");
    return cursor.GetString("a") + cursor.GetString("b") + std::to_string(cursor.GetColumnsCount());
  };
  EXPECT_EQ(read() + read(), "122122");
  second.ExecuteStatement("ALTER TABLE S ADD COLUMN c DEFAULT 3");
  EXPECT_EQ(read() + read(), "123123");
  second.ExecuteStatement("DROP TABLE S; CREATE TABLE S (c, b, x, a); INSERT INTO S VALUES (3, 2, 0, 1);");
  EXPECT_EQ(read() + read(), "124124");
  // What this connection changes itself shows before the first step too.
  first.ExecuteStatement("ALTER TABLE S ADD COLUMN d");
  const auto has = [&](const char* column) {
    return CursorSqlite(first, "SELECT * FROM S WHERE b = 2").GetColumnIndex(column) != -1;
  };
  EXPECT_TRUE(has("d"));
  CursorSqlite(first, "ALTER TABLE S ADD COLUMN e").Run();
  EXPECT_TRUE(has("e"));
  for (const bool isByCursor : {false, true}) {
    first.BeginTransaction();
    first.ExecuteStatement("ALTER TABLE S ADD COLUMN f");
    EXPECT_TRUE(has("f"));
    isByCursor ? CursorSqlite(first, "ROLLBACK").Run() : static_cast<void>(first.EndTransaction(false));
    EXPECT_FALSE(has("f"));
  }
  second.ExecuteStatement("DROP TABLE S");
  EXPECT_THROW(read(), InvalidOperationException);
}

TEST(RawReadSqliteTest, KeepsWhatItWasSetToAndConvertsAsAColumnDoes) {
  RawReadSqlite row;
  uint8_t bytes[] = {0x31, 0x32, 0};
  row.Set("unsigned", uint64_t{1} << 63);
  row.Set("small", uint32_t{0xffffffff});
  row.Set("bool", true);
  row.Set("bytes", bytes, 3);
  EXPECT_THROW(row.Set("bytes", bytes, -1), ArgumentException);
  EXPECT_THROW(row.Set("bytes", nullptr, 5), ArgumentException);
  EXPECT_THROW(row.Set("text", static_cast<const char*>(nullptr)), ArgumentException);
  row.SetNull("null");
  bytes[0] = 0;
  const RawReadSqlite copy(row);
  row.Reset();
  EXPECT_THROW(row.GetInt64("small"), ArgumentException);
  EXPECT_EQ(copy.GetUInt64("unsigned"), uint64_t{1} << 63);
  EXPECT_EQ(copy.GetInt64("small"), 4294967295);
  EXPECT_EQ(copy.GetInt32("small"), -1);
  EXPECT_EQ(copy.GetString("bool"), "1");
  EXPECT_EQ(copy.GetInt64("bytes"), 12);
  EXPECT_TRUE(copy.IsNull("null") && copy.GetString("null").empty() && !copy.GetBoolean("null"));
}

}  // namespace Oru::Common::Databases::Sqlite
