#include "Oru/TimePoints/Core/TimePoint.h"

#include "Oru/TimePoints/Core/VideoRates.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace Oru::TimePoints {
namespace {

const TimePoint epoch = TimePoint::FromNanoseconds(0);

TEST(TimePointTest, ArithmeticIsExactOrThrows) {
  EXPECT_EQ(TimePoint(), TimePoint::MinValue() + Duration::FromNanoseconds(1));
  EXPECT_EQ(epoch + Duration::MinValue(), TimePoint::MinValue());
  EXPECT_EQ(TimePoint::MaxValue() - epoch, Duration::MaxValue());
  TimePoint last = TimePoint::MaxValue();
  EXPECT_THROW(last += Duration::FromNanoseconds(1), std::overflow_error);
  EXPECT_EQ(last, TimePoint::MaxValue());
  EXPECT_THROW(epoch - Duration::MinValue(), std::overflow_error);
  EXPECT_THROW(epoch - TimePoint::MinValue(), std::overflow_error);
}

// The first nanosecond of a sample belongs to it, and the one before to the sample before.
TEST(TimePointTest, SampleNumbersGoThereAndBack) {
  const Rate rates[] = {VideoRates::Rate2398(), VideoRates::Rate50(), VideoRates::Rate11988(), Rate(48000, 1),
                        Rate(999999937, 1),     Rate(1000000000, 1),  Rate(1, 3600),           Rate(-25, -1)};
  std::mt19937_64 random(4711);
  for (const Rate& rate : rates) {
    const int64_t first = TimePoint::MinValue().GetSampleNumber(rate) + 1;
    const int64_t last = TimePoint::MaxValue().GetSampleNumber(rate);
    std::vector<int64_t> numbers = {first, last};
    for (int64_t near = -1000; near < 1000; ++near)
      numbers.push_back(near);
    std::uniform_int_distribution<int64_t> anywhere(first, last);
    for (int i = 0; i < 1000; ++i)
      numbers.push_back(anywhere(random));
    for (const int64_t number : numbers) {
      const TimePoint start = TimePoint::FromSampleNumber(rate, number);
      ASSERT_EQ(start.GetSampleNumber(rate), number) << rate.ToString();
      ASSERT_EQ((start - Duration::FromNanoseconds(1)).GetSampleNumber(rate), number - 1) << rate.ToString();
    }
  }
}

TEST(TimePointTest, RatesThatCountNothingOrTooMuchAreRefused) {
  for (const Rate& rate : {Rate(), Rate(-25, 1), Rate(25, -1)}) {
    EXPECT_THROW(epoch.GetSampleNumber(rate), std::invalid_argument) << rate.ToString();
    EXPECT_THROW(TimePoint::FromSampleNumber(rate, 0), std::invalid_argument) << rate.ToString();
  }
  constexpr int64_t lowest = std::numeric_limits<int64_t>::min();
  EXPECT_THROW(TimePoint::MaxValue().GetSampleNumber(Rate(2000000000, 1)), std::overflow_error);
  EXPECT_THROW(TimePoint::FromSampleNumber(Rate(-1, lowest), lowest), std::overflow_error);
  EXPECT_EQ(TimePoint::MaxValue().GetSampleNumber(VideoRates::Rate50()), 461168601842);
  EXPECT_THROW(TimePoint::FromSampleNumber(VideoRates::Rate50(), 461168601843), std::overflow_error);
  EXPECT_EQ(TimePoint::MinValue().GetSampleNumber(Rate(lowest, lowest)), -9223372037);
}

}  // namespace
}  // namespace Oru::TimePoints
