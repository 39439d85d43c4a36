#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"

#include "support/SqlValues.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>
#include <deque>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <numeric>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

namespace {

// Unlike literals of C, this keeps its NUL byte.
const std::string WithNul("a\0b", 3);

const uint8_t* Data(const std::string& bytes) {
  return reinterpret_cast<const uint8_t*>(bytes.data());
}

int32_t Size(const std::string& bytes) {
  return static_cast<int32_t>(bytes.size());
}

// What a call adds to a query, and what it means, in SQL that reads its values from the table P, into which they were
// bound.
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
    for (int row = 0; row < 150; ++row) {
      const std::string blob = AnyText(3);
      if (random() % 9 > 0) insert.Bind("i", AnyInteger());
      if (random() % 9 > 0) insert.Bind("r", AnyDouble());
      if (random() % 9 > 0) insert.Bind("t", AnyText(3));
      if (random() % 9 > 0) insert.Bind("b", Data(blob), Size(blob));
      insert.Run();
      insert.Reset();
    }
  }

  // Now and then no UTF-8, or what LIKE reads as one character, or what has a meaning in SQL or in patterns.
  std::string AnyText(std::size_t most) {
    static const std::string pieces[] = {
        "a",  "A", "b",     "ä",  "Ä",  "😀",  "'",    "%",    "_",    "\\",   "--",           "x'0'",
        "\"", ";", WithNul, "?1", ":k", "\n", "\xff", "\xc3", "\xa4", "\x80", "\xe0\x83\xa4", "\xef\xbf\xbd"};
    std::string text;
    for (auto count = random() % (most + 1); count > 0; --count)
      text += pieces[random() % std::size(pieces)];
    return text;
  }
  int64_t AnyInteger() {
    constexpr int64_t max = std::numeric_limits<int64_t>::max(), twoTo53 = int64_t{1} << 53;
    static constexpr int64_t numbers[] = {-max - 1, -twoTo53 - 1, -5, -1, 0, 1, 7, twoTo53 + 1, max};
    return numbers[random() % std::size(numbers)];
  }
  // SQLite's own reading of decimal text isn't exact for every double below 1e-280.
  double AnyDouble() {
    if (random() % 3 == 0) return static_cast<double>(AnyInteger());
    constexpr double infinity = std::numeric_limits<double>::infinity();
    while (doubles.size() < 60) {
      const uint64_t bits = (uint64_t{random()} << 32) | random();
      double value = 0;
      std::memcpy(&value, &bits, sizeof value);
      if (!(std::abs(value) < 1e-280)) doubles.push_back(value);
    }
    for (const double value : {-infinity, infinity, -0.0, 0.1, 1.0 / 3, std::nan("")})
      if (random() % 20 == 0) return value;
    return doubles[random() % doubles.size()];
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

  template <class V>
  Condition Compared(const std::string& column, const V& value) {
    const char* const operators[] = {" = ", " < ", " > ", " <= ", " >= "};
    const auto chosen = random() % 5;
    const auto add = [=](Query& q) {
      chosen == 0   ? q.Equals(column, value)
      : chosen == 1 ? q.LessThan(column, value)
      : chosen == 2 ? q.GreaterThan(column, value)
      : chosen == 3 ? q.LessThanOrEquals(column, value)
                    : q.GreaterThanOrEquals(column, value);
    };
    return {add, column + operators[chosen] + Bound(value)};
  }

  // Bytes are found as they are. Texts are found in either case of A to Z, and those of ASCII only
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
  Condition Occurring(const std::string& column, bool isFolded, const Part&... part) {
    const auto place = random() % 3;
    const auto add = [=](Query& q) {
      place == 0   ? q.Contains(column, part...)
      : place == 1 ? q.BeginWith(column, part...)
                   : q.EndWith(column, part...);
    };
    return {add, "occurs(" + column + ", " + Bound(part...) + ", " + std::to_string(isFolded) + ", " +
                     std::to_string(place) + ")"};
  }

  template <class V, class Any>
  Condition Among(const std::string& column, const Any& any) {
    std::vector<V> values;
    std::string meaning = "0";
    for (auto count = random() % 4; count > 0; --count) {
      values.push_back(any());
      if constexpr (std::is_integral_v<V>)
        meaning += " OR " + column + " = " + Bound(int64_t{values.back()});
      else
        meaning += " OR " + column + " = " + Bound(values.back());
    }
    return {[=](Query& q) { q.In(column, values); }, meaning};
  }

  // The values of the table Other are those that aren't NULL.
  Condition AmongThoseOfATable() {
    QuerySqlite named, referred, known;
    named.Equals("name", "it's");
    referred.In("ref", "Other", "ref");
    known.IsNULL("name").Or(referred);
    const auto shared = std::make_shared<QuerySqlite>(named);
    const Condition conditions[] = {
        {[](Query& q) { q.In("i", "Other", "ref"); }, "i IN (0, 7, 8)"},
        {[=](Query& q) { q.In("i", "Other", "ref", known); }, "i IN (0, 7, 8)"},
        {[=](Query& q) { q.In("i", "Other", "ref", named); }, "i IN (0, 7)"},
        {[=](Query& q) { q.In("i", "main.Other", "Other.ref", shared); }, "i IN (0, 7)"},
    };
    return conditions[random() % std::size(conditions)];
  }

  Condition AnyCondition() {
    const std::string number(1, "ir"[random() % 2]), bytes(1, "tb"[random() % 2]);
    const std::string any(1, "irtb"[random() % 4]);
    const std::string& text = texts.emplace_back(AnyText(2));
    const int64_t integer = AnyInteger();
    const uint8_t* const data = Data(text);
    const std::function<Condition()> kinds[] = {
        [&] { return Compared(number, integer); },
        [&] { return Compared(number, static_cast<int32_t>(integer)); },
        [&] { return Compared(number, static_cast<uint32_t>(integer)); },
        [&] { return Compared(number, static_cast<uint64_t>(integer)); },
        [&] { return Compared(number, integer % 2 == 0); },
        [&] { return Compared(number, AnyDouble()); },
        [&] { return Compared("t", text); },
        [&] { return Occurring("t", true, text); },
        [&] { return Occurring(bytes, false, data, Size(text)); },
        [&] { return Among<long long>("i", [&] { return AnyInteger(); }); },
        [&] { return Among<std::string>("t", [&] { return AnyText(2); }); },
        [&] { return AmongThoseOfATable(); },
        [&] {
          const auto add = [=, &text](Query& q) { q.Equals(any, data, Size(text)); };
          return Condition{add, any + " = " + Bound(data, Size(text))};
        },
        [&] {
          return Condition{[=](Query& q) { q.IsNULL(any); }, "typeof(" + any + ") = 'null'"};
        },
    };
    return kinds[random() % std::size(kinds)]();
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
        const Condition condition = AnyCondition();
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
  std::vector<double> doubles;
  // Conditions point to their bytes.
  std::deque<std::string> texts;
  int32_t lastValue = 0;
};

TEST_F(QuerySqliteTest, SelectsTheRowsThatItsConditionsMean) {
  int selecting = 0;
  for (int i = 0; i < 6000; ++i) {
    QuerySqlite query;
    const std::string meaning = Compose(i % 3, query);
    ASSERT_EQ(query.IsEmpty(), meaning.empty()) << query.GetFilterSQL();
    if (query.IsEmpty()) continue;
    const std::string keys = Keys(meaning);
    ASSERT_EQ(Keys(query.GetFilterSQL()), keys) << query.GetFilterSQL();
    ASSERT_EQ(KeysBound(query), keys) << query.GetFilterSQL();
    if (!keys.empty()) ++selecting;
  }
  EXPECT_GT(selecting, 2000);
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

TEST_F(QuerySqliteTest, PartsAreAddedInTurn) {
  QuerySqlite query;
  query.OrderByDesc("T.t").OrderByAsc("key").Limit(1, 1).Limit(7, 3);
  EXPECT_TRUE(query.IsEmpty());
  EXPECT_EQ(query.GetOrderBySQL() + " " + query.GetLimitSQL(), "T.t DESC, key ASC LIMIT 7 OFFSET 3");
  QuerySqlite both;
  query.Equals("a", 1).Or(both.Equals("b", 2).LessThan("c", 3)).Not(both).And(both);
  EXPECT_EQ(query.GetFilterSQL(),
            "((a = 1) OR (b = 2 AND c < 3)) AND NOT (b = 2 AND c < 3) AND (b = 2 AND c < 3)");
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

namespace {

using Words = std::vector<std::string>;

// Runs of letters and digits in small letters. For ASCII alone.
Words WordsOf(const std::string& text) {
  Words words;
  bool isInside = false;
  for (const char c : text) {
    const bool isPart = std::isalnum(static_cast<unsigned char>(c)) != 0;
    if (isPart && !isInside) words.emplace_back();
    if (isPart) words.back() += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    isInside = isPart;
  }
  return words;
}

// The words of each stretch between blanks; none in a stretch of signs alone.
std::vector<Words> PhrasesOf(const std::string& text) {
  std::vector<Words> phrases;
  std::istringstream stretches(text);
  for (std::string stretch; stretches >> stretch;)
    phrases.push_back(WordsOf(stretch));
  return phrases;
}

bool Holds(const std::string& column, const Words& phrase, bool lastIsStart) {
  const Words words = WordsOf(column);
  const auto isSame = [&](const std::string& word, const std::string& sought) {
    return lastIsStart && &sought == &phrase.back() ? word.rfind(sought, 0) == 0 : word == sought;
  };
  return std::search(words.begin(), words.end(), phrase.begin(), phrase.end(), isSame) != words.end();
}

class FullTextExpressionTest : public testing::Test {
 protected:
  // The numbers of the rows that an expression finds, from 1.
  std::string Find(const std::string& expression) {
    QuerySqlite query;
    query.Match("Found", expression);
    return TestSupport::Value(
        db, "SELECT coalesce(group_concat(rowid, ' '), '') FROM Found WHERE " + query.GetFilterSQL());
  }

  DatabaseSqlite db{":memory:", nullptr};
  std::mt19937 random{7};
};

// A row is a text for each of two columns.
TEST_F(FullTextExpressionTest, FindsTheRowsThatAModelFinds) {
  const std::string pieces[] = {"a", "b",  "A", "aB", "ab", "b1", "1", "-",
                                "_", "\"", "*", ":",  " ",  " ",  "OR"};
  const auto any = [&](std::size_t most) {
    std::string text;
    for (auto count = random() % (most + 1); count > 0; --count)
      text += pieces[random() % std::size(pieces)];
    return text;
  };
  db.Open();
  db.ExecuteStatement("CREATE VIRTUAL TABLE Found USING fts5(name, description)");
  std::vector<Words> rows;
  for (int i = 0; i < 40; ++i) {
    rows.push_back({any(8), any(8)});
    CursorSqlite insert(db, "INSERT INTO Found VALUES (:name, :description)");
    ASSERT_TRUE(insert.Bind("name", rows.back()[0]) && insert.Bind("description", rows.back()[1]));
    insert.Run();
  }
  int finding = 0;
  for (int round = 0; round < 3000; ++round) {
    const std::string text = any(6);
    const std::vector<Words> phrases = PhrasesOf(text);
    const Words whole = WordsOf(text);
    // One of the two columns, or both.
    const std::size_t column = random() % 3;
    const auto find = [&](const std::string& expression) {
      if (column == 2) return Find(expression);
      return Find(FullTextExpression::InColumn(column == 0 ? "name" : "description", expression));
    };
    std::string all, asTyped, begun, some, phrase;
    for (std::size_t i = 0; i < rows.size() && !whole.empty(); ++i) {
      const auto add = [&](std::string& found, bool isHit) {
        if (isHit) found += (found.empty() ? "" : " ") + std::to_string(i + 1);
      };
      const auto holdsAs = [&](const Words& words, bool lastIsStart) {
        return !words.empty() && ((column != 1 && Holds(rows[i][0], words, lastIsStart)) ||
                                  (column != 0 && Holds(rows[i][1], words, lastIsStart)));
      };
      const auto holds = [&](const Words& words) { return holdsAs(words, false); };
      // Signs alone ask for nothing.
      const auto allows = [&](const Words& words) { return words.empty() || holds(words); };
      const auto allowsBegun = [&](const Words& words) { return words.empty() || holdsAs(words, true); };
      add(all, std::all_of(phrases.begin(), phrases.end(), allows));
      add(begun, std::all_of(phrases.begin(), phrases.end(), allowsBegun));
      add(some, std::any_of(phrases.begin(), phrases.end(), holds));
      add(phrase, holds(whole));
      add(asTyped, std::all_of(phrases.begin(), phrases.end() - 1, allows) && allowsBegun(phrases.back()));
    }
    ASSERT_EQ(find(FullTextExpression::AllWords(text)), all) << text;
    ASSERT_EQ(find(FullTextExpression::AllWordsBegun(text)), begun) << text;
    ASSERT_EQ(find(FullTextExpression::AnyWord(text)), some) << text;
    ASSERT_EQ(find(FullTextExpression::Phrase(text)), phrase) << text;
    ASSERT_EQ(find(FullTextExpression::AllWordsAsTyped(text)), asTyped) << text;
    if (!all.empty()) ++finding;
  }
  EXPECT_GT(finding, 500);
  std::string many;
  for (int i = 0; i < 3000; ++i)
    many += "w" + std::to_string(i) + " ";
  EXPECT_EQ(Find(FullTextExpression::AllWords(many)) + Find(FullTextExpression::AnyWord(many)), "");
  for (const char* name : {"", "a b", "Found.name", "name\"", "{name}"})
    EXPECT_THROW(FullTextExpression::InColumn(name, "goal"), ArgumentException) << name;
}

}  // namespace

}  // namespace Oru::Common::Databases::Sqlite
