#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"

#include "support/OpenSqlite.h"

#include <cctype>
#include <cmath>
#include <numeric>
#include <regex>

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

}  // namespace

class QuerySqliteTest : public TestSupport::OpenSqlite {
 protected:
  // The table T has random values and NULLs in columns of each kind: integer, real, text and blob.
  QuerySqliteTest() {
    sqlite3_create_function(db.Handle(), "occurs", 4, SQLITE_UTF8, nullptr, Occurs, nullptr, nullptr);
    Run("BEGIN; CREATE TABLE T (key integer primary key, i integer, r real, t text, b blob);"
        "CREATE TABLE P (n integer primary key, v);"
        "CREATE TABLE Other (ref integer, name text);"
        "INSERT INTO Other VALUES (0, 'it''s'), (7, 'it''s'), (8, NULL), (NULL, NULL);");
    for (int row = 0; row < 150; ++row) {
      CursorSqlite insert(db, "INSERT INTO T VALUES (NULL, :i, :r, :t, :b)");
      const std::string blob = AnyText(3);
      if (random() % 9 > 0) insert.Bind("i", AnyInteger());
      if (random() % 9 > 0) insert.Bind("r", AnyDouble());
      if (random() % 9 > 0) insert.Bind("t", AnyText(3));
      if (random() % 9 > 0) insert.Bind("b", Data(blob), Size(blob));
      insert.Run();
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
    for (const double value : {-infinity, infinity, -0.0, 0.1, 1.0 / 3, std::nan("")})
      if (random() % 20 == 0) return value;
    // One of sixty, so that it is found again.
    std::mt19937 bits(random() % 60);
    const double mantissa = static_cast<double>(bits()) * 0x1p32 + static_cast<double>(bits()) - 0x1p63;
    return std::ldexp(mantissa, static_cast<int>(bits() % 1800) - 900);
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

  // The following add a condition to a query and give what it means, in SQL that reads its values from the table P.
  template <class V>
  std::string Compared(Query& q, const std::string& column, const V& value) {
    const char* const operators[] = {" = ", " < ", " > ", " <= ", " >= "};
    const auto chosen = random() % 5;
    chosen == 0   ? q.Equals(column, value)
    : chosen == 1 ? q.LessThan(column, value)
    : chosen == 2 ? q.GreaterThan(column, value)
    : chosen == 3 ? q.LessThanOrEquals(column, value)
                  : q.GreaterThanOrEquals(column, value);
    return column + operators[chosen] + Bound(value);
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
  std::string Occurring(Query& q, const std::string& column, bool isFolded, const Part&... part) {
    const auto place = random() % 3;
    place == 0   ? q.Contains(column, part...)
    : place == 1 ? q.BeginWith(column, part...)
                 : q.EndWith(column, part...);
    return "occurs(" + column + ", " + Bound(part...) + ", " + std::to_string(isFolded) + ", " +
           std::to_string(place) + ")";
  }

  template <class V, class Any>
  std::string Among(Query& q, const std::string& column, const Any& any) {
    std::vector<V> values;
    std::string meaning = "0";
    for (auto count = random() % 4; count > 0; --count) {
      const auto value = any();
      values.push_back(value);
      meaning += " OR " + column + " = " + Bound(value);
    }
    q.In(column, values);
    return meaning;
  }

  // The values of the table Other are those that aren't NULL.
  std::string AmongThoseOfATable(Query& q) {
    QuerySqlite named, referred, known;
    named.Equals("name", "it's");
    referred.In("ref", "Other", "ref");
    known.IsNULL("name").Or(referred);
    const auto chosen = random() % 4;
    chosen == 0   ? q.In("i", "Other", "ref")
    : chosen == 1 ? q.In("i", "Other", "ref", known)
    : chosen == 2 ? q.In("i", "Other", "ref", named)
                  : q.In("i", "main.Other", "Other.ref", std::make_shared<QuerySqlite>(named));
    return chosen < 2 ? "i IN (0, 7, 8)" : "i IN (0, 7)";
  }

  std::string AnyCondition(Query& q) {
    const std::string number(1, "ir"[random() % 2]), bytes(1, "tb"[random() % 2]);
    const std::string any(1, "irtb"[random() % 4]), text = AnyText(2);
    const int64_t integer = AnyInteger();
    const std::function<std::string()> kinds[] = {
        [&] { return Compared(q, number, integer); },
        [&] { return Compared(q, number, static_cast<int32_t>(integer)); },
        [&] { return Compared(q, number, static_cast<uint32_t>(integer)); },
        [&] { return Compared(q, number, static_cast<uint64_t>(integer)); },
        [&] { return Compared(q, number, integer % 2 == 0); },
        [&] { return Compared(q, number, AnyDouble()); },
        [&] { return Compared(q, "t", text); },
        [&] { return Occurring(q, "t", true, text); },
        [&] { return Occurring(q, bytes, false, Data(text), Size(text)); },
        [&] { return Among<long long>(q, "i", [&] { return AnyInteger(); }); },
        [&] { return Among<std::string>(q, "t", [&] { return AnyText(2); }); },
        [&] {
          q.Equals(any, Data(text), Size(text));
          return any + " = " + Bound(Data(text), Size(text));
        },
        [&] {
          q.IsNULL(any);
          return "typeof(" + any + ") = 'null'";
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
      std::string more = kind == 0 ? AnyCondition(query) : Compose(depth - 1, *other), word = " AND ";
      if (kind == 1) {
        byPointer ? query.And(pointer) : query.And(*other);
      } else if (kind == 2) {
        byPointer ? query.Or(pointer) : query.Or(*other);
        word = " OR ";
      } else if (kind == 3) {
        byPointer ? query.Not(pointer) : query.Not(*other);
        if (!more.empty()) more = "NOT (" + more + ")";
      }
      if (!more.empty()) meaning = meaning.empty() ? more : "(" + meaning + ")" + word + "(" + more + ")";
    }
    return meaning;
  }

  std::mt19937 random{20240311};
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
    EXPECT_EQ(statement.values.size(), count == 40000 ? 0 : count);
    EXPECT_EQ(Keys(statement), Keys("key >= 100"));
  }
}

// SQLite takes expressions of 1000 levels, and each link of a plain chain is one.
TEST_F(QuerySqliteTest, RunsWithAnyNumberOfConditionsAndAlternatives) {
  for (const int count : {250, 251, 501, 4000}) {
    QuerySqlite every, any, mixed;
    for (int i = 0; i < count; ++i) {
      QuerySqlite one;
      one.Equals("key", 2 * i);
      every.GreaterThan("key", i % 100);
      any.Or(one);
    }
    mixed.And(any).LessThan("key", 50).Not(every).Or(any).And(any);
    EXPECT_EQ(KeysBound(every), Keys("key > 99"));
    EXPECT_EQ(KeysBound(any), Keys("key % 2 = 0"));
    // SQLite takes seconds to plan it for thousands.
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

TEST_F(QuerySqliteTest, RefusesNamesThatAreNoNamesAndNullPointersAndChangesNothing) {
  using Use = std::function<void(Query&)>;
  const auto expectRefused = [](const std::string& name, std::initializer_list<Use> uses) {
    QuerySqlite query;
    for (const Use& use : uses)
      EXPECT_THROW(use(query), ArgumentException) << name << ", use " << &use - uses.begin();
    EXPECT_TRUE(query.IsEmpty() && query.GetOrderBySQL().empty());
  };
  const std::string names[] = {"",    ".",     "a.",  ".a", "a..b", "1a",  "a b",  "a;",
                               "a--", "\"a\"", "[a]", "a'", "ä",    "a=1", WithNul};
  const uint8_t byte = 1;
  for (const std::string& name : names)
    expectRefused(
        name, {[&](Query& q) { q.IsNULL(name); }, [&](Query& q) { q.Equals(name, 1); },
               [&](Query& q) { q.EndWith(name, std::string()); },
               [&](Query& q) { q.BeginWith(name, WithNul); }, [&](Query& q) { q.Contains(name, &byte, 1); },
               [&](Query& q) { q.In(name, std::vector<std::string>()); },
               [&](Query& q) { q.In("a", name, "b"); }, [&](Query& q) { q.In("a", "b", name); },
               [&](Query& q) { q.OrderByAsc(name); }, [&](Query& q) { q.Match(name, "x"); }});
  const char* noText = nullptr;
  const std::shared_ptr<Query> noQuery;
  expectRefused(
      "a",
      {[&](Query& q) { q.Equals("a", &byte, -1); }, [&](Query& q) { q.BeginWith("a", nullptr, -1); },
       [&](Query& q) { q.EndWith("a", nullptr, 5); }, [&](Query& q) { q.Equals("a", noText); },
       [&](Query& q) { q.LessThan("a", noText); }, [&](Query& q) { q.GreaterThanOrEquals("a", noText); },
       [&](Query& q) { q.And(noQuery); }, [&](Query& q) { q.Or(noQuery); }, [&](Query& q) { q.Not(noQuery); },
       [&](Query& q) { q.In("a", "b", "c", noQuery); }, [&](Query& q) { q.Match("a", WithNul); }});
  EXPECT_NO_THROW(QuerySqlite().IsNULL("_a1.B_2.c"));
}

namespace {

using Words = std::vector<std::string>;

// Runs of letters and digits in small letters. For ASCII alone.
Words WordsOf(std::string text) {
  for (char& c : text)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  static const std::regex word("[0-9a-z]+");
  return {std::sregex_token_iterator(text.begin(), text.end(), word), {}};
}

// The words of each stretch between blanks; none in a stretch of signs alone.
std::vector<Words> PhrasesOf(const std::string& text) {
  std::vector<Words> phrases;
  std::istringstream stretches(text);
  for (std::string stretch; stretches >> stretch;)
    phrases.push_back(WordsOf(stretch));
  return phrases;
}

// @param lastIsStart  whether the last word of the phrase may be the beginning of one
bool Holds(const Words& words, const Words& phrase, bool lastIsStart) {
  const auto isSame = [&](const std::string& word, const std::string& sought) {
    return lastIsStart && &sought == &phrase.back() ? word.rfind(sought, 0) == 0 : word == sought;
  };
  return std::search(words.begin(), words.end(), phrase.begin(), phrase.end(), isSame) != words.end();
}

using FullTextExpressionTest = TestSupport::OpenSqlite;

// A row is a text for each of two columns.
TEST_F(FullTextExpressionTest, FindsTheRowsThatAModelFinds) {
  const std::string pieces[] = {"a", "b",  "A", "aB", "ab", "b1", "1", "-",
                                "_", "\"", "*", ":",  " ",  " ",  "OR"};
  std::mt19937 random{7};
  const auto any = [&](std::size_t most) {
    std::string text;
    for (auto count = random() % (most + 1); count > 0; --count)
      text += pieces[random() % std::size(pieces)];
    return text;
  };
  // The numbers of the rows that an expression finds, from 1.
  const auto find = [&](const std::string& expression) {
    QuerySqlite query;
    query.Match("Found", expression);
    return TestSupport::Value(
        db, "SELECT coalesce(group_concat(rowid, ' '), '') FROM Found WHERE " + query.GetFilterSQL());
  };
  Run("CREATE VIRTUAL TABLE Found USING fts5(name, description)");
  std::vector<std::vector<Words>> rows;
  for (int i = 0; i < 40; ++i) {
    const std::string name = any(8), description = any(8);
    rows.push_back({WordsOf(name), WordsOf(description)});
    CursorSqlite insert(db, "INSERT INTO Found VALUES (:name, :description)");
    ASSERT_TRUE(insert.Bind("name", name) && insert.Bind("description", description));
    insert.Run();
  }
  int finding = 0;
  for (int round = 0; round < 3000; ++round) {
    const std::string text = any(6);
    const std::vector<Words> phrases = PhrasesOf(text);
    const Words whole = WordsOf(text);
    // One of the two columns, or both.
    const std::size_t column = random() % 3;
    // The row that is looked at.
    std::size_t row = 0;
    const auto holdsAs = [&](const Words& words, bool lastIsStart) {
      return !words.empty() && ((column != 1 && Holds(rows[row][0], words, lastIsStart)) ||
                                (column != 0 && Holds(rows[row][1], words, lastIsStart)));
    };
    const auto holds = [&](const Words& words) { return holdsAs(words, false); };
    // Signs alone ask for nothing.
    const auto allows = [&](const Words& words) { return words.empty() || holds(words); };
    const auto allowsBegun = [&](const Words& words) { return words.empty() || holdsAs(words, true); };
    const auto begin = phrases.begin(), end = phrases.end();
    const std::pair<std::string, std::function<bool()>> cases[] = {
        {FullTextExpression::AllWords(text), [&] { return std::all_of(begin, end, allows); }},
        {FullTextExpression::AllWordsBegun(text), [&] { return std::all_of(begin, end, allowsBegun); }},
        {FullTextExpression::AnyWord(text), [&] { return std::any_of(begin, end, holds); }},
        {FullTextExpression::Phrase(text), [&] { return holds(whole); }},
        {FullTextExpression::AllWordsAsTyped(text),
         [&] { return std::all_of(begin, end - 1, allows) && allowsBegun(phrases.back()); }},
    };
    for (const auto& [expression, isHit] : cases) {
      std::string expected;
      for (row = 0; row < rows.size() && !whole.empty(); ++row)
        if (isHit()) expected += (expected.empty() ? "" : " ") + std::to_string(row + 1);
      const std::string inColumn =
          column == 2 ? expression
                      : FullTextExpression::InColumn(column == 0 ? "name" : "description", expression);
      ASSERT_EQ(find(inColumn), expected) << inColumn << " for " << text;
      if (!expected.empty()) ++finding;
    }
  }
  EXPECT_GT(finding, 2500);
  std::string many;
  for (int i = 0; i < 3000; ++i)
    many += "w" + std::to_string(i) + " ";
  EXPECT_EQ(find(FullTextExpression::AllWords(many)) + find(FullTextExpression::AnyWord(many)), "");
  for (const char* name : {"", "a b", "Found.name", "name\"", "{name}"})
    EXPECT_THROW(FullTextExpression::InColumn(name, "goal"), ArgumentException) << name;
}

}  // namespace

}  // namespace Oru::Common::Databases::Sqlite
