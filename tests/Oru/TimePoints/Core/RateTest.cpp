#include "Oru/TimePoints/Core/Rate.h"

#include "Oru/TimePoints/Core/TimePoint.h"
#include "Oru/TimePoints/Core/VideoRates.h"

#include <gtest/gtest.h>

#include <limits>

namespace Oru::TimePoints {
namespace {

constexpr int64_t lowest = std::numeric_limits<int64_t>::min();
constexpr int64_t highest = std::numeric_limits<int64_t>::max();

TEST(RateTest, KeepsItsNumbersAndComparesThemOneByOne) {
  EXPECT_EQ(Rate(50, 1), VideoRates::Rate50());
  EXPECT_NE(Rate(100, 2), Rate(50, 1));
  EXPECT_NE(Rate(50, 1), Rate(50, 2));
  EXPECT_EQ(Rate(), Rate(0, 1));
}

TEST(RateTest, OneInZeroSecondsCanBeHeldAndNotComputedWith) {
  const Rate endless(25, 0);
  EXPECT_EQ(endless.ToString(), "25/0");
  EXPECT_THROW(endless.CompareTo(Rate(25, 1)), std::invalid_argument);
  EXPECT_THROW(Rate(25, 1).CompareTo(endless), std::invalid_argument);
  EXPECT_THROW(endless.Reduced(), std::invalid_argument);
  const TimePoint instant = TimePoint::FromNanoseconds(7);
  EXPECT_THROW(instant.GetSampleNumber(endless), std::invalid_argument);
  EXPECT_THROW(instant.AlignWith(endless), std::invalid_argument);
  EXPECT_THROW(TimePoint::FromSampleNumber(endless, 1), std::invalid_argument);
}

TEST(RateTest, CompareToOrdersTheRatios) {
  const struct {
    Rate left;
    Rate right;
    int order;
  } cases[] = {
      {Rate(100, 2), Rate(50, 1), 0},
      {VideoRates::Rate2997(), VideoRates::Rate30(), -1},
      {Rate(-1, 3), Rate(1, -3), 0},
      {Rate(1, -3), Rate(0, 1), -1},
      {Rate(-1, -3), Rate(0, -1), 1},
      {Rate(lowest, 1), Rate(highest, 1), -1},
      {Rate(highest, highest - 1), Rate(highest - 1, highest - 2), -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.left.CompareTo(c.right), c.order) << c.left.ToString() << " " << c.right.ToString();
    EXPECT_EQ(c.right.CompareTo(c.left), -c.order) << c.right.ToString() << " " << c.left.ToString();
  }
}

TEST(RateTest, ReducedGivesLowestTermsOverAPositiveDenominator) {
  EXPECT_EQ(Rate(60000, 2002).Reduced(), VideoRates::Rate2997());
  EXPECT_EQ(Rate(3, -6).Reduced(), Rate(-1, 2));
  EXPECT_EQ(Rate(0, -9).Reduced(), Rate());
  EXPECT_EQ(Rate(lowest, lowest).Reduced(), Rate(1, 1));
  EXPECT_THROW(Rate(lowest, -1).Reduced(), std::overflow_error);
  EXPECT_THROW(Rate(1, lowest).Reduced(), std::overflow_error);
}

}  // namespace
}  // namespace Oru::TimePoints
