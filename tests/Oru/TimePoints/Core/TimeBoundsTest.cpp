#include "Oru/TimePoints/Core/TimeBounds.h"

#include <gtest/gtest.h>

namespace Oru::TimePoints {
namespace {

const TimePoint ten = TimePoint::FromNanoseconds(10);

TEST(TimeBoundsTest, DefaultBoundariesAreUnsetAndEqualityTakesEveryField) {
  EXPECT_EQ(TimeBoundary().TimePoint().ToNanoseconds(), -9223372036854775807);
  EXPECT_FALSE(TimeBoundary().IsMoving());
  EXPECT_EQ(TimeBounds(), TimeBounds(TimeBoundary(), TimeBoundary()));
  EXPECT_NE(TimeBoundary(ten, true), TimeBoundary(ten, false));
  EXPECT_NE(TimeBoundary(TimePoint::Empty(), true), TimeBoundary());
  EXPECT_NE(TimeBounds(ten, TimeBoundary()), TimeBounds(TimeBoundary(), ten));
  EXPECT_NE(TimeBounds(ten, TimeBoundary(ten, true)), TimeBounds(ten, ten));
}

TEST(TimeBoundsTest, DurationRunsFromInToOutAndIsZeroWithoutBoth) {
  const TimePoint twelve = TimePoint::FromNanoseconds(12);
  EXPECT_EQ(TimeBounds(twelve, TimeBoundary(ten, true)).Duration(), Duration::FromNanoseconds(-2));
  EXPECT_EQ(TimeBounds(TimeBoundary(), ten).Duration(), Duration::Empty());
  EXPECT_EQ(TimeBounds(ten, TimeBoundary()).Duration(), Duration::Empty());
  EXPECT_THROW(TimeBounds(TimePoint::MinValue(), ten).Duration(), std::overflow_error);
}

}  // namespace
}  // namespace Oru::TimePoints
