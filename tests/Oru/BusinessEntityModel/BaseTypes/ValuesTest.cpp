#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/BaseTypes/Optional.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/BaseTypes/SharedReference.h"
#include "Oru/BusinessEntityModel/BaseTypes/StringAssociation.h"

#include "support/Prelude.h"

#include <future>
#include <unordered_map>

// Names, identifiers, references and optional values.
namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

TEST(FullyQualifiedNameTest, JoinsWithOneSeparator) {
  const struct {
    const char *first, *second, *concat, *combine, *path;
  } cases[] = {
      {"oru", "dap", "orudap", "oru.dap", "oru/dap"},
      {"oru.", ".dap", "oru..dap", "oru.dap", "oru./.dap"},
      {"a/", "/b", "a//b", "a/./b", "a/b"},
      {"", "dap", "dap", "dap", "dap"},
      {"oru", "", "oru", "oru", "oru"},
  };
  for (const auto& [first, second, concat, combine, path] : cases) {
    EXPECT_EQ(FullyQualifiedName::Concat(first, second), concat);
    EXPECT_EQ(FullyQualifiedName::Combine(first, second), combine);
    EXPECT_EQ(FullyQualifiedName::CombinePath(first, second), path);
  }
}

TEST(IdentifierTest, ComparesAsTheBytesOfItsText) {
  const auto compared = [](const auto& left, const auto& right) {
    return std::tuple(left == right, left != right, left<right, left> right, left <= right, left >= right);
  };
  for (const std::string left : {"", "clip", "clip-1", "a\x7f", "a\x80"}) {
    for (const std::string right : {"", "clip", "clip-1", "a\x7f", "a\x80"}) {
      EXPECT_EQ(compared(Identifier(left), Identifier(right)), compared(left, right));
      EXPECT_TRUE((Identifier(left) == right) == (left == right) &&
                  (left.c_str() == Identifier(right)) == (left == right));
    }
  }
  EXPECT_EQ(testing::PrintToString(Identifier("clip-1")), "clip-1") << "streams as its text";
  EXPECT_EQ((std::unordered_map<Identifier, int>{{"clip-1", 1}}.count("clip-1")), 1U);
}

TEST(IdentifierTest, GeneratesDistinctVersion4UuidsInEveryThread) {
  const auto thousand = [] {
    std::vector<Identifier> made(1000);
    std::generate(made.begin(), made.end(), Identifier::Generate);
    return made;
  };
  auto others = std::async(std::launch::async, thousand);
  const std::vector<Identifier> mine = thousand(), theirs = others.get();
  std::set<Identifier> distinct(mine.begin(), mine.end());
  distinct.insert(theirs.begin(), theirs.end());
  EXPECT_EQ(distinct.size(), 2000U);
  for (const Identifier& identifier : distinct)
    ASSERT_THAT(identifier.Value(),
                testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
}

TEST(OptionalTest, KeepsAliveExactlyWhatItHoldsAndRefusesToGiveNothing) {
  const auto counted = std::make_shared<int>(1);
  Optional<std::shared_ptr<int>> held(counted), other;
  other = held;
  EXPECT_TRUE(counted.use_count() == 3 && held == counted && held == other);
  other = std::make_shared<int>(2);
  EXPECT_TRUE(held != other && **other == 2);
  held = {};
  other.Undefine();
  EXPECT_TRUE(counted.use_count() == 1 && !held && held == other && held == held.Null());
  EXPECT_THROW(held.Value(), std::logic_error);
  EXPECT_THROW(static_cast<void>(held->get()), std::logic_error);
  Optional<std::vector<int>> vector(std::vector<int>{1, 2});
  std::vector<int>& inside = *vector;
  vector = std::as_const(inside);
  vector = std::move(inside);
  EXPECT_EQ(vector->size(), 2U) << "a vector moved onto itself would be empty";
}

struct Clip : PersistentObject {
  explicit Clip(Identifier identifier) : id(std::move(identifier)) {}
  const Identifier& Id() const { return id; }

  Identifier id;
};
struct LiveClip : Clip {
  using Clip::Clip;
};

TEST(SharedReferenceTest, TakesObjectAndIdentifierFromEveryKindOfPointer) {
  const auto shared = std::make_shared<LiveClip>("x");
  std::weak_ptr<LiveClip> weak = shared;
  SharedReference<Clip> references[] = {shared, weak, std::make_unique<LiveClip>("x")};
  for (auto& reference : references) {
    EXPECT_TRUE(reference && reference.Id() == "x" && reference->ObjectId() == -1);
    EXPECT_EQ(reference, SharedReference<Clip>(Identifier("x"))) << "pointers don't count";
    EXPECT_EQ(reference, Identifier("x"));
  }
  references[0] = std::make_unique<Clip>("y");
  references[1] = std::shared_ptr<LiveClip>();
  references[2].Pointer(std::shared_ptr<Clip>());
  EXPECT_LT(references[2], references[0]);
  EXPECT_TRUE(references[1].IsEmpty()) << "an empty pointer assigned";
  EXPECT_TRUE(references[2].Id() == "x" && !references[2]) << "the object let go";
  references[1].Pointer(std::make_shared<LiveClip>("z"));
  EXPECT_EQ(references[1].Id(), "z");
  weak = std::make_shared<LiveClip>("gone");
  EXPECT_TRUE(SharedReference<Clip>(weak).IsEmpty());
  references[0]->id = "renamed";
  EXPECT_EQ(references[0].Id(), "y") << "until asked";
  for (auto& reference : references)
    reference.UpdateIdentifier();
  EXPECT_TRUE(references[0].Id() == "renamed" && references[2].Id() == "x");
  EXPECT_THROW(references[2].Value(), std::logic_error);
  EXPECT_THROW(static_cast<void>(references[2]->Id()), std::logic_error);
}

TEST(StringAssociationTest, MapsBothWaysAndSaysWhatIsUnknown) {
  enum class Colour { None, Red, Green, Blue };
  using Colours = StringAssociation<Colour>;
  auto original = std::make_unique<Colours>(Colours{
      {Colour::Red, "red"}, {Colour::Green, "green"}, {Colour::Green, "verde"}, {Colour::Blue, "red"}});
  const Colours copy = *original, strict{{Colour::Red, "red"}}, lenient({{Colour::Red, "red"}}, Colour::Red);
  original.reset();
  EXPECT_TRUE(copy.ToString(Colour::Green) == "green" && copy.ToString(Colour::Blue) == "red");
  EXPECT_TRUE(copy.ToEnum("verde") == Colour::Green && copy.ToEnum("red") == Colour::Red);
  EXPECT_THROW(static_cast<void>(strict.ToString(Colour::Blue)), std::out_of_range);
  EXPECT_THAT(
      [&] { static_cast<void>(strict.ToEnum("Red")); },
      testing::ThrowsMessage<std::out_of_range>(testing::HasSubstr("ToEnum: the unknown text 'Red'")));
  bool found = true;
  EXPECT_TRUE(strict.ToString(Colour::Blue, found).empty() && !found);
  EXPECT_TRUE(strict.ToString(Colour::Red, found) == "red" && found);
  EXPECT_TRUE(lenient.ToEnum("blue", found) == Colour::Red && !found);
  EXPECT_TRUE(lenient.ToString(Colour::Blue) == "red" && lenient.ToEnum("Red") == Colour::Red);
  EXPECT_TRUE(strict.ToEnum("red", found) == Colour::Red && found);
  EXPECT_TRUE(strict.ToEnum("blue", found) == Colour::None && !found);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
