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
#include <map>
#include <optional>
#include <random>
#include <tuple>

namespace Oru::Common::Databases::Sqlite {

namespace {

constexpr int64_t Int64Min = std::numeric_limits<int64_t>::min();
constexpr int64_t Int64Max = std::numeric_limits<int64_t>::max();
constexpr int64_t TwoTo53 = int64_t{1} << 53;
constexpr double Infinity = std::numeric_limits<double>::infinity();

// Unlike literals of C, these keep their NUL bytes.
const std::string WithNul("a\0b", 3);
const std::vector<std::string> Texts = {"",        "a",    "A",  "ab",  "aB",   "ba",    "ä",     "Ä",
                                        "日本",    "😀x",   "'",  "a'b", "''",   "100%",  "100x",  "a_b",
                                        "axb",     "a\\b", "\\", "--x", "a;b",  "x'00'", "\"q\"", WithNul,
                                        {"\0", 1}, "\n",   "%",  "?1",  ":key", "NULL"};
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

// What a column may hold, in the database's order of kinds. A long double holds every 64-bit integer and
// every double exactly.
struct Value {
  enum Kind { Null, Number, Text, Bytes } kind = Null;
  long double number = 0;
  std::string text;

  Value() = default;
  Value(const std::string& value, Kind textKind = Text) : kind(textKind), text(value) {}
  template <class V>
  Value(V value)
      : kind(std::isnan(static_cast<double>(value)) ? Null : Number),
        number(static_cast<long double>(value)) {}
};

// Columns by their first letter: i INTEGER, r REAL, t TEXT, b BLOB.
struct Row {
  int64_t key;
  std::map<char, Value> values;
};

// True, false or, for a comparison with NULL, neither.
using Truth = std::optional<bool>;
using Meaning = std::function<Truth(const Row&)>;

struct Condition {
  std::function<void(Query&)> add;
  Meaning holds;
};

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

// Whether the order of two values, below, equal or above as -1, 0 and 1, is accepted.
Truth Compare(const Value& left, const Value& right, bool (*accepts)(int)) {
  if (left.kind == Value::Null || right.kind == Value::Null) return std::nullopt;
  const auto whole = [](const Value& value) { return std::tie(value.kind, value.number, value.text); };
  return accepts(whole(left) < whole(right) ? -1 : whole(right) < whole(left) ? 1 : 0);
}

bool IsEqual(int order) {
  return order == 0;
}

template <class V>
void AddComparisons(std::vector<Condition>& all, char column, V value) {
  const std::string name(1, column);
  const auto add = [&](std::function<void(Query&)> operation, bool (*accepts)(int)) {
    all.push_back({std::move(operation),
                   [=](const Row& row) { return Compare(row.values.at(column), value, accepts); }});
  };
  add([=](Query& q) { q.Equals(name, value); }, IsEqual);
  add([=](Query& q) { q.LessThan(name, value); }, [](int order) { return order < 0; });
  add([=](Query& q) { q.GreaterThan(name, value); }, [](int order) { return order > 0; });
  add([=](Query& q) { q.LessThanOrEquals(name, value); }, [](int order) { return order <= 0; });
  add([=](Query& q) { q.GreaterThanOrEquals(name, value); }, [](int order) { return order >= 0; });
}

// 'c' for anywhere, 'b' for the begin, 'e' for the end.
bool Occurs(const std::string& part, const std::string& text, char where) {
  if (where == 'c') return text.find(part) != std::string::npos;
  return part.size() <= text.size() &&
         text.compare(where == 'b' ? 0 : text.size() - part.size(), part.size(), part) == 0;
}

// `LIKE` doesn't tell A from a, and sees a stored text up to its first NUL byte.
bool OccursFolded(const std::string& part, const std::string& text, char where) {
  const auto folded = [](std::string all) {
    for (char& c : all)
      c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return all;
  };
  return Occurs(folded(part), folded(text.substr(0, text.find('\0'))), where);
}

template <class Operation>
void AddOccurrences(std::vector<Condition>& all, char where, Operation operation) {
  const auto add = [&](char column, const std::string& part, bool isFolded,
                       std::function<void(Query&)> addTo) {
    all.push_back({std::move(addTo), [=](const Row& row) -> Truth {
                     const Value& value = row.values.at(column);
                     if (value.kind == Value::Null) return std::nullopt;
                     return (isFolded ? OccursFolded : Occurs)(part, value.text, where);
                   }});
  };
  for (const std::string& part : Texts)
    add('t', part, part.find('\0') == std::string::npos, [=](Query& q) { operation(q, "t", part); });
  for (const std::string& part : Blobs) {
    for (const char column : {'t', 'b'})
      add(column, part, false,
          [=](Query& q) { operation(q, std::string(1, column), Data(part), Size(part)); });
  }
}

template <class V>
void AddAmong(std::vector<Condition>& all, char column, const std::vector<V>& values, bool withNull,
              std::function<void(Query&)> addTo) {
  all.push_back({std::move(addTo), [=](const Row& row) {
                   Truth found = false;
                   for (const V& value : values)
                     found = Or(found, Compare(row.values.at(column), value, IsEqual));
                   return withNull ? Or(found, std::nullopt) : found;
                 }});
}

std::vector<Condition> AllConditions() {
  std::vector<Condition> all;
  for (const char column : {'i', 'r'}) {
    for (const int64_t value : Integers) {
      AddComparisons(all, column, value);
      AddComparisons(all, column, static_cast<int32_t>(value));
      AddComparisons(all, column, static_cast<uint32_t>(value));
      // Beyond the signed range it is the negative number that is stored for it.
      if (value >= 0) AddComparisons(all, column, static_cast<uint64_t>(value));
    }
    for (const double value : Doubles)
      AddComparisons(all, column, value);
    AddComparisons(all, column, true);
    AddComparisons(all, column, false);
  }
  for (const std::string& value : Texts)
    AddComparisons(all, 't', value);
  for (const char column : {'i', 'r', 't', 'b'}) {
    const std::string name(1, column);
    all.push_back({[=](Query& q) { q.IsNULL(name); },
                   [=](const Row& row) -> Truth { return row.values.at(column).kind == Value::Null; }});
    for (const std::string& value : Blobs) {
      all.push_back({[=](Query& q) { q.Equals(name, Data(value), Size(value)); },
                     [=](const Row& row) {
                       return Compare(row.values.at(column), Value(value, Value::Bytes), IsEqual);
                     }});
    }
  }
  AddOccurrences(all, 'c', [](Query& q, const auto&... part) { q.Contains(part...); });
  AddOccurrences(all, 'b', [](Query& q, const auto&... part) { q.BeginWith(part...); });
  AddOccurrences(all, 'e', [](Query& q, const auto&... part) { q.EndWith(part...); });

  for (const std::vector<long long>& values : {std::vector<long long>{}, {7}, {Int64Min, -1, Int64Max}})
    AddAmong(all, 'i', values, false, [=](Query& q) { q.In("i", values); });
  for (const std::vector<std::string>& values : {std::vector<std::string>{}, {"a'b"}, {"", WithNul, "ä"}})
    AddAmong(all, 't', values, false, [=](Query& q) { q.In("t", values); });
  // The other table holds 0, 7, 8 and a NULL; a name is given to 0 and 7.
  QuerySqlite named;
  named.Equals("name", "it's");
  const auto shared = std::make_shared<QuerySqlite>(named);
  AddAmong<int64_t>(all, 'i', {0, 7, 8}, true, [](Query& q) { q.In("i", "Other", "ref"); });
  AddAmong<int64_t>(all, 'i', {0, 7}, false, [=](Query& q) { q.In("i", "Other", "ref", named); });
  AddAmong<int64_t>(all, 'i', {0, 7}, false, [=](Query& q) { q.In("i", "main.Other", "Other.ref", shared); });
  return all;
}

class QuerySqliteTest : public testing::Test {
 protected:
  QuerySqliteTest() {
    db.Open();
    db.ExecuteStatement(
        "CREATE TABLE T (key integer primary key, i integer, r real, t text, b blob);"
        "CREATE TABLE Other (ref integer, name text);"
        "INSERT INTO Other VALUES (0, 'it''s'), (7, 'it''s'), (8, NULL), (NULL, NULL);");
    CursorSqlite insert(db, "INSERT INTO T VALUES (:key, :i, :r, :t, :b)");
    for (int64_t key = 1; key <= 150; ++key) {
      rows.push_back({key, {{'i', {}}, {'r', {}}, {'t', {}}, {'b', {}}}});
      insert.Bind("key", key);
      Fill('i', Integers, [&](int64_t value) { insert.Bind("i", value); });
      Fill('r', Doubles, [&](double value) { insert.Bind("r", value); });
      Fill('t', Texts, [&](const std::string& value) { insert.Bind("t", value); });
      Fill('b', Blobs, [&](const std::string& value) {
        insert.Bind("b", Data(value), Size(value));
        rows.back().values['b'].kind = Value::Bytes;
      });
      insert.Run();
      insert.Reset();
    }
  }

  // Gives a column of the last row one of the values, or none.
  template <class V, class Bind>
  void Fill(char column, const std::vector<V>& values, Bind bind) {
    const std::size_t at = random() % (values.size() + 1);
    if (at == values.size()) return;
    rows.back().values[column] = values[at];
    bind(values[at]);
  }

  std::string Keys(const QuerySqlite& query) {
    std::string text = "SELECT key FROM T", keys;
    if (!query.IsEmpty()) text += " WHERE " + query.GetFilterSQL();
    for (const std::string& key : TestSupport::Column(db, text + " ORDER BY key"))
      keys += key + " ";
    return keys;
  }

  std::string Keys(const Meaning& holds) const {
    std::string keys;
    for (const Row& row : rows)
      keys += holds(row) == true ? std::to_string(row.key) + " " : "";
    return keys;
  }

  // Fills a query with random conditions and gives what it means, nothing for a query that has stayed empty.
  Meaning Compose(const std::vector<Condition>& conditions, int depth, QuerySqlite& query) {
    Meaning holds;
    const auto add = [&holds](const Meaning& more, Truth (*combine)(Truth, Truth)) {
      if (more)
        holds =
            holds ? [=, before = holds](const Row& row) { return combine(before(row), more(row)); } : more;
    };
    for (auto steps = random() % 4; steps > 0; --steps) {
      const auto other = std::make_shared<QuerySqlite>();
      const bool byPointer = random() % 2 == 0;
      const auto kind = depth == 0 ? 0 : random() % 4;
      const Meaning more = kind == 0 ? nullptr : Compose(conditions, depth - 1, *other);
      if (kind == 0) {
        const Condition& condition = conditions[random() % conditions.size()];
        condition.add(query);
        add(condition.holds, And);
      } else if (kind == 1) {
        byPointer ? query.And(std::shared_ptr<Query>(other)) : query.And(*other);
        add(more, And);
      } else if (kind == 2) {
        byPointer ? query.Or(std::shared_ptr<Query>(other)) : query.Or(*other);
        add(more, Or);
      } else {
        byPointer ? query.Not(std::shared_ptr<Query>(other)) : query.Not(*other);
        if (more) add([=](const Row& row) { return Not(more(row)); }, And);
      }
    }
    return holds;
  }

  std::mt19937 random{20240311};
  DatabaseSqlite db{":memory:", nullptr};
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
    const Meaning holds = Compose(conditions, 3, query);
    ASSERT_EQ(query.IsEmpty(), !holds) << query.GetFilterSQL();
    ASSERT_EQ(Keys(query), Keys(holds ? holds : [](const Row&) { return true; })) << query.GetFilterSQL();
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
  std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
    const Value &left = a.values.at('t'), &right = b.values.at('t');
    return std::tie(left.kind, left.text) > std::tie(right.kind, right.text);
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
    EXPECT_THROW(query.BeginWith(name, WithNul), ArgumentException) << name;
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
