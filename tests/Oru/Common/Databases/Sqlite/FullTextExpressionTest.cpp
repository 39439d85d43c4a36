#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

namespace {

using Words = std::vector<std::string>;

// A row of the index, and what the model knows of it: the words of each column.
struct Row {
  std::string name;
  std::string description;
};

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

bool Holds(const Row& row, const Words& phrase, bool lastIsStart = false) {
  return Holds(row.name, phrase, lastIsStart) || Holds(row.description, phrase, lastIsStart);
}

}  // namespace

class FullTextExpressionTest : public testing::Test {
 protected:
  FullTextExpressionTest() {
    db.Open();
    db.ExecuteStatement("CREATE VIRTUAL TABLE Found USING fts5(name, description)");
  }

  void Add(const Row& row) {
    CursorSqlite insert(db, "INSERT INTO Found (name, description) VALUES (:name, :description)");
    ASSERT_TRUE(insert.Bind("name", row.name) && insert.Bind("description", row.description));
    insert.Run();
  }

  // The numbers of the rows that an expression finds, from 1.
  std::string Find(const std::string& expression) {
    QuerySqlite query;
    query.Match("Found", expression);
    return TestSupport::Value(
        db, "SELECT coalesce(group_concat(rowid, ' '), '') FROM Found WHERE " + query.GetFilterSQL());
  }

  TestSupport::CapturedLog log;
  DatabaseSqlite db{":memory:", log.Stream()};
  std::mt19937 random{7};
};

TEST_F(FullTextExpressionTest, LooksInOneColumnOnly) {
  Add({"goal year", "year"});
  Add({"year", "goal"});
  EXPECT_EQ(Find(FullTextExpression::InColumn("name", FullTextExpression::AllWords("goal year"))), "1");
  EXPECT_EQ(Find(FullTextExpression::InColumn("description", FullTextExpression::AnyWord("goal none"))), "2");
  EXPECT_EQ(Find(FullTextExpression::InColumn("name", FullTextExpression::AllWordsAsTyped("YE"))), "1 2");
  EXPECT_EQ(Find(FullTextExpression::InColumn("name", FullTextExpression::AllWords(" "))), "");
  for (const char* name : {"", "a b", "Found.name", "name\"", "{name}"})
    EXPECT_THROW(FullTextExpression::InColumn(name, "goal"), ArgumentException) << name;
}

TEST_F(FullTextExpressionTest, FindsTheRowsThatAModelFinds) {
  const std::string pieces[] = {"a", "b",  "A", "aB", "ab", "b1", "1", "-",
                                "_", "\"", "*", ":",  " ",  " ",  "OR"};
  const auto any = [&](std::size_t most) {
    std::string text;
    for (auto count = random() % (most + 1); count > 0; --count)
      text += pieces[random() % std::size(pieces)];
    return text;
  };
  std::vector<Row> rows;
  for (int i = 0; i < 40; ++i) {
    rows.push_back({any(8), any(8)});
    Add(rows.back());
  }
  int finding = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::string text = any(6);
    const std::vector<Words> phrases = PhrasesOf(text);
    const Words whole = WordsOf(text);
    std::string all, asTyped, some, phrase;
    for (std::size_t i = 0; i < rows.size() && !whole.empty(); ++i) {
      const auto add = [&](std::string& found, bool isHit) {
        if (isHit) found += (found.empty() ? "" : " ") + std::to_string(i + 1);
      };
      const auto holds = [&](const Words& words) { return !words.empty() && Holds(rows[i], words); };
      // Signs alone ask for nothing.
      const auto allows = [&](const Words& words) { return words.empty() || holds(words); };
      const Words& last = phrases.back();
      add(all, std::all_of(phrases.begin(), phrases.end(), allows));
      add(some, std::any_of(phrases.begin(), phrases.end(), holds));
      add(phrase, holds(whole));
      add(asTyped, std::all_of(phrases.begin(), phrases.end() - 1, allows) &&
                       (last.empty() || Holds(rows[i], last, true)));
    }
    ASSERT_EQ(Find(FullTextExpression::AllWords(text)), all) << text;
    ASSERT_EQ(Find(FullTextExpression::AnyWord(text)), some) << text;
    ASSERT_EQ(Find(FullTextExpression::Phrase(text)), phrase) << text;
    ASSERT_EQ(Find(FullTextExpression::AllWordsAsTyped(text)), asTyped) << text;
    if (!all.empty()) ++finding;
  }
  EXPECT_GT(finding, 500);
}

// Beside single bytes, what has a meaning in an expression or in UTF-8.
TEST_F(FullTextExpressionTest, NoTextMakesAnExpressionThatIsRefused) {
  const std::string pieces[] = {
      "\"",     "\"\"", " AND ", " OR ",  " NOT ",  "NEAR(",  ")",        "*",
      "^",      "+",    ":",     "name:", "{",      "}",      "-",        "'",
      "''",     " ",    "x",     "é",     "\u2026", "\u0301", "\xf0\x9f", "\xed\xa0\x80",
      {"\0", 1}};
  Add({"x", "é"});
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (auto count = random() % 12; count > 0; --count) {
      if (random() % 3 == 0)
        text += static_cast<char>(random() % 256);
      else
        text += pieces[random() % std::size(pieces)];
    }
    for (const std::string& expression :
         {FullTextExpression::AllWords(text), FullTextExpression::AllWordsAsTyped(text),
          FullTextExpression::AnyWord(text), FullTextExpression::Phrase(text)}) {
      ASSERT_NO_THROW(Find(expression)) << expression << log.Text();
      ASSERT_NO_THROW(Find(FullTextExpression::InColumn("name", expression))) << expression << log.Text();
    }
  }
  std::string many;
  for (int i = 0; i < 3000; ++i)
    many += "w" + std::to_string(i) + " ";
  EXPECT_EQ(Find(FullTextExpression::AllWords(many + "x")) + Find(FullTextExpression::AnyWord(many + "x")),
            "1");
}

}  // namespace Oru::Common::Databases::Sqlite
