#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"

#include "support/Prelude.h"

#include <unordered_set>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

TEST(Utf8StringTest, SplitsIntoWellFormedSequencesAndSingleBytes) {
  using Parts = std::vector<std::string>;
  const struct {
    const char* what;
    Parts characters;
  } cases[] = {
      {"empty", {}},
      {"ASCII, NUL inside", {"a", std::string(1, '\0'), "\x7f"}},
      {"two, three and four bytes", {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x8E\xAC", "z"}},
      {"bounds of each length", {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80"}},
      {"beside the surrogates", {"\xED\x9F\xBF", "\xEE\x80\x80"}},
      {"U+10FFFF and above", {"\xF4\x8F\xBF\xBF", "\xF4", "\x90", "\x80", "\x80", "\xF5", "\x80"}},
      {"a surrogate", {"\xED", "\xA0", "\x80"}},
      {"overlong", {"\xC0", "\x80", "\xC1", "\xBF", "\xE0", "\x9F", "\xBF", "\xF0", "\x8F", "\xBF", "\xBF"}},
      {"continuation first", {"\x80", "\xBF", "a"}},
      {"cut off by another character", {"\xE2", "\x82", "a", "\xF0", "\x9F", "\x8E", "\xC3\xA9"}},
      {"cut off by the end", {"a", "\xF0", "\x9F", "\x8E"}},
      {"never a lead", {"\xFE", "\xFF"}},
  };
  for (const auto& c : cases) {
    Utf8String text;
    bool ascii = true;
    for (const std::string& character : c.characters) {
      text += character;
      ascii = ascii && character[0] >= 0;
    }
    const std::vector<Utf8String> characters = text.Characters();
    EXPECT_EQ(Parts(characters.begin(), characters.end()), c.characters) << c.what;
    EXPECT_EQ(text.GetCharactersCount(), c.characters.size()) << c.what;
    EXPECT_EQ(text.IsAscii(), ascii) << c.what;
  }
}

TEST(Utf8StringTest, IsBuiltFromBytesAndComparesAsAString) {
  const uint8_t bytes[] = {'a', 0xC3, 0xA9, 0};
  const Utf8String text(bytes);
  EXPECT_TRUE(text == "a\xC3\xA9" && text == Utf8String(bytes, 3) && std::string("a\xC3\xA9") == text);
  EXPECT_EQ(Utf8String("a\0b", 3).size(), 3U);
  EXPECT_TRUE(Utf8String(static_cast<const uint8_t*>(nullptr)).empty());
  EXPECT_EQ(std::unordered_set<Utf8String>{text}.count(text), 1U);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
