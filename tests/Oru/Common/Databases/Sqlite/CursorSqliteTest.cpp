#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/RawCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/RawReadSqlite.h"

#include "support/OpenSqlite.h"

#include <regex>

namespace Oru::Common::Databases::Sqlite {

using testing::HasSubstr;

class CursorSqliteTest : public TestSupport::OpenSqlite {
 protected:
  CursorSqliteTest() {
    Run("CREATE TABLE T (k integer primary key, v);"
        "INSERT INTO T (v) VALUES (NULL), (-7), (2.5), ('12 apples'), (x'00ff'), (9223372036854775807),"
        " (''), (x''), (CAST(x'610062' AS TEXT)), (1e20), (' +2.5e3x');");
  }
};

// NULL or not, the integer in each size, the real number, the truth, and the text.
template <class Source, class Column>
std::string AsEveryType(const Source& source, const Column& column) {
  std::ostringstream text;
  text << source.IsNull(column) << ' ' << source.GetInt64(column) << ' ' << source.GetUInt64(column) << ' '
       << source.GetInt32(column) << ' ' << source.GetUInt32(column) << ' ' << source.GetDouble(column) << ' '
       << source.GetBoolean(column) << ' ' << source.GetString(column);
  return text.str();
}

TEST_F(CursorSqliteTest, ReadsEveryKindOfValueAsEveryType) {
  const std::string cases[] = {"1 0 0 0 0 0 0 ",
                               "0 -7 18446744073709551609 -7 4294967289 -7 1 -7",
                               "0 2 2 2 2 2.5 1 2.5",
                               "0 12 12 12 12 12 1 12 apples",
                               {"0 0 0 0 0 0 0 \0\xff", 16},
                               ("0 9223372036854775807 9223372036854775807 -1 4294967295 9.22337e+18 1 "
                                "9223372036854775807"),
                               "0 0 0 0 0 0 0 ",
                               "0 0 0 0 0 0 0 ",
                               {"0 0 0 0 0 0 0 a\0b", 17},
                               "0 9223372036854775807 9223372036854775807 -1 4294967295 1e+20 1 1.0e+20",
                               "0 2 2 2 2 2500 1  +2.5e3x"};
  CursorSqlite cursor(db, "SELECT k, v FROM T ORDER BY k");
  RawCursorSqlite rawCursor(db, "SELECT k, v FROM T ORDER BY k");
  ObjectCursorSqlite<RawReadSqlite, RawReadSqlite> objects(db, "SELECT k, v FROM T ORDER BY k");
  RawReadSqlite row;
  for (const std::string& expected : cases) {
    ASSERT_TRUE(cursor.Step() && objects.Next(row) && rawCursor.Next(row));
    EXPECT_EQ(AsEveryType(cursor, "v"), expected);
    EXPECT_EQ(AsEveryType(cursor, 1), expected);
    EXPECT_EQ(AsEveryType(rawCursor, "v"), expected);
    EXPECT_EQ(AsEveryType(objects, "v"), expected);
    EXPECT_EQ(AsEveryType(objects, 1), expected);
    EXPECT_EQ(AsEveryType(row, "v"), expected);
    std::string text, same;
    EXPECT_TRUE(cursor.Get("v", text) && cursor.Get(1, same) && same == text);
    const auto size = static_cast<int32_t>(text.size());
    uint8_t *bytes = nullptr, two[2] = {9, 9};
    ASSERT_EQ(cursor.GetBytes("v", &bytes), size);
    const std::unique_ptr<uint8_t[]> owner(bytes);
    EXPECT_EQ(std::string(bytes, bytes + size), text);
    EXPECT_EQ(bytes == nullptr, text.empty());
    EXPECT_EQ(row.GetBytesArraySize("v"), size);
    EXPECT_EQ(row.GetBytesArray("v", two, 2), std::min(2, size));
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
  EXPECT_THROW(cursor.GetBytes("k", &bytes), ArgumentException);
  EXPECT_TRUE(cursor.Step());
  readsNothing("nosuch", "K", 2, -1);
  for (int i = 0; i < 3; ++i)
    EXPECT_FALSE(cursor.Step());
  readsNothing("k", 0);
  cursor.Reset();
  EXPECT_TRUE(cursor.Step());
  cursor.Reset();
  readsNothing("k", 0);
  // Steps on the statement itself.
  Run("ALTER TABLE T ADD COLUMN w DEFAULT 'new'");
  cursor.Reset(db, "SELECT * FROM T WHERE k = 2", "");
  Run("ALTER TABLE T RENAME COLUMN w TO x");
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
      std::string text = isBound && step() ? cursor.GetString("s") : "(not bound)";
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
  const auto expectClosed = [&](CursorSqlite& cursor) {
    EXPECT_FALSE(cursor.IsOpened() || cursor.Bind("a", 1) || cursor.Bind(1, 1));
    EXPECT_THROW(cursor.Step(), ObjectClosedException);
    EXPECT_EQ(cursor.GetColumnsCount() + cursor.GetColumnIndex("k") + cursor.GetTotalItemsCount(), -2);
    cursor.Reset();
    cursor.Close();
    cursor.Reset(db, "SELECT 3 AS k", "SELECT 4");
    EXPECT_TRUE(cursor.Step());
    EXPECT_EQ(cursor.GetInt64("k") + cursor.GetTotalItemsCount(), 7);
  };
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT nosuch FROM T WHERE k = 1", "no such column: nosuch"},
      {"-- nothing", "the text holds no statement"},
      {"SELECT 'a", "unrecognized token"}};
  for (const auto& [text, reason] : cases) {
    log.Clear();
    CursorSqlite cursor(db, text);
    EXPECT_THAT(log.Lines(), testing::ElementsAre(HasSubstr(reason))) << text;
    expectClosed(cursor);
    EXPECT_EQ(log.Lines().size(), 1U);
  }
  // It outlives the opening and the database.
  auto owner = std::make_unique<DatabaseSqlite>(":memory:", nullptr);
  owner->Open();
  CursorSqlite first(*owner, "SELECT 1 AS k", "SELECT 1"), second(*owner, "SELECT 2 AS k");
  EXPECT_TRUE(first.Step() && second.Step());
  owner->Close();
  owner->Open();
  expectClosed(first);
  second.Reset(*owner, "SELECT 3 AS k", "SELECT 3");
  EXPECT_TRUE(second.Step());
  owner.reset();
  expectClosed(second);
}

TEST_F(CursorSqliteTest, AStepThatFailsIsLoggedAndTheCursorWorksOn) {
  const std::string text = "SELECT abs(v) FROM (SELECT 1 AS v UNION ALL SELECT -9223372036854775807 - 1)";
  {
    CursorSqlite select(db, text);
    for (int i = 0; i < 2; ++i) {
      EXPECT_TRUE(select.Step());
      EXPECT_THROW(select.Step(), InvalidOperationException);
      EXPECT_TRUE(select.IsNull(0));
      EXPECT_EQ(log.Lines().size(), i + 1U);
    }
  }
  for (sqlite3_stmt* kept = nullptr; (kept = sqlite3_next_stmt(db.Handle(), kept));)
    EXPECT_NE(sqlite3_sql(kept), text);
  EXPECT_THROW(CursorSqlite(db, "SELECT 1").Run(), InvalidOperationException);
}

TEST_F(CursorSqliteTest, ReadsTheRightColumnsWhateverHasBecomeOfTheTable) {
  DatabaseSqlite other(path, log.Stream());
  other.Open();
  Run("CREATE TABLE S (a, b); INSERT INTO S VALUES (1, 2);");
  const auto read = [&] {
    CursorSqlite cursor(db, "SELECT * FROM S WHERE b = 2");
    if (!cursor.Step()) return std::string("nothing");
    return cursor.GetString("a") + cursor.GetString("b") + std::to_string(cursor.GetColumnsCount());
  };
  EXPECT_EQ(read() + read(), "122122");
  other.ExecuteStatement("ALTER TABLE S ADD COLUMN c DEFAULT 3");
  EXPECT_EQ(read() + read(), "123123");
  other.ExecuteStatement("DROP TABLE S; CREATE TABLE S (c, b, x, a); INSERT INTO S VALUES (3, 2, 0, 1);");
  EXPECT_EQ(read() + read(), "124124");
  // What this connection changes itself shows before the first step too.
  const auto has = [&](const char* column) {
    return CursorSqlite(db, "SELECT * FROM S WHERE b = 2").GetColumnIndex(column) != -1;
  };
  Run("ALTER TABLE S ADD COLUMN d");
  EXPECT_TRUE(has("d"));
  CursorSqlite(db, "ALTER TABLE S ADD COLUMN e").Run();
  EXPECT_TRUE(has("e"));
  for (const bool isByCursor : {false, true}) {
    db.BeginTransaction();
    Run("ALTER TABLE S ADD COLUMN f");
    EXPECT_TRUE(has("f"));
    isByCursor ? CursorSqlite(db, "ROLLBACK").Run() : static_cast<void>(db.EndTransaction(false));
    EXPECT_FALSE(has("f"));
  }
  other.ExecuteStatement("DROP TABLE S");
  EXPECT_THROW(read(), InvalidOperationException);
}

TEST(RawReadSqliteTest, KeepsWhatItWasSetTo) {
  RawReadSqlite row;
  uint8_t bytes[] = {0x31, 0x32, 0x33};
  row.Set("unsigned", uint64_t{1} << 63);
  row.Set("small", uint32_t{0xffffffff});
  row.Set("bool", true);
  row.Set("bytes", bytes, 3);
  row.SetNull("null");
  EXPECT_THROW(row.Set("bytes", bytes, -1), ArgumentException);
  EXPECT_THROW(row.Set("bytes", nullptr, 5), ArgumentException);
  EXPECT_THROW(row.Set("text", static_cast<const char*>(nullptr)), ArgumentException);
  bytes[0] = 0;
  const RawReadSqlite copy(row);
  row.Reset();
  EXPECT_THROW(row.GetInt64("small"), ArgumentException);
  EXPECT_EQ(copy.GetUInt64("unsigned"), uint64_t{1} << 63);
  EXPECT_EQ(AsEveryType(copy, "small"), "0 4294967295 4294967295 -1 4294967295 4.29497e+09 1 4294967295");
  EXPECT_EQ(AsEveryType(copy, "bool"), "0 1 1 1 1 1 1 1");
  EXPECT_EQ(AsEveryType(copy, "bytes"), "0 123 123 123 123 123 1 123");
  EXPECT_EQ(AsEveryType(copy, "null"), "1 0 0 0 0 0 0 ");
}

}  // namespace Oru::Common::Databases::Sqlite
