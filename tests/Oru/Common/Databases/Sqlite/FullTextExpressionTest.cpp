#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

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
