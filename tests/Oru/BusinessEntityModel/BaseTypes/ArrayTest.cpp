#include "Oru/BusinessEntityModel/BaseTypes/Array.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Oru::BusinessEntityModel::BaseTypes {
namespace {

struct Shape {
  explicit Shape(int shapeName) : name(shapeName) {}
  virtual ~Shape() = default;
  virtual std::unique_ptr<Shape> Clone() const { return std::make_unique<Shape>(*this); }
  bool operator==(const Shape& other) const { return name == other.name; }

  int name;
  int32_t number = -1;
};
struct Square : Shape {
  using Shape::Shape;
  std::unique_ptr<Shape> Clone() const override { return std::make_unique<Square>(*this); }
};

}  // namespace

template <>
struct ArrayElementTraits<Shape> {
  static void Adding(Shape& shape, int32_t position) noexcept { shape.number = position; }
};

namespace {

TEST(ArrayTest, NumbersFollowPositionsThroughRandomChanges) {
  std::mt19937 random(4711);
  Array<Shape> array;
  std::vector<int> names;
  for (int step = 0; step < 5000; ++step) {
    auto shape = std::make_unique<Shape>(step);
    const auto position = static_cast<int32_t>(random() % (names.size() + 1));
    const auto place = names.begin() + position;
    const auto change = random() % 4;
    if (change == 0) {
      ASSERT_EQ(array.Add(std::move(shape)), static_cast<int32_t>(names.size()));
      names.push_back(step);
    } else if (change == 1) {
      array.Insert(position, std::move(shape));
      names.insert(place, step);
    } else if (place == names.end()) {
      ASSERT_THROW(array.Erase(position), std::out_of_range);
      ASSERT_THROW(array.Replace(position, std::move(shape)), std::out_of_range);
      ASSERT_THROW(array.Insert(position + 1, std::move(shape)), std::out_of_range);
      ASSERT_TRUE(shape) << "stays with the caller";
    } else if (change == 2) {
      ASSERT_EQ(array.Replace(position, std::move(shape))->name, std::exchange(*place, step));
    } else {
      ASSERT_EQ(array.Erase(position)->name, *place);
      names.erase(place);
    }
    ASSERT_EQ(array.Size(), static_cast<int32_t>(names.size()));
    for (int32_t i = 0; i < array.Size(); ++i) {
      ASSERT_EQ(array[i].number, i);
      ASSERT_EQ(array.At(i).name, names[static_cast<std::size_t>(i)]);
    }
  }
}

TEST(ArrayTest, CopiesDeeplyAndKeepsTheClassOfEachElement) {
  Array<Shape> array;
  array.Add(Square(7));
  array.Add(std::make_unique<Shape>(8));
  Array<Shape> copy(array);
  EXPECT_NE(dynamic_cast<Square*>(&copy[0]), nullptr);
  EXPECT_TRUE(copy == array);
  copy[0].name = 9;
  EXPECT_TRUE(copy != array);
  copy.Copy(copy);
  ASSERT_EQ(copy.Size(), 4);
  EXPECT_EQ(copy[3].name * 10 + copy[3].number, 83);
}

TEST(ArrayTest, AdoptsRangesAndArrays) {
  std::vector<std::unique_ptr<Shape>> loose;
  for (const int name : {4, 5})
    loose.push_back(std::make_unique<Shape>(name));
  Array<Shape> first, second;
  first.Add(Shape(3));
  second.Adopt(loose.begin(), loose.end());
  first.Adopt(second);
  first.Adopt(first);
  EXPECT_THROW(first.Add(std::unique_ptr<Shape>()), std::invalid_argument);
  EXPECT_TRUE(second.Empty() && first.Size() == 3 && first[2].name == 5 && first[2].number == 2);
}

}  // namespace
}  // namespace Oru::BusinessEntityModel::BaseTypes
