#include "Oru/TimePoints/Core/RatedTimePoint.h"

#include "Oru/TimePoints/Core/VideoRates.h"

#include <gtest/gtest.h>

namespace Oru::TimePoints {
namespace {

TEST(RatedTimePointTest, AlignsToTheSampleUnderWayAndKeepsTheRemainder) {
  const TimePoint instant = TimePoint::FromNanoseconds(-123456789);
  const RatedTimePoint aligned = instant.AlignWith(VideoRates::Rate25());
  EXPECT_EQ(aligned.SampleNumber(), -4);
  EXPECT_EQ(aligned.TimePoint().ToNanoseconds(), -160000000);
  EXPECT_EQ(aligned.TimePoint() + aligned.Delta(), instant);
  EXPECT_EQ(aligned, RatedTimePoint(aligned.TimePoint(), VideoRates::Rate25(), instant));
  EXPECT_NE(aligned, RatedTimePoint(-4, VideoRates::Rate25()));
  EXPECT_THROW(RatedTimePoint(instant, VideoRates::Rate25(), instant), std::invalid_argument);
  EXPECT_THROW(TimePoint::MinValue().AlignWith(VideoRates::Rate25()), std::overflow_error);
}

TEST(RatedTimePointTest, MovingForthAndBackIsExactAndRatesDoNotMix) {
  for (int64_t instant = -70000000; instant < 70000000; instant += 333331) {
    const RatedTimePoint start = TimePoint::FromNanoseconds(instant).AlignWith(VideoRates::Rate5994());
    for (const int64_t step : {1, 59, 100003}) {
      ASSERT_EQ((start + step).SampleNumber(), start.SampleNumber() + step);
      ASSERT_EQ((start + step) - start, step);
      ASSERT_EQ((start + step) - step, start);
    }
  }
  EXPECT_THROW(RatedTimePoint().SampleNumber(), std::invalid_argument);
  EXPECT_THROW(RatedTimePoint(1, Rate(50, 1)) - RatedTimePoint(1, Rate(100, 2)), std::invalid_argument);
}

}  // namespace
}  // namespace Oru::TimePoints
