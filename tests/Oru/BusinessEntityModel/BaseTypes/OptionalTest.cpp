#include "Oru/BusinessEntityModel/BaseTypes/Optional.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

TEST(OptionalTest, KeepsAliveExactlyWhatItHolds) {
  const auto counted = std::make_shared<int>(1);
  Optional<std::shared_ptr<int>> held(counted);
  Optional<std::shared_ptr<int>> other;
  other = held;
  EXPECT_EQ(counted.use_count(), 3);
  EXPECT_TRUE(held == counted && held == other);
  other = std::make_shared<int>(2);
  EXPECT_TRUE(held != other && **other == 2);
  held = {};
  EXPECT_FALSE(held);
  EXPECT_EQ(counted.use_count(), 1);
  other.Undefine();
  EXPECT_TRUE(held == other && other == Optional<std::shared_ptr<int>>::Null());
}

TEST(OptionalTest, KeepsAValueThatIsAssignedToItself) {
  Optional<std::vector<int>> held(std::vector<int>{1, 2});
  std::vector<int>& inside = *held;
  held = std::as_const(inside);
  held = std::move(inside);
  EXPECT_EQ(held->size(), 2U) << "a vector moved onto itself would be empty";
}

TEST(OptionalTest, RefusesToGiveAnAbsentValue) {
  Optional<std::string> absent;
  EXPECT_THROW(absent.Value(), std::logic_error);
  EXPECT_THROW(static_cast<void>(absent->size()), std::logic_error);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
