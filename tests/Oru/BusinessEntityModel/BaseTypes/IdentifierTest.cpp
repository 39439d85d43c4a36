#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

TEST(IdentifierTest, MeetsStringsAndLiteralsOnBothSides) {
  const Identifier clip("clip-1");
  EXPECT_TRUE(clip == "clip-1" && "clip-1" == clip && clip == std::string("clip-1") && clip != Identifier());
  EXPECT_LT(clip, "clip-10");
  EXPECT_TRUE(clip > "clip" && clip >= clip && clip <= clip && !(clip > clip) && !(clip <= "clip"));
  EXPECT_LT(Identifier("a\x7f"), "a\x80") << "bytes are unsigned";
  std::string text = clip;
  EXPECT_EQ(text, "clip-1");
  EXPECT_EQ(testing::PrintToString(clip), "clip-1") << "streams as its text";
  EXPECT_EQ((std::unordered_map<Identifier, int>{{"clip-1", 1}}.count(clip)), 1U);
}

TEST(IdentifierTest, GeneratesDistinctVersion4UuidsInEveryThread) {
  const auto thousand = [] {
    std::vector<Identifier> made(1000);
    std::generate(made.begin(), made.end(), Identifier::Generate);
    return made;
  };
  auto others = std::async(std::launch::async, thousand);
  std::vector<Identifier> made = thousand();
  const std::vector<Identifier> theirs = others.get();
  made.insert(made.end(), theirs.begin(), theirs.end());

  EXPECT_EQ(std::set<Identifier>(made.begin(), made.end()).size(), 2000U);
  std::set<char> variants;
  const std::string four = "[0-9a-f][0-9a-f][0-9a-f][0-9a-f]";
  const std::string pattern =
      four + four + "-" + four + "-4" + four.substr(8) + "-" + four + "-" + four + four + four;
  for (const Identifier& identifier : made) {
    ASSERT_THAT(identifier.Value(), testing::MatchesRegex(pattern));
    variants.insert(identifier.Value()[19]);
  }
  EXPECT_THAT(variants, testing::ElementsAre('8', '9', 'a', 'b'));
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
