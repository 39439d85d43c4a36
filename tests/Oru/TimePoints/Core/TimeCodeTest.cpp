#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/Formatters/ClockTimeCodeFormatter.h"
#include "Oru/TimePoints/Core/Parsers/ClockTimeCodeParser.h"

#include "support/Prelude.h"

#include <ctime>

// Time codes: counting, building, and the texts of them.
namespace Oru::TimePoints {
namespace {

std::tm DateOf(int64_t daysSince1900) {
  const std::time_t midnight = (daysSince1900 - 25567) * 86400;
  std::tm date{};
  gmtime_r(&midnight, &date);
  return date;
}

TimeCodeBuilder At(int64_t rate, bool drop = false) {
  return TimeCodeBuilder().Rate(Rate(rate, 1)).IsDrop(drop);
}

struct Frame {
  int hour, minute, second, sample;
  int64_t framesBefore;
};

/// Counts the frames of a day one by one as a clock shows them, without the numbers that don't exist.
void ExpectThatFieldsAndCountAgree(int rate, bool drop) {
  std::vector<Frame> frames;
  int64_t framesPerDay = 0;
  for (int shown = 0; shown < 24 * 3600 * rate; ++shown) {
    const int seconds = shown / rate, second = seconds % 60, minute = seconds / 60 % 60,
              sample = shown % rate;
    if (drop && minute % 10 != 0 && second == 0 && sample < (rate == 30 ? 2 : 4)) continue;
    const bool isMinuteEdge = (second == 0 && sample < 6) || (second == 59 && sample >= rate - 2);
    if (isMinuteEdge || framesPerDay % 9973 == 0)
      frames.push_back({seconds / 3600, minute, second, sample, framesPerDay});
    ++framesPerDay;
  }
  const int64_t leapDay = 36583, daysUntil2262 = 132218;
  ASSERT_EQ(DateOf(leapDay).tm_mday, 29);
  ASSERT_EQ(DateOf(daysUntil2262 - 1).tm_year + 1900, UntilYear);
  std::vector<std::pair<int64_t, Frame>> cases = {{daysUntil2262 - 1, frames.back()}};
  for (const Frame& frame : frames)
    cases.emplace_back(leapDay, frame);
  for (int64_t day = 0; day < daysUntil2262; day += day % 365 < 62 ? 1 : 13) {
    for (const int64_t pick : {int64_t{0}, day, day * 9973})
      cases.emplace_back(day, frames[static_cast<std::size_t>(pick) % frames.size()]);
  }
  ClockTimeCodeParser parser(Rate(rate, 1));
  for (const auto& [day, frame] : cases) {
    const std::tm date = DateOf(day);
    const int64_t total = day * framesPerDay + frame.framesBefore;
    const TimeCode counted = At(rate, drop).Year(1900).Build() + total;
    const TimeCode built = At(rate, drop)
                               .Date(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday)
                               .ClockTime(frame.hour, frame.minute, frame.second, frame.sample)
                               .Build();
    ASSERT_EQ(built.TotalSample(), total);
    ASSERT_EQ(counted, built);
    ASSERT_EQ(TimeCode::Parse(counted.ToString(ClockTimeCodeFormatter()), parser), counted);
    ASSERT_EQ(std::tuple(counted.Year(), counted.Month(), counted.Day(), counted.Hour(), counted.Minute(),
                         counted.Second(), counted.Sample()),
              std::tuple(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday, frame.hour, frame.minute,
                         frame.second, frame.sample));
  }
}

TEST(TimeCodeTest, FieldsAndCountAgree) {
  for (const int rate : {24, 25, 30, 48, 50, 60, 120})
    ASSERT_NO_FATAL_FAILURE(ExpectThatFieldsAndCountAgree(rate, false)) << rate;
  for (const int rate : {30, 60})
    ASSERT_NO_FATAL_FAILURE(ExpectThatFieldsAndCountAgree(rate, true)) << rate;
}

constexpr int64_t highest = std::numeric_limits<int64_t>::max();

TEST(TimeCodeTest, MovesBySamplesButNotBefore1900) {
  const TimeCode start = At(60, true).ClockTime(1, 2, 3, 4).Build();
  EXPECT_EQ(start.AddSample(-start.TotalSample()).TotalSample(), 0);
  EXPECT_TRUE(start.AddSample(5).IsDrop() && !start.AddSample(5).HasDate());
  EXPECT_EQ(start.SubstractSample(-5) - start, 5);
  EXPECT_THAT(
      [&] { start.AddSample(-start.TotalSample() - 1); },
      testing::ThrowsMessage<std::out_of_range>("New TotalSample -1 must be positive (after 1/1/1900) "));
  TimeCode moving;
  EXPECT_TRUE(moving++ == TimeCode() && ++moving == TimeCode() + 2);
  EXPECT_TRUE(moving-- == TimeCode() + 2 && --moving == TimeCode());
  EXPECT_THROW(--moving, std::out_of_range);
  EXPECT_THROW(moving -= std::numeric_limits<int64_t>::min(), std::out_of_range);
  EXPECT_TRUE(moving.IsEmpty());
  moving += highest;
  EXPECT_THROW(++moving, std::out_of_range);
  EXPECT_FALSE(moving.IsEmpty());
}

TEST(TimeCodeTest, ComparisonIsAboutTheCountAndTheWayOfCounting) {
  const TimeCode plain = At(60).Year(1900).Build(), dropping = At(60, true).Year(1900).Build();
  EXPECT_TRUE(plain != dropping && plain != TimeCode());
  EXPECT_NE(TimeCodeBuilder().Build(), TimeCodeBuilder().Date(1970, 1, 1).Build());
  EXPECT_TRUE(plain < plain + 1 && plain + 1 > plain && plain <= plain && !(plain >= plain + 1));
  EXPECT_THROW(static_cast<void>(plain < dropping), std::invalid_argument);
  EXPECT_THROW(static_cast<void>(plain >= TimeCode()), std::invalid_argument);
  EXPECT_THROW(plain - dropping, std::invalid_argument);
}

TEST(TimeCodeTest, CountsOutsideTheCalendarStillHaveFields) {
  const TimeCode before = TimeCodeBuilder().Year(1900).Sample(-1).Build();
  EXPECT_TRUE(before.Year() == 1899 && before.Sample() == 49);
  EXPECT_EQ((TimeCodeBuilder().Date(2261, 12, 31).ClockTime(23, 59, 59, 49).Build() + 1).Year(), 2262);
  const TimeCode farthest = At(1).Year(1900).Build() + highest;
  EXPECT_THROW(farthest.Year(), std::out_of_range);
  EXPECT_EQ(farthest.Second(), highest % 60);
  EXPECT_THROW(At(0).Sample(-1).Build().Hour(), std::out_of_range);
  EXPECT_THROW(CalendarTools::DayPerMonth(2000, 0), std::out_of_range);
  EXPECT_THROW(CalendarTools::DayPerMonth(2000, 13), std::out_of_range);
}

std::string FaultOf(const TimeCodeBuilder& builder) {
  try {
    builder.Build();
  } catch (const std::out_of_range& fault) {
    return fault.what();
  }
  return "none";
}

TEST(TimeCodeBuilderTest, TheFirstFaultIsNamed) {
  const std::pair<TimeCodeBuilder, std::string> cases[] = {
      {At(50).Year(1899), "year 1899 must be between 1900 and 2261"},
      {At(50).Year(2262), "year 2262 must be between 1900 and 2261"},
      {At(50).Year(2261), "none"},
      {At(50).Month(13), "month 13 must be between 1 and 12"},
      {At(50).Date(1900, 2, 29), "day 29is negative or greater than 28 in month 2"},
      {At(50).Day(0), "day 0is negative or greater than 31 in month 1"},
      {At(50).Hour(24), "hour 24 must be between 0 and 23"},
      {At(50).Minute(60), "minute 60 must be between 0 and 59"},
      {At(50).Second(-7), "second -7 must be between 0 and 59"},
      {TimeCodeBuilder().Rate(Rate(30000, 1001)), "Denominator 1001 must be between equals to 1"},
      {At(25).Sample(25), "Sample 25 is greater than numerator ratio 25"},
      {At(25).Sample(-3), "none"},
      {At(30, true).Minute(1).Sample(1), "In dropped TimeCode, this value doesn't exist 1:0;1"},
      {At(30, true).Minute(59).Sample(-1), "In dropped TimeCode, this value doesn't exist 59:0;-1"},
      {At(60, true).Minute(1).Sample(3), "In dropped TimeCode, this value doesn't exist 1:0;3"},
      {At(25, true), "Rate 25 / 1 is not compatible with drop TC format"},
      {At(25, true).Date(1, 0, 0).ClockTime(99, 99, 99, 99), "year 1 must be between 1900 and 2261"},
      {At(std::numeric_limits<int64_t>::max()), "The number of samples does not fit 64 bits"},
  };
  for (const auto& [builder, fault] : cases) {
    EXPECT_EQ(FaultOf(builder), fault);
    EXPECT_EQ(builder.IsValidToBuild(), fault == "none") << fault;
  }
}

TEST(TimeCodeBuilderTest, YearAndDateGiveADateMonthAndDayDoNot) {
  EXPECT_EQ(TimeCodeBuilder().Month(2).Day(3).Build(), TimeCodeBuilder().Build());
  EXPECT_TRUE(!TimeCodeBuilder().Build().HasDate() && TimeCodeBuilder().Year(2000).Build().HasDate());
}

}  // namespace
}  // namespace Oru::TimePoints
