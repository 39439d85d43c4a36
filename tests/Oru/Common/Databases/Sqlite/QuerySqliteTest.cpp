#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include "support/SqlValues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <optional>
#include <random>
#include <variant>

namespace Oru::Common::Databases::Sqlite {

namespace {

using Bytes = std::vector<uint8_t>;
using Value = std::variant<std::monostate, int64_t, double, std::string, Bytes>;
// True, false or, for a comparison with NULL, neither.
using Truth = std::optional<bool>;

constexpr int64_t Int64Min = std::numeric_limits<int64_t>::min();
constexpr int64_t Int64Max = std::numeric_limits<int64_t>::max();
constexpr int64_t TwoTo53 = int64_t{1} << 53;
constexpr double Infinity = std::numeric_limits<double>::infinity();
const double NaN = std::nan("");

// Unlike literals of C, these keep their NUL bytes.
const std::vector<std::string> Texts = {
    "",     "a",   "A",    "ab",   "aB",       "ba",      "ä",           "Ä",        "日本",
    "😀x",   "'",   "a'b",  "''",   "100%",     "100x",    "a_b",         "axb",      "a\\b",
    "\\",   "--x", "a;b",  "?1",   "x'00'",    "\"q\"",   {"a\0b", 3},   {"\0", 1},  {"b\0", 2},
    "\n\r", "%",   ":key", "NULL", "aaaaaaab", " spaced", "longer text", "ends in b"};
const std::vector<Bytes> Blobs = {
    {}, {0}, {'a'}, {'a', 0, 'b'}, {0xff, 0x27, 0x80}, {'a', 'b'}, {1, 2, 3, 1, 2}};
const std::vector<int64_t> Integers = {Int64Min, Int64Min + 1, -TwoTo53 - 1, -5, -1, 0, 1,
                                       7,        TwoTo53 + 1,  Int64Max};
const std::vector<double> Doubles = {
    -Infinity, -1e300, -0.5,     -0.0, 0.1, 7, 1.0 / 3, 9007199254740993.0, 9.2233720368547758e18,
    1e300,     5e-280, Infinity, NaN};

struct Row {
  int64_t key;
  // A column of each kind: i INTEGER, r REAL, t TEXT, b BLOB.
  Value i, r, t, b;

  const Value& operator[](char column) const {
    return column == 'i' ? i : column == 'r' ? r : column == 't' ? t : b;
  }
};

struct Condition {
  std::function<void(Query&)> add;
  std::function<Truth(const Row&)> holds;
};

bool IsNull(const Value& value) {
  const auto* real = std::get_if<double>(&value);
  return std::holds_alternative<std::monostate>(value) || (real && std::isnan(*real));
}

// Below, equal or above as -1, 0 and 1; numbers stand below texts, and these below bytes. A long double holds
// every 64-bit integer and every double exactly.
std::optional<int> Order(const Value& left, const Value& right) {
  if (IsNull(left) || IsNull(right)) return std::nullopt;
  const auto rank = [](const Value& value) {
    return value.index() < 3 ? 0 : static_cast<int>(value.index());
  };
  if (rank(left) != rank(right)) return rank(left) < rank(right) ? -1 : 1;
  const auto number = [](const Value& value) -> long double {
    return value.index() == 1 ? static_cast<long double>(std::get<int64_t>(value)) : std::get<double>(value);
  };
  const auto order = [](const auto& a, const auto& b) { return a < b ? -1 : b < a ? 1 : 0; };
  if (rank(left) == 0) return order(number(left), number(right));
  if (left.index() == 4) return order(std::get<Bytes>(left), std::get<Bytes>(right));
  return order(std::get<std::string>(left), std::get<std::string>(right));
}

Truth And(Truth a, Truth b) {
  if (a == false || b == false) return false;
  return a && b ? Truth(true) : std::nullopt;
}
Truth Not(Truth a) {
  return a ? Truth(!*a) : std::nullopt;
}
Truth Or(Truth a, Truth b) {
  return Not(And(Not(a), Not(b)));
}

template <class V>
Value AsStored(V value) {
  if constexpr (std::is_same_v<V, double> || std::is_same_v<V, std::string>)
    return value;
  else
    return static_cast<int64_t>(value);
}

template <class V>
void AddComparisons(std::vector<Condition>& all, char column, V value) {
  const std::string name(1, column);
  const auto add = [&](std::function<void(Query&)> operation, std::function<bool(int)> accepts) {
    all.push_back({std::move(operation), [=](const Row& row) -> Truth {
                     const auto order = Order(row[column], AsStored(value));
                     return order ? Truth(accepts(*order)) : std::nullopt;
                   }});
  };
  add([=](Query& q) { q.Equals(name, value); }, [](int order) { return order == 0; });
  add([=](Query& q) { q.LessThan(name, value); }, [](int order) { return order < 0; });
  add([=](Query& q) { q.GreaterThan(name, value); }, [](int order) { return order > 0; });
  add([=](Query& q) { q.LessThanOrEquals(name, value); }, [](int order) { return order <= 0; });
  add([=](Query& q) { q.GreaterThanOrEquals(name, value); }, [](int order) { return order >= 0; });
}

bool Occurs(const std::string& part, const std::string& text, char where) {
  if (part.size() > text.size()) return false;
  if (where == 'b') return text.compare(0, part.size(), part) == 0;
  if (where == 'e') return text.compare(text.size() - part.size(), part.size(), part) == 0;
  return text.find(part) != std::string::npos;
}

std::string Folded(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

// `LIKE` sees a stored text up to its first NUL byte.
Truth OccursInText(const Value& stored, const std::string& part, char where) {
  const auto* text = std::get_if<std::string>(&stored);
  if (!text) return std::nullopt;
  if (part.find('\0') != std::string::npos) return Occurs(part, *text, where);
  return Occurs(Folded(part), Folded(text->c_str()), where);
}

Truth OccursInBytes(const Value& stored, const Bytes& part, char where) {
  std::string all;
  if (const auto* bytes = std::get_if<Bytes>(&stored))
    all.assign(bytes->begin(), bytes->end());
  else if (const auto* text = std::get_if<std::string>(&stored))
    all = *text;
  else
    return std::nullopt;
  return Occurs(std::string(part.begin(), part.end()), all, where);
}

template <class Operation>
void AddOccurrences(std::vector<Condition>& all, Operation operation, char where) {
  for (const std::string& part : Texts) {
    all.push_back({[=](Query& q) { operation(q, "t", part); },
                   [=](const Row& row) { return OccursInText(row.t, part, where); }});
  }
  for (const char column : {'t', 'b'}) {
    for (const Bytes& part : Blobs) {
      all.push_back({[=](Query& q) {
                       operation(q, std::string(1, column), part.data(), static_cast<int32_t>(part.size()));
                     },
                     [=](const Row& row) { return OccursInBytes(row[column], part, where); }});
    }
  }
}

template <class V>
Truth IsAmong(const Value& stored, const std::vector<V>& values, bool withNull = false) {
  Truth found = false;
  for (const V& value : values) {
    const auto order = Order(stored, AsStored(value));
    found = Or(found, order ? Truth(*order == 0) : std::nullopt);
  }
  return withNull ? Or(found, std::nullopt) : found;
}

std::vector<Condition> AllConditions() {
  std::vector<Condition> all;
  for (const char column : {'i', 'r'}) {
    for (const int64_t value : Integers) {
      AddComparisons(all, column, value);
      AddComparisons(all, column, static_cast<uint64_t>(value));
      AddComparisons(all, column, static_cast<int32_t>(value));
    }
    for (const uint32_t value : {0U, 7U, 0xffffffffU})
      AddComparisons(all, column, value);
    for (const double value : Doubles)
      AddComparisons(all, column, value);
    AddComparisons(all, column, true);
    AddComparisons(all, column, false);
  }
  for (const std::string& value : Texts)
    AddComparisons(all, 't', value);
  for (const char column : {'i', 'r', 't', 'b'}) {
    all.push_back({[=](Query& q) { q.IsNULL(std::string(1, column)); },
                   [=](const Row& row) -> Truth { return IsNull(row[column]); }});
    for (const Bytes& value : Blobs) {
      all.push_back({[=](Query& q) {
                       q.Equals(std::string(1, column), value.data(), static_cast<int32_t>(value.size()));
                     },
                     [=](const Row& row) -> Truth {
                       const auto order = Order(row[column], value);
                       return order ? Truth(*order == 0) : std::nullopt;
                     }});
    }
  }
  AddOccurrences(
      all, [](Query& q, const auto&... arguments) { q.Contains(arguments...); }, 'c');
  AddOccurrences(
      all, [](Query& q, const auto&... arguments) { q.BeginWith(arguments...); }, 'b');
  AddOccurrences(
      all, [](Query& q, const auto&... arguments) { q.EndWith(arguments...); }, 'e');

  for (const std::vector<long long>& values : {std::vector<long long>{}, {7}, {Int64Min, -1, Int64Max}}) {
    all.push_back({[=](Query& q) { q.In("i", values); },
                   [=](const Row& row) { return values.empty() ? false : IsAmong(row.i, values); }});
  }
  for (const std::vector<std::string>& values : {std::vector<std::string>{}, {"a'b"}, {"", Texts[24], "ä"}}) {
    all.push_back({[=](Query& q) { q.In("t", values); },
                   [=](const Row& row) { return values.empty() ? false : IsAmong(row.t, values); }});
  }
  // The other table holds 0, 7, 8 and a NULL; a name is given to all but 8 and the NULL.
  QuerySqlite named;
  named.Equals("name", "it's");
  const auto sharedNamed = std::make_shared<QuerySqlite>(named);
  const std::vector<int64_t> sevens = {0, 7}, withEight = {0, 7, 8};
  all.push_back({[=](Query& q) { q.In("i", "Other", "ref"); },
                 [=](const Row& row) { return IsAmong(row.i, withEight, true); }});
  all.push_back({[=](Query& q) { q.In("i", "Other", "ref", named); },
                 [=](const Row& row) { return IsAmong(row.i, sevens); }});
  all.push_back({[=](Query& q) { q.In("i", "main.Other", "Other.ref", sharedNamed); },
                 [=](const Row& row) { return IsAmong(row.i, sevens); }});
  return all;
}

class QuerySqliteTest : public testing::Test {
 protected:
  QuerySqliteTest() : db(":memory:", nullptr) {
    db.Open();
    db.ExecuteStatement(
        "CREATE TABLE T (key integer primary key, i integer, r real, t text, b blob);"
        "CREATE TABLE Other (ref integer, name text);"
        "INSERT INTO Other VALUES (0, 'it''s'), (7, 'it''s'), (8, NULL), (NULL, NULL);");
    CursorSqlite insert(db, "INSERT INTO T VALUES (:key, :i, :r, :t, :b)");
    for (int64_t key = 1; key <= 150; ++key) {
      rows.push_back({key, Pick(Integers), Pick(Doubles), Pick(Texts), Pick(Blobs)});
      insert.Bind("key", key);
      for (const char column : {'i', 'r', 't', 'b'})
        EXPECT_TRUE(Bind(insert, std::string(1, column), rows.back()[column]));
      insert.Run();
      insert.Reset();
    }
  }

  template <class V>
  Value Pick(const std::vector<V>& values) {
    const std::size_t at = random() % (values.size() + 1);
    return at == values.size() ? Value() : Value(values[at]);
  }

  static bool Bind(CursorSqlite& cursor, const std::string& name, const Value& value) {
    if (const auto* integer = std::get_if<int64_t>(&value)) return cursor.Bind(name, *integer);
    if (const auto* real = std::get_if<double>(&value)) return cursor.Bind(name, *real);
    if (const auto* text = std::get_if<std::string>(&value)) return cursor.Bind(name, *text);
    if (const auto* bytes = std::get_if<Bytes>(&value))
      return cursor.Bind(name, bytes->data(), static_cast<int32_t>(bytes->size()));
    return cursor.Bind(name);
  }

  std::string Keys(const QuerySqlite& query) {
    std::string text = "SELECT key FROM T";
    if (!query.IsEmpty()) text += " WHERE " + query.GetFilterSQL();
    std::string keys;
    for (const std::string& key : TestSupport::Column(db, text + " ORDER BY key"))
      keys += key + " ";
    return keys;
  }

  std::string Keys(const std::function<Truth(const Row&)>& holds) const {
    std::string keys;
    for (const Row& row : rows) {
      if (holds(row) == true) keys += std::to_string(row.key) + " ";
    }
    return keys;
  }

  // A query of random conditions beside what it means; false for one that has stayed empty.
  bool Compose(const std::vector<Condition>& conditions, int depth, QuerySqlite& query,
               std::function<Truth(const Row&)>& holds) {
    bool isEmpty = true;
    const auto add = [&](const std::function<Truth(const Row&)>& more, bool isOr) {
      if (isEmpty)
        holds = more;
      else if (isOr)
        holds = [=, before = holds](const Row& row) { return Or(before(row), more(row)); };
      else
        holds = [=, before = holds](const Row& row) { return And(before(row), more(row)); };
      isEmpty = false;
    };
    for (auto steps = random() % 4; steps > 0; --steps) {
      const auto kind = depth == 0 ? 0 : random() % 7;
      if (kind == 0) {
        const Condition& condition = conditions[random() % conditions.size()];
        condition.add(query);
        add(condition.holds, false);
        continue;
      }
      const auto other = std::make_shared<QuerySqlite>();
      std::function<Truth(const Row&)> more;
      const bool hasMore = Compose(conditions, depth - 1, *other, more);
      if (kind == 1) query.And(*other);
      if (kind == 2) query.And(std::shared_ptr<Query>(other));
      if (kind == 3) query.Or(*other);
      if (kind == 4) query.Or(std::shared_ptr<Query>(other));
      if (kind == 5) query.Not(*other);
      if (kind == 6) query.Not(std::shared_ptr<Query>(other));
      if (!hasMore) continue;
      if (kind >= 5)
        add([=](const Row& row) { return Not(more(row)); }, false);
      else
        add(more, kind == 3 || kind == 4);
    }
    return !isEmpty;
  }

  std::mt19937 random{20240311};
  DatabaseSqlite db;
  std::vector<Row> rows;
};

}  // namespace

TEST_F(QuerySqliteTest, EveryConditionSelectsTheRowsThatItsMeaningSelects) {
  std::size_t selecting = 0;
  for (const Condition& condition : AllConditions()) {
    QuerySqlite query;
    condition.add(query);
    const std::string keys = Keys(condition.holds);
    ASSERT_EQ(Keys(query), keys) << query.GetFilterSQL();
    if (!keys.empty()) ++selecting;
    QuerySqlite negated;
    negated.Not(query);
    ASSERT_EQ(Keys(negated), Keys([&](const Row& row) { return Not(condition.holds(row)); }))
        << negated.GetFilterSQL();
  }
  EXPECT_GT(selecting, 500U);
}

TEST_F(QuerySqliteTest, ConditionsComposeAsTheirOrderSays) {
  const std::vector<Condition> conditions = AllConditions();
  for (int i = 0; i < 1500; ++i) {
    QuerySqlite query;
    std::function<Truth(const Row&)> holds = [](const Row&) { return Truth(true); };
    const bool hasConditions = Compose(conditions, 3, query, holds);
    ASSERT_EQ(query.IsEmpty(), !hasConditions) << query.GetFilterSQL();
    ASSERT_EQ(Keys(query), Keys(holds)) << query.GetFilterSQL();
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

TEST_F(QuerySqliteTest, OrdersAndLimitsAreAddedInTurn) {
  QuerySqlite query;
  query.OrderByDesc("T.t").OrderByAsc("key").Limit(1, 1).Limit(7, 3);
  EXPECT_TRUE(query.IsEmpty());
  std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
    if (IsNull(a.t) || IsNull(b.t)) return IsNull(a.t) == IsNull(b.t) ? a.key < b.key : IsNull(b.t);
    return a.t == b.t ? a.key < b.key : a.t > b.t;
  });
  std::vector<std::string> expected;
  for (std::size_t i = 3; i < 10; ++i)
    expected.push_back(std::to_string(rows[i].key));
  const std::string select = "SELECT key FROM T ORDER BY " + query.GetOrderBySQL() + " ";
  EXPECT_EQ(TestSupport::Column(db, select + query.GetLimitSQL()), expected);
  query.Limit(-1, 0);
  EXPECT_EQ(TestSupport::Column(db, select + query.GetLimitSQL()).size(), rows.size());
}

TEST_F(QuerySqliteTest, WritesTheTextsThatTheGuideShows) {
  QuerySqlite inner, query;
  inner.Equals("b", 2LL).Equals("c", 18446744073709551615ULL);
  query.Equals("a", "it's").Or(inner).LessThan("d", 0.5).Not(inner);
  EXPECT_EQ(query.GetFilterSQL(),
            "((a = 'it''s') OR (b = 2 AND c = -1)) AND d < 0.5 AND NOT (b = 2 AND c = -1)");
  QuerySqlite like;
  like.Contains("t", "5%_\\").In("x.y", "Z", "z").In("k", std::vector<long long>{1, -2});
  EXPECT_EQ(like.GetFilterSQL(),
            "t LIKE '%5\\%\\_\\\\%' ESCAPE '\\' AND x.y IN (SELECT z FROM Z) AND k IN (1, -2)");
}

TEST_F(QuerySqliteTest, RefusesNamesThatAreNoNamesAndChangesNothing) {
  for (const std::string& name : std::vector<std::string>{"",
                                                          ".",
                                                          "a.",
                                                          ".a",
                                                          "a..b",
                                                          "1a",
                                                          "a b",
                                                          "a;",
                                                          "a--",
                                                          "\"a\"",
                                                          "[a]",
                                                          "a'",
                                                          "ä",
                                                          "a=1",
                                                          {"a\0b", 3}}) {
    QuerySqlite query;
    EXPECT_THROW(query.IsNULL(name), ArgumentException) << name;
    EXPECT_THROW(query.Equals(name, 1), ArgumentException) << name;
    EXPECT_THROW(query.GreaterThan(name, "x"), ArgumentException) << name;
    EXPECT_THROW(query.EndWith(name, std::string()), ArgumentException) << name;
    EXPECT_THROW(query.BeginWith(name, Texts[24]), ArgumentException) << name;
    EXPECT_THROW(query.In(name, std::vector<std::string>()), ArgumentException) << name;
    EXPECT_THROW(query.In("a", name, "b"), ArgumentException) << name;
    EXPECT_THROW(query.In("a", "b", name), ArgumentException) << name;
    EXPECT_THROW(query.OrderByAsc(name), ArgumentException) << name;
    EXPECT_TRUE(query.IsEmpty() && query.GetOrderBySQL().empty());
  }
  QuerySqlite query;
  const uint8_t byte = 1;
  EXPECT_THROW(query.Equals("a", &byte, -1), ArgumentException);
  EXPECT_THROW(query.BeginWith("a", &byte, -1), ArgumentException);
  EXPECT_NO_THROW(query.IsNULL("_a1.B_2.c"));
}

}  // namespace Oru::Common::Databases::Sqlite
