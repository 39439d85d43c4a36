#include "Oru/TimePoints/Core/Duration.h"

#include <gtest/gtest.h>

#include <limits>

namespace Oru::TimePoints {
namespace {

TEST(DurationTest, ArithmeticThatFitsIsExact) {
  EXPECT_EQ(Duration().ToNanoseconds(), 0);
  EXPECT_EQ(Duration::FromMilliseconds(-3).ToNanoseconds(), -3000000);
  EXPECT_EQ(Duration::FromSeconds(std::numeric_limits<int>::max()).ToNanoseconds(), 2147483647000000000);
  EXPECT_EQ(Duration::FromMinutes(-2), Duration::FromSeconds(-120));
  EXPECT_EQ(Duration::MinValue() + Duration::MaxValue(), Duration::FromNanoseconds(-1));
  EXPECT_EQ(Duration::FromSeconds(3) * -2, Duration::FromSeconds(-6));
  EXPECT_EQ(Duration::FromNanoseconds(-7) / 2, Duration::FromNanoseconds(-3));
  EXPECT_EQ(Duration::MinValue().CompareTo(Duration::MaxValue()), -1);
}

TEST(DurationTest, ArithmeticThatDoesNotFitThrowsAndChangesNothing) {
  const Duration tick = Duration::FromNanoseconds(1);
  Duration longest = Duration::MaxValue();
  Duration shortest = Duration::MinValue();
  EXPECT_THROW(longest += tick, std::overflow_error);
  EXPECT_THROW(shortest -= tick, std::overflow_error);
  EXPECT_THROW(longest *= 2, std::overflow_error);
  EXPECT_THROW(shortest /= -1, std::overflow_error);
  EXPECT_THROW(longest /= 0, std::invalid_argument);
  EXPECT_EQ(longest, Duration::MaxValue());
  EXPECT_EQ(shortest, Duration::MinValue());
  EXPECT_THROW(Duration::FromMilliseconds(9223372036855), std::overflow_error);
  EXPECT_THROW(Duration::FromMinutes(std::numeric_limits<int>::max()), std::overflow_error);
}

}  // namespace
}  // namespace Oru::TimePoints
