#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include "support/SqlValues.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <numeric>
#include <random>

namespace Oru::Common::Databases::Sqlite {

namespace {

constexpr int64_t Int64Min = std::numeric_limits<int64_t>::min();
constexpr int64_t Int64Max = std::numeric_limits<int64_t>::max();
constexpr int64_t TwoTo53 = int64_t{1} << 53;
constexpr double Infinity = std::numeric_limits<double>::infinity();

// Unlike literals of C, these keep their NUL bytes.
const std::string WithNul("a\0b", 3);
const std::vector<std::string> Texts = {
    "",
    "a",
    "A",
    "ab",
    "aB",
    "ba",
    "ä",
    "Ä",
    "日本",
    "😀x",
    "'",
    "a'b",
    "''",
    "100%",
    "100x",
    "a_b",
    "axb",
    "a\\b",
    "\\",
    "--x",
    "a;b",
    "x'00'",
    "\"q\"",
    WithNul,
    {"\0", 1},
    "\n",
    "%",
    "?1",
    ":key",
    "NULL",
    // Bytes that LIKE reads as one character: of no UTF-8, and of the "ä" above.
    "\xff",
    "a\x80",
    "\xc3",
    "\xef\xbf\xbd",
    "\xe0\x83\xa4",
    "\xa4"};
const std::vector<std::string> Blobs = {"", {"\0", 1}, "a", WithNul, "\xff\x27\x80", "ab", "ab--ab"};
const std::vector<int64_t> Integers = {Int64Min, -TwoTo53 - 1, -5, -1, 0, 1, 7, TwoTo53 + 1, Int64Max};
const std::vector<double> Doubles = {
    -Infinity, -1e300, -0.5,     -0.0,        0.1, 7, 1.0 / 3, 9007199254740993.0, 9.2233720368547758e18,
    1e300,     5e-280, Infinity, std::nan("")};

const uint8_t* Data(const std::string& text) {
  return reinterpret_cast<const uint8_t*>(text.data());
}
int32_t Size(const std::string& text) {
  return static_cast<int32_t>(text.size());
}

// A condition and what it means, in SQL that reads its values from the table P, into which they were bound.
struct Condition {
  std::function<void(Query&)> add;
  std::string meaning;
};

}  // namespace

class QuerySqliteTest : public testing::Test {
 protected:
  // The table T has random values and NULLs in columns of each kind: integer, real, text and blob.
  QuerySqliteTest() {
    db.Open();
    sqlite3_create_function(db.Handle(), "occurs", 4, SQLITE_UTF8, nullptr, Occurs, nullptr, nullptr);
    db.ExecuteStatement(
        "CREATE TABLE T (key integer primary key, i integer, r real, t text, b blob);"
        "CREATE TABLE P (n integer primary key, v);"
        "CREATE TABLE Other (ref integer, name text);"
        "INSERT INTO Other VALUES (0, 'it''s'), (7, 'it''s'), (8, NULL), (NULL, NULL);");
    CursorSqlite insert(db, "INSERT INTO T VALUES (NULL, :i, :r, :t, :b)");
    const auto any = [this](const auto& values, auto bind) {
      const std::size_t at = random() % (values.size() + 1);
      if (at < values.size()) bind(values[at]);
    };
    for (int row = 0; row < 150; ++row) {
      any(Integers, [&](int64_t value) { insert.Bind("i", value); });
      any(Doubles, [&](double value) { insert.Bind("r", value); });
      any(Texts, [&](const std::string& value) { insert.Bind("t", value); });
      any(Blobs, [&](const std::string& value) { insert.Bind("b", Data(value), Size(value)); });
      insert.Run();
      insert.Reset();
    }
    AddAll();
  }

  // Binds a value and gives the expression that reads it.
  template <class... V>
  std::string Bound(const V&... value) {
    CursorSqlite insert(db, "INSERT INTO P VALUES (:n, :v)");
    insert.Bind("n", ++lastValue);
    insert.Bind("v", value...);
    insert.Run();
    return "(SELECT +v FROM P WHERE n = " + std::to_string(lastValue) + ")";
  }

  std::string Bound(long long value) { return Bound(int64_t{value}); }

  template <class V>
  void AddComparisons(char column, V value) {
    const std::string name(1, column), bound = Bound(value);
    all.push_back({[=](Query& q) { q.Equals(name, value); }, name + " = " + bound});
    all.push_back({[=](Query& q) { q.LessThan(name, value); }, name + " < " + bound});
    all.push_back({[=](Query& q) { q.GreaterThan(name, value); }, name + " > " + bound});
    all.push_back({[=](Query& q) { q.LessThanOrEquals(name, value); }, name + " <= " + bound});
    all.push_back({[=](Query& q) { q.GreaterThanOrEquals(name, value); }, name + " >= " + bound});
  }

  // Bytes are found as they are. Texts are found without telling A from a, and those of ASCII in what stands
  // before a NUL byte.
  static void Occurs(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return sqlite3_result_null(context);
    const auto bytes = [&](int index) {
      const auto* begin = static_cast<const char*>(sqlite3_value_blob(values[index]));
      return std::string(begin ? begin : "", static_cast<std::size_t>(sqlite3_value_bytes(values[index])));
    };
    std::string all = bytes(0), sought = bytes(1);
    if (sqlite3_value_int(values[2]) != 0) {
      const bool isPlain =
          std::all_of(sought.begin(), sought.end(), [](char c) { return (c & 0x7f) == c && c; });
      if (isPlain) all = all.substr(0, all.find('\0'));
      for (std::string* text : {&all, &sought})
        std::transform(text->begin(), text->end(), text->begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
    }
    const std::string end = all.size() < sought.size() ? "" : all.substr(all.size() - sought.size());
    const bool results[] = {all.find(sought) != std::string::npos, all.rfind(sought, 0) == 0, end == sought};
    sqlite3_result_int(context, results[sqlite3_value_int(values[3])]);
  }

  template <class... Part>
  void AddOccurrences(const std::string& column, const std::string& bound, bool isFolded,
                      const Part&... part) {
    const auto meaning = [&](int place) {
      return "occurs(" + column + ", " + bound + ", " + std::to_string(isFolded) + ", " +
             std::to_string(place) + ")";
    };
    all.push_back({[=](Query& q) { q.Contains(column, part...); }, meaning(0)});
    all.push_back({[=](Query& q) { q.BeginWith(column, part...); }, meaning(1)});
    all.push_back({[=](Query& q) { q.EndWith(column, part...); }, meaning(2)});
  }

  template <class V>
  void AddAmong(const std::string& column, const std::vector<V>& values) {
    std::string meaning = "0";
    for (const V& value : values)
      meaning += " OR " + column + " = " + Bound(value);
    all.push_back({[=](Query& q) { q.In(column, values); }, meaning});
  }

  void AddAll() {
    db.BeginTransaction();
    for (const char column : {'i', 'r'}) {
      for (const int64_t value : Integers) {
        AddComparisons(column, value);
        AddComparisons(column, static_cast<int32_t>(value));
        AddComparisons(column, static_cast<uint32_t>(value));
        AddComparisons(column, static_cast<uint64_t>(value));
      }
      for (const double value : Doubles)
        AddComparisons(column, value);
      AddComparisons(column, true);
      AddComparisons(column, false);
    }
    for (const std::string& value : Texts) {
      AddComparisons('t', value);
      AddOccurrences("t", Bound(value), true, value);
    }
    for (const std::string name : {"i", "r", "t", "b"}) {
      all.push_back({[=](Query& q) { q.IsNULL(name); }, "typeof(" + name + ") = 'null'"});
      for (const std::string& value : Blobs) {
        const std::string bound = Bound(Data(value), Size(value));
        all.push_back({[=](Query& q) { q.Equals(name, Data(value), Size(value)); }, name + " = " + bound});
        if (name == "t" || name == "b") AddOccurrences(name, bound, false, Data(value), Size(value));
      }
    }
    for (const auto& values : {std::vector<long long>{}, {7}, {Int64Min, -1, Int64Max}})
      AddAmong("i", values);
    for (const auto& values : {std::vector<std::string>{}, {"a'b"}, {"", WithNul, "ä"}})
      AddAmong("t", values);
    QuerySqlite named;
    named.Equals("name", "it's");
    const auto shared = std::make_shared<QuerySqlite>(named);
    // The values of the table are those that aren't NULL.
    all.push_back({[](Query& q) { q.In("i", "Other", "ref"); }, "i IN (0, 7, 8)"});
    // A subselect within a subselect.
    QuerySqlite referred, known, nested;
    referred.In("ref", "Other", "ref");
    known.IsNULL("name").Or(referred);
    nested.In("i", "Other", "ref", known);
    all.push_back({[=](Query& q) { q.Not(nested); }, "NOT (i IN (0, 7, 8))"});
    all.push_back({[=](Query& q) { q.In("i", "Other", "ref", named); }, "i IN (0, 7)"});
    all.push_back({[=](Query& q) { q.In("i", "main.Other", "Other.ref", shared); }, "i IN (0, 7)"});
    db.EndTransaction(true);
  }

  std::string Keys(const std::string& condition) { return Keys(StatementText{condition, {}}); }

  std::string Keys(StatementText statement) {
    statement.text.insert(0, "SELECT coalesce(group_concat(key), '') FROM T WHERE ");
    CursorSqlite cursor(db, statement);
    return cursor.Step() ? cursor.GetString(0) : "no row";
  }

  // What a query selects when it runs: with its values bound.
  std::string KeysBound(const QuerySqlite& query) {
    StatementText statement;
    query.AppendFilter(statement, QuerySqlite::Values::Bound);
    return Keys(statement);
  }

  // Fills a query with random conditions and gives what it means, nothing for a query that has stayed empty.
  std::string Compose(int depth, QuerySqlite& query) {
    std::string meaning;
    for (auto steps = random() % 4; steps > 0; --steps) {
      const auto other = std::make_shared<QuerySqlite>();
      const std::shared_ptr<Query> pointer = other;
      const bool byPointer = random() % 2 == 0;
      const auto kind = depth == 0 ? 0 : random() % 4;
      std::string more = kind == 0 ? "" : Compose(depth - 1, *other);
      std::string word = " AND ";
      if (kind == 0) {
        const Condition& condition = all[random() % all.size()];
        condition.add(query);
        more = condition.meaning;
      } else if (kind == 1) {
        byPointer ? query.And(pointer) : query.And(*other);
      } else if (kind == 2) {
        byPointer ? query.Or(pointer) : query.Or(*other);
        word = " OR ";
      } else {
        byPointer ? query.Not(pointer) : query.Not(*other);
        if (!more.empty()) more = "NOT (" + more + ")";
      }
      if (!more.empty()) meaning = meaning.empty() ? more : "(" + meaning + ")" + word + "(" + more + ")";
    }
    return meaning;
  }

  std::mt19937 random{20240311};
  DatabaseSqlite db{":memory:", nullptr};
  std::vector<Condition> all;
  int32_t lastValue = 0;
};

TEST_F(QuerySqliteTest, EveryConditionSelectsTheRowsThatItsMeaningSelects) {
  int selecting = 0;
  for (const Condition& condition : all) {
    QuerySqlite query, negated;
    condition.add(query);
    negated.Not(query);
    const std::string keys = Keys(condition.meaning);
    ASSERT_EQ(Keys(query.GetFilterSQL()), keys) << query.GetFilterSQL();
    ASSERT_EQ(KeysBound(query), keys) << query.GetFilterSQL();
    ASSERT_EQ(Keys(negated.GetFilterSQL()), Keys("NOT (" + condition.meaning + ")"))
        << negated.GetFilterSQL();
    if (!keys.empty()) ++selecting;
  }
  EXPECT_GT(selecting, 500);
}

TEST_F(QuerySqliteTest, ConditionsComposeAsTheirOrderSays) {
  for (int i = 0; i < 1000; ++i) {
    QuerySqlite query;
    const std::string meaning = Compose(3, query);
    ASSERT_EQ(query.IsEmpty(), meaning.empty()) << query.GetFilterSQL();
    const std::string keys = Keys(meaning.empty() ? "0" : meaning);
    if (query.IsEmpty()) continue;
    ASSERT_EQ(Keys(query.GetFilterSQL()), keys) << query.GetFilterSQL();
    ASSERT_EQ(KeysBound(query), keys) << query.GetFilterSQL();
  }
}

// SQLite's own reading of decimal text isn't exact for every double below 1e-280.
TEST_F(QuerySqliteTest, ADoubleLiteralIsTheBoundDoubleToTheLastBit) {
  db.ExecuteStatement("CREATE TABLE D (r real)");
  CursorSqlite insert(db, "INSERT INTO D VALUES (:r)");
  for (int i = 0; i < 3000; ++i) {
    const uint64_t bits = (uint64_t{random()} << 32) | random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (std::isnan(value) || std::abs(value) < 1e-280) continue;
    db.ExecuteStatement("DELETE FROM D");
    insert.Bind("r", value);
    insert.Run();
    insert.Reset();
    QuerySqlite query;
    query.Equals("r", value);
    ASSERT_EQ(TestSupport::Value(db, "SELECT count(*) FROM D WHERE " + query.GetFilterSQL()), "1")
        << query.GetFilterSQL();
  }
}

TEST_F(QuerySqliteTest, RunsWithMoreValuesThanAStatementTakesParameters) {
  for (const std::size_t count : {QuerySqlite::MostBoundValues, std::size_t{40000}}) {
    std::vector<long long> keys(count);
    std::iota(keys.begin(), keys.end(), 100);
    QuerySqlite query;
    query.In("key", keys);
    StatementText statement;
    query.AppendFilter(statement, QuerySqlite::Values::Bound);
    EXPECT_EQ(statement.values.size(), count <= QuerySqlite::MostBoundValues ? count : 0);
    EXPECT_EQ(Keys(statement), Keys("key >= 100"));
  }
}

// SQLite takes expressions of 1000 levels, and each link of a plain chain is one.
TEST_F(QuerySqliteTest, RunsWithAnyNumberOfConditionsAndAlternatives) {
  for (const int count : {249, 250, 251, 500, 501, 10000}) {
    QuerySqlite every, any, mixed;
    for (int i = 0; i < count; ++i) {
      QuerySqlite one;
      one.Equals("key", 2 * i);
      every.GreaterThan("key", i % 100);
      any.Or(one);
    }
    mixed.And(any).LessThan("key", 50).Not(every).Or(any).And(any);
    const std::string keys = Keys("key > " + std::to_string(std::min(count, 100) - 1));
    EXPECT_EQ(KeysBound(every), keys);
    EXPECT_EQ(KeysBound(any), Keys("key % 2 = 0"));
    // SQLite takes seconds to plan it for 10,000.
    if (count < 1000) {
      EXPECT_EQ(KeysBound(mixed), Keys("key % 2 = 0"));
    }
    EXPECT_EQ(every.GetFilterSQL().find('(') == std::string::npos, count <= 250);
  }
}

TEST_F(QuerySqliteTest, OrdersAndLimitsAreAddedInTurn) {
  QuerySqlite query;
  query.OrderByDesc("T.t").OrderByAsc("key").Limit(1, 1).Limit(7, 3);
  EXPECT_TRUE(query.IsEmpty());
  EXPECT_EQ(query.GetOrderBySQL() + " " + query.GetLimitSQL(), "T.t DESC, key ASC LIMIT 7 OFFSET 3");
  query.Limit(-1, 0);
  EXPECT_EQ(TestSupport::Column(db, "SELECT key FROM T " + query.GetLimitSQL()).size(), 150U);
}

TEST_F(QuerySqliteTest, RefusesNamesThatAreNoNamesAndChangesNothing) {
  const std::string names[] = {"",    ".",     "a.",  ".a", "a..b", "1a",  "a b",      "a;",
                               "a--", "\"a\"", "[a]", "a'", "ä",    "a=1", {"a\0b", 3}};
  for (const std::string& name : names) {
    QuerySqlite query;
    EXPECT_THROW(query.IsNULL(name), ArgumentException) << name;
    EXPECT_THROW(query.Equals(name, 1), ArgumentException) << name;
    EXPECT_THROW(query.GreaterThan(name, "x"), ArgumentException) << name;
    EXPECT_THROW(query.EndWith(name, std::string()), ArgumentException) << name;
    EXPECT_THROW(query.BeginWith(name, WithNul), ArgumentException) << name;
    EXPECT_THROW(query.In(name, std::vector<std::string>()), ArgumentException) << name;
    EXPECT_THROW(query.In("a", name, "b"), ArgumentException) << name;
    EXPECT_THROW(query.In("a", "b", name), ArgumentException) << name;
    EXPECT_THROW(query.OrderByAsc(name), ArgumentException) << name;
    EXPECT_THROW(query.Match(name, "x"), ArgumentException) << name;
    EXPECT_TRUE(query.IsEmpty() && query.GetOrderBySQL().empty());
  }
  QuerySqlite query;
  const uint8_t byte = 1;
  EXPECT_THROW(query.Equals("a", &byte, -1), ArgumentException);
  EXPECT_THROW(query.BeginWith("a", &byte, -1), ArgumentException);
  const char* noText = nullptr;
  const std::shared_ptr<Query> noQuery;
  for (const int32_t length : {-1, 5}) {
    EXPECT_THROW(query.Equals("a", nullptr, length), ArgumentException);
    EXPECT_THROW(query.Contains("a", nullptr, length), ArgumentException);
    EXPECT_THROW(query.BeginWith("a", nullptr, length), ArgumentException);
    EXPECT_THROW(query.EndWith("a", nullptr, length), ArgumentException);
  }
  EXPECT_THROW(query.Equals("a", noText), ArgumentException);
  EXPECT_THROW(query.LessThan("a", noText), ArgumentException);
  EXPECT_THROW(query.GreaterThan("a", noText), ArgumentException);
  EXPECT_THROW(query.LessThanOrEquals("a", noText), ArgumentException);
  EXPECT_THROW(query.GreaterThanOrEquals("a", noText), ArgumentException);
  EXPECT_THROW(query.And(noQuery), ArgumentException);
  EXPECT_THROW(query.Or(noQuery), ArgumentException);
  EXPECT_THROW(query.Not(noQuery), ArgumentException);
  EXPECT_THROW(query.In("a", "b", "c", noQuery), ArgumentException);
  EXPECT_THROW(query.Match("a", WithNul), ArgumentException);
  EXPECT_TRUE(query.IsEmpty());
  EXPECT_NO_THROW(query.IsNULL("_a1.B_2.c"));
}

}  // namespace Oru::Common::Databases::Sqlite
