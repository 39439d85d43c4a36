#include "Oru/BusinessEntityModel/BaseTypes/StringAssociation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

enum class Colour { None, Red, Green, Blue };
using Colours = StringAssociation<Colour>;

TEST(StringAssociationTest, MapsBothWaysAndSurvivesItsOriginal) {
  auto original = std::make_unique<Colours>(Colours{
      {Colour::Red, "red"}, {Colour::Green, "green"}, {Colour::Green, "verde"}, {Colour::Blue, "red"}});
  const Colours copy = *original;
  original.reset();
  EXPECT_TRUE(copy.ToString(Colour::Green) == "green" && copy.ToString(Colour::Blue) == "red");
  EXPECT_TRUE(copy.ToEnum("green") == Colour::Green && copy.ToEnum("verde") == Colour::Green);
  EXPECT_EQ(copy.ToEnum("red"), Colour::Red);
}

TEST(StringAssociationTest, TellsUnknownItems) {
  const Colours strict{{Colour::Red, "red"}};
  const Colours lenient({{Colour::Red, "red"}}, Colour::Red);
  EXPECT_THROW(static_cast<void>(strict.ToString(Colour::Blue)), std::out_of_range);
  EXPECT_TRUE(lenient.ToString(Colour::Blue) == "red" && lenient.ToEnum("Red") == Colour::Red);
  EXPECT_THAT(
      [&] { static_cast<void>(strict.ToEnum("Red")); },
      testing::ThrowsMessage<std::out_of_range>(testing::HasSubstr("ToEnum: the unknown text 'Red'")));
  bool found = true;
  EXPECT_TRUE(strict.ToString(Colour::Blue, found).empty() && !found);
  EXPECT_TRUE(strict.ToString(Colour::Red, found) == "red" && found);
  EXPECT_TRUE(lenient.ToEnum("blue", found) == Colour::Red && !found);
  EXPECT_TRUE(strict.ToEnum("red", found) == Colour::Red && found);
  EXPECT_TRUE(strict.ToEnum("blue", found) == Colour::None && !found);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
