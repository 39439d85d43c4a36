#include "Oru/Common/Databases/Sqlite/StatementShape.h"

#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <iterator>
#include <map>
#include <memory>
#include <random>

namespace Oru::Common::Databases::Sqlite {

namespace {

std::string Repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i)
    all += text;
  return all;
}

// The shape and, between bars, the values that were lifted: integers as they are, texts behind a quote. A
// text that stays as it is, and one that isn't cached, are told by a word alone.
std::string Described(StatementShape& shape, const std::string& text) {
  const StatementShape::Kind kind = shape.Analyse(text);
  if (kind == StatementShape::Kind::Uncacheable) return "uncached";
  if (kind == StatementShape::Kind::AsItStands) return shape.Text() == text ? "kept" : "kept, but changed";
  std::string description(shape.Text());
  for (const StatementShape::Literal& literal : shape.Literals())
    description += literal.isText ? "|'" + std::string(literal.text) : "|" + std::to_string(literal.integer);
  return description;
}

}  // namespace

TEST(StatementShapeTest, LiftsWhatComparesInAConditionAndNothingElse) {
  const std::pair<std::string, std::string> cases[] = {
      // Every comparison, in any case and spacing; texts and integers at their limits.
      {"a = 1 AND b == 'x' OR c <> 2 OR d != 'y'", "a = ? AND b == ? OR c <> ? OR d != ?|1|'x|2|'y"},
      {"a<1 OR a<=2 OR a>3 OR a>=4", "a<? OR a<=? OR a>? OR a>=?|1|2|3|4"},
      {"a\n=\t'x'", "a\n=\t?|'x"},
      {"a = /* b = 2 */ 1 -- c = 3", "a = /* b = 2 */ ? -- c = 3|1"},
      {"a = 1;;", "a = ?;;|1"},
      {"a = 'it''s' OR a = '' OR a = 'x' COLLATE NOCASE",
       "a = ? OR a = ? OR a = ? COLLATE NOCASE|'it''s|'|'x"},
      {"a = -1 OR a = +2 OR 1 = 01", "a = ? OR a = ? OR 1 = ?|-1|2|1"},
      {"a = 9223372036854775807 OR a = -9223372036854775808",
       "a = ? OR a = ?|9223372036854775807|-9223372036854775808"},
      {"a = 9223372036854775808 OR a = -9223372036854775809", "kept"},
      {"a = 1.0 OR a = 1e3 OR a = .5 OR a = 5. OR a = 0x1F OR a = 1e-3", "kept"},
      {"a = - 1 OR a = -b OR a = -'1' OR a = --1\n", "kept"},
      // What stands behind other words and signs, or in other tokens.
      {"1 = a AND 'x' = b AND a = (1) AND a = NULL", "kept"},
      {"a LIKE 'x' AND b GLOB 'y' AND c MATCH 'z' AND d IS 1 AND e IN (1, 'x') AND f BETWEEN 1 AND 2",
       "kept"},
      {"a -> 'x' AND b ->> 1 AND c << 1 AND d >> 1 AND e | 1 AND f - 1", "kept"},
      {"a -> 'x' = 'y'", "a -> 'x' = ?|'y"},
      {"a = x'00' OR a = X'00' OR \"b = 1\" OR `b = 1` OR [b = 1] OR \"a\"\"= 1\" OR 'a = 1'", "kept"},
      {"a = 2 GROUP BY a = 3 HAVING c = 4 ORDER BY a = 5 LIMIT a = 6 OFFSET a = 7",
       "a = ? GROUP BY a = 3 HAVING c = ? ORDER BY a = 5 LIMIT a = 6 OFFSET a = 7|2|4"},
      {"a IN (SELECT b = 1 FROM u WHERE c = 2 ORDER BY d = 3 LIMIT 4) AND e = 5",
       "a IN (SELECT b = 1 FROM u WHERE c = ? ORDER BY d = 3 LIMIT 4) AND e = ?|2|5"},
      {"a = 1 UNION SELECT b = 2 FROM u WHERE c = 3 EXCEPT VALUES (4 = 5)",
       "a = ? UNION SELECT b = 2 FROM u WHERE c = ? EXCEPT VALUES (4 = 5)|1|3"},
      // Texts with parameters of their own stay as they are, wherever the parameter stands.
      {"a = 1 AND b = :b", "kept"},
      {"a = ? AND b = 2", "kept"},
      {"b = $c AND a = 1", "kept"},
      {"\"?\" = 1 AND a = '?'", "\"?\" = ? AND a = ?|1|'?"},
      // How many, how deep and how long.
      {"a = 0" + Repeated(" OR a = 1", 15), "a = ?" + Repeated(" OR a = ?", 15) + "|0" + Repeated("|1", 15)},
      {"a = 0" + Repeated(" OR a = 1", 16), "uncached"},
      {Repeated("(", 31) + "a = 1" + Repeated(")", 31),
       Repeated("(", 31) + "a = ?" + Repeated(")", 31) + "|1"},
      {Repeated("(", 32) + "a = 1" + Repeated(")", 32), "uncached"},
      {"a IN (" + Repeated("1234567890, ", 2000) + "1)", "uncached"},
      // What isn't SQL.
      {"a = 'x", "uncached"},
      {"a = 'x'5", "uncached"},
      {"\"a = 1", "uncached"},
      {"[a = 1", "uncached"},
      {"a = 1)", "uncached"},
      {"a ^ 1", "uncached"},
      {std::string("1\0AND a = 1", 11), "uncached"},
  };
  StatementShape shape;
  const std::string select = "SELECT a FROM t WHERE ";
  for (const auto& [text, description] : cases) {
    const bool isLifted = description != "kept" && description != "uncached";
    EXPECT_EQ(Described(shape, select + text), (isLifted ? select : "") + description);
  }
}

TEST(StatementShapeTest, LiftsBehindTheFirstWhereOnHavingOrSetOutsideParenthesesAndInNoOtherPlace) {
  const std::pair<std::string, std::string> cases[] = {
      {"SELECT a = 1, 'x' < 'y', CASE a WHEN b = 2 THEN 3 END FROM t", "kept"},
      {"select a = 0 from t join u on a = 1 and u.b = 'x' where c = 2",
       "select a = 0 from t join u on a = ? and u.b = ? where c = ?|1|'x|2"},
      {"SELECT sum(a) FILTER (WHERE a = 1) OVER (PARTITION BY a = 2) FROM t WHERE b = 3 WINDOW w AS (ORDER "
       "BY a = 4)",
       "SELECT sum(a) FILTER (WHERE a = 1) OVER (PARTITION BY a = 2) FROM t WHERE b = ? WINDOW w AS (ORDER "
       "BY a = 4)|3"},
      {"SELECT (SELECT a FROM t WHERE b = 1) FROM (SELECT a FROM t WHERE b = 2) WHERE a = 3",
       "SELECT (SELECT a FROM t WHERE b = 1) FROM (SELECT a FROM t WHERE b = 2) WHERE a = ?|3"},
      {"WITH c AS (SELECT a FROM t WHERE b = 1) SELECT a FROM c WHERE a = 2",
       "WITH c AS (SELECT a FROM t WHERE b = 1) SELECT a FROM c WHERE a = ?|2"},
      {"INSERT INTO t (a) VALUES (1), ('x' = 'y')", "kept"},
      {"INSERT INTO t SELECT a = 1 FROM u WHERE b = 2", "INSERT INTO t SELECT a = 1 FROM u WHERE b = ?|2"},
      {"INSERT INTO t SELECT a FROM u WHERE b = 1 ON CONFLICT (a) WHERE b = 2 DO UPDATE SET c = 3", "kept"},
      {"REPLACE INTO t SELECT a FROM u WHERE b = 'x'", "REPLACE INTO t SELECT a FROM u WHERE b = ?|'x"},
      {"UPDATE t SET a = 1, b = 'x' || c WHERE d = 2", "UPDATE t SET a = ?, b = ? || c WHERE d = ?|1|'x|2"},
      {"/* note */ DELETE FROM t WHERE a = 1 RETURNING b = 2",
       "/* note */ DELETE FROM t WHERE a = ? RETURNING b = 2|1"},
      {"SELECT @a FROM t WHERE b = 2", "kept"},
      {"SELECT 1; DELETE FROM t", "uncached"},
      {" -- nothing", "uncached"},
      {"PRAGMA user_version = 1", "uncached"},
      {"EXPLAIN SELECT a FROM t WHERE a = 1", "uncached"},
      {"CREATE TABLE u AS SELECT a FROM t WHERE a = 1", "uncached"},
      {"SELECTED", "uncached"},
  };
  StatementShape shape;
  for (const auto& [text, description] : cases)
    EXPECT_EQ(Described(shape, text), description);
}

TEST(StatementShapeTest, AGuessThatAnAnalysisHasMadeBeforeIsWhatAnAnalysisMakes) {
  const std::string pieces[] = {"a = 1",      "a = 22",     "b == 'x'", "b = 'y''z'", "a = -3",   "a=7",
                                "\"q = 4\"",  "/* = 5 */",  "-- = 6\n", "'= 8'",      "= 9",      "WHERE",
                                "AND",        "(",          ")",        "SELECT",     "ORDER BY", "LIMIT",
                                "?",          ":p",         "a = 1.5",  "a = 0x10",   "'",        "x'00' = 1",
                                "a LIKE 'l'", "a -> 2 = 3", "[= 10]"};
  std::mt19937 random(4);
  std::map<std::string, std::size_t> made;
  int met = 0;
  for (int round = 0; round < 50000; ++round) {
    std::string text = "SELECT a FROM t WHERE ";
    const int count = std::uniform_int_distribution<>(1, 4)(random);
    for (int i = 0; i < count; ++i)
      text += pieces[std::uniform_int_distribution<std::size_t>(0, std::size(pieces) - 1)(random)] + " ";

    StatementShape guess;
    guess.Guess(text);
    StatementShape analysis;
    const StatementShape::Kind kind = analysis.Analyse(text);
    const auto known = made.find(std::string(guess.Text()));
    if (known != made.end() && known->second == guess.Literals().size()) {
      ++met;
      ASSERT_NE(kind, StatementShape::Kind::Uncacheable) << text;
      ASSERT_EQ(analysis.Text(), guess.Text()) << text;
      ASSERT_EQ(analysis.Literals().size(), guess.Literals().size()) << text;
      for (std::size_t i = 0; i < guess.Literals().size(); ++i) {
        ASSERT_EQ(analysis.Literals()[i].integer, guess.Literals()[i].integer) << text;
        ASSERT_EQ(analysis.Literals()[i].text, guess.Literals()[i].text) << text;
      }
    }
    if (kind != StatementShape::Kind::Uncacheable)
      made[std::string(analysis.Text())] = analysis.Literals().size();
  }
  EXPECT_GT(met, 500);
}

namespace {

std::string Rows(sqlite3_stmt* statement) {
  std::string rows;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
      rows += sqlite3_column_name(statement, i) + std::to_string(sqlite3_column_type(statement, i)) + ":";
      rows.append(text ? text : "", static_cast<std::size_t>(sqlite3_column_bytes(statement, i))) += ";";
    }
  }
  return rows;
}

}  // namespace

// Over a table with a column of every affinity that holds each of the literals.
TEST(StatementShapeTest, ALiftedStatementGivesTheRowsAndNamesOfThePlainOne) {
  const std::string literals[] = {"0",
                                  "-1",
                                  "10",
                                  "'10'",
                                  "' 10 '",
                                  "'1e1'",
                                  "10.0",
                                  "'abc'",
                                  "'ABC'",
                                  "''",
                                  "x'6162'",
                                  "NULL",
                                  "9223372036854775807",
                                  "9223372036854775808",
                                  "'9223372036854775807'",
                                  "'it''s'"};
  const std::string operands[] = {"k",       "i",        "r", "n", "t", "b", "u", "CAST(i AS TEXT)",
                                  "(t + 0)", "length(t)"};
  DatabaseSqlite db(":memory:", nullptr);
  db.Open();
  db.ExecuteStatement(
      "CREATE TABLE T (k integer primary key, i integer, r real, n numeric, t text, b blob, u)");
  for (const std::string& v : literals)
    db.ExecuteStatement("INSERT INTO T VALUES (NULL, " + v + "," + v + "," + v + "," + v + "," + v + "," + v +
                        ")");
  int withRows = 0;
  for (const std::string& operand : operands) {
    for (const std::string comparison : {" = ", "==", " <> ", "!=", " < ", "<=", ">", " >= "}) {
      for (const std::string& literal : literals) {
        const std::string condition = operand + comparison + literal;
        for (const std::string& text :
             {"SELECT *, " + condition + " FROM T WHERE " + condition + " ORDER BY k",
              "SELECT t AS c, count(*) FROM T GROUP BY c HAVING " + condition + " COLLATE NOCASE ORDER BY 1",
              "SELECT k FROM T WHERE NOT (" + condition +
                  ") UNION SELECT k FROM T WHERE k IN (SELECT k FROM T WHERE " + condition + " || '')"}) {
          sqlite3_stmt* handle = nullptr;
          ASSERT_EQ(sqlite3_prepare_v2(db.Handle(), text.c_str(), -1, &handle, nullptr), SQLITE_OK) << text;
          const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> plain(handle, sqlite3_finalize);
          const CursorSqlite kept(db, text);
          const std::string rows = Rows(plain.get());
          ASSERT_EQ(Rows(kept.Statement()), rows) << text;
          if (!rows.empty()) ++withRows;
        }
      }
    }
  }
  EXPECT_GT(withRows, 2000);
}

}  // namespace Oru::Common::Databases::Sqlite
