#include "Oru/TimePoints/Core/TimeCode.h"

#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <limits>
#include <tuple>
#include <vector>

namespace Oru::TimePoints {
namespace {

/// Walks through a day frame by frame as a clock does: carries, then skips the numbers that don't exist.
struct FrameWalk {
  int rate;
  bool drop;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int sample = 0;
  int64_t framesBefore = 0;

  void Step() {
    ++framesBefore;
    if (++sample < rate) return;
    sample = 0;
    if (++second < 60) return;
    second = 0;
    if (++minute == 60) {
      minute = 0;
      ++hour;
    }
    const bool tenthMinute = std::to_string(minute).back() == '0';
    if (drop && !tenthMinute) sample = rate == 30 ? 2 : 4;
  }
};

class CountingTest : public testing::TestWithParam<std::pair<int, bool>> {
 protected:
  static std::tm DateOf(int64_t daysSince1900) {
    const std::time_t midnight = (daysSince1900 - 25567) * 86400;
    std::tm date{};
    gmtime_r(&midnight, &date);
    return date;
  }

  /// Expects that the frame has its count on that day, and the count the fields of the frame.
  static void ExpectAgreement(int64_t day, int64_t framesPerDay, const FrameWalk& frame) {
    const std::tm date = DateOf(day);
    const int64_t total = day * framesPerDay + frame.framesBefore;
    TimeCodeBuilder builder = TimeCodeBuilder().Year(1900).Rate(Rate(frame.rate, 1)).IsDrop(frame.drop);
    const TimeCode counted = builder.Build() + total;
    builder.Date(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday);
    builder.ClockTime(frame.hour, frame.minute, frame.second, frame.sample);
    ASSERT_EQ(builder.Build().TotalSample(), total);
    ASSERT_EQ(counted, builder.Build());
    ASSERT_EQ(std::tuple(counted.Year(), counted.Month(), counted.Day()),
              std::tuple(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday));
    ASSERT_EQ(std::tuple(counted.Hour(), counted.Minute(), counted.Second(), counted.Sample()),
              std::tuple(frame.hour, frame.minute, frame.second, frame.sample));
  }
};

TEST_P(CountingTest, FieldsAndCountAgree) {
  FrameWalk walk{GetParam().first, GetParam().second};
  std::vector<FrameWalk> minuteEdges;
  std::vector<FrameWalk> scattered;
  for (; walk.hour < 24; walk.Step()) {
    const bool afterEdge = walk.second == 0 && walk.sample < 6;
    const bool beforeEdge = walk.second == 59 && walk.sample >= walk.rate - 2;
    if (afterEdge || beforeEdge) minuteEdges.push_back(walk);
    if (walk.framesBefore % 9973 == 0) scattered.push_back(walk);
  }
  const int64_t framesPerDay = walk.framesBefore;

  const int64_t leapDay = 36583;
  ASSERT_EQ(DateOf(leapDay).tm_mday, 29);
  for (const FrameWalk& frame : minuteEdges) {
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(leapDay, framesPerDay, frame));
  }

  const int64_t daysUntil2262 = 132218;
  ASSERT_EQ(DateOf(daysUntil2262 - 1).tm_year + 1900, UntilYear);
  for (int64_t day = 0; day < daysUntil2262; day += day % 365 < 62 ? 1 : 13) {
    const auto pick = static_cast<size_t>(day);
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(day, framesPerDay, minuteEdges.front()));
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(day, framesPerDay, minuteEdges[pick % minuteEdges.size()]));
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(day, framesPerDay, scattered[pick % scattered.size()]));
  }
  ASSERT_NO_FATAL_FAILURE(ExpectAgreement(daysUntil2262 - 1, framesPerDay, minuteEdges.back()));
}

INSTANTIATE_TEST_SUITE_P(Rates, CountingTest,
                         testing::Values(std::pair(24, false), std::pair(25, false), std::pair(30, false),
                                         std::pair(30, true), std::pair(48, false), std::pair(50, false),
                                         std::pair(60, false), std::pair(60, true), std::pair(120, false)));

constexpr int64_t highest = std::numeric_limits<int64_t>::max();

TEST(TimeCodeTest, MovesBySamplesButNotBefore1900) {
  const TimeCode start = TimeCodeBuilder().Rate(Rate(60, 1)).IsDrop(true).ClockTime(1, 2, 3, 4).Build();
  EXPECT_EQ(start.AddSample(-start.TotalSample()).TotalSample(), 0);
  EXPECT_TRUE(start.AddSample(5).IsDrop() && !start.AddSample(5).HasDate());
  EXPECT_EQ(start.SubstractSample(-5) - start, 5);
  EXPECT_THAT(
      [&] { start.AddSample(-start.TotalSample() - 1); },
      testing::ThrowsMessage<std::out_of_range>("New TotalSample -1 must be positive (after 1/1/1900) "));
  TimeCode moving;
  EXPECT_EQ(moving++, TimeCode());
  EXPECT_EQ(++moving, TimeCode() + 2);
  EXPECT_EQ(moving--, TimeCode() + 2);
  EXPECT_EQ(--moving, TimeCode());
  EXPECT_THROW(--moving, std::out_of_range);
  EXPECT_THROW(moving -= std::numeric_limits<int64_t>::min(), std::out_of_range);
  EXPECT_TRUE(moving.IsEmpty());
  moving += highest;
  EXPECT_THROW(++moving, std::out_of_range);
  EXPECT_FALSE(moving.IsEmpty());
}

TEST(TimeCodeTest, ComparisonIsAboutTheCountAndTheWayOfCounting) {
  const TimeCode plain = TimeCodeBuilder().Rate(Rate(60, 1)).Year(1900).Build();
  const TimeCode dropping = TimeCodeBuilder().Rate(Rate(60, 1)).Year(1900).IsDrop(true).Build();
  EXPECT_NE(plain, dropping);
  EXPECT_NE(plain, TimeCode());
  EXPECT_NE(TimeCodeBuilder().Build(), TimeCodeBuilder().Date(1970, 1, 1).Build());
  EXPECT_TRUE(plain < plain + 1 && plain + 1 > plain && plain <= plain && !(plain >= plain + 1));
  EXPECT_THROW(static_cast<void>(plain < dropping), std::invalid_argument);
  EXPECT_THROW(static_cast<void>(plain >= TimeCode()), std::invalid_argument);
  EXPECT_THROW(plain - dropping, std::invalid_argument);
}

TEST(TimeCodeTest, CountsOutsideTheCalendarStillHaveFields) {
  const TimeCode before = TimeCodeBuilder().Year(1900).Sample(-1).Build();
  EXPECT_EQ(before.Year(), 1899);
  EXPECT_EQ(before.Sample(), 49);
  EXPECT_EQ((TimeCodeBuilder().Date(2261, 12, 31).ClockTime(23, 59, 59, 49).Build() + 1).Year(), 2262);
  const TimeCode farthest = TimeCodeBuilder().Rate(Rate(1, 1)).Year(1900).Build() + highest;
  EXPECT_THROW(farthest.Year(), std::out_of_range);
  EXPECT_EQ(farthest.Second(), highest % 60);
  const TimeCode rateless = TimeCodeBuilder().Rate(Rate(0, 1)).Sample(-1).Build();
  EXPECT_THROW(rateless.Hour(), std::out_of_range);
}

}  // namespace
}  // namespace Oru::TimePoints
