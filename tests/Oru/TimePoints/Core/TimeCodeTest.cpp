#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/Formatters/ClockTimeCodeFormatter.h"
#include "Oru/TimePoints/Core/Parsers/ClockTimeCodeParser.h"

#include <gmock/gmock.h>

#include <ctime>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

// Time codes: counting, building, and the texts of them.
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

std::tm DateOf(int64_t daysSince1900) {
  const std::time_t midnight = (daysSince1900 - 25567) * 86400;
  std::tm date{};
  gmtime_r(&midnight, &date);
  return date;
}

/// Expects that the frame has its count on that day, and the count the fields and a text of the frame.
void ExpectAgreement(int64_t day, int64_t framesPerDay, const FrameWalk& frame) {
  const std::tm date = DateOf(day);
  const int64_t total = day * framesPerDay + frame.framesBefore;
  TimeCodeBuilder builder = TimeCodeBuilder().Year(1900).Rate(Rate(frame.rate, 1)).IsDrop(frame.drop);
  const TimeCode counted = builder.Build() + total;
  builder.Date(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday);
  builder.ClockTime(frame.hour, frame.minute, frame.second, frame.sample);
  ASSERT_EQ(builder.Build().TotalSample(), total);
  ClockTimeCodeParser parser(counted.Rate());
  ASSERT_EQ(TimeCode::Parse(counted.ToString(ClockTimeCodeFormatter()), parser), counted);
  ASSERT_EQ(counted, builder.Build());
  ASSERT_EQ(std::tuple(counted.Year(), counted.Month(), counted.Day(), counted.Hour(), counted.Minute(),
                       counted.Second(), counted.Sample()),
            std::tuple(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday, frame.hour, frame.minute,
                       frame.second, frame.sample));
}

void ExpectThatFieldsAndCountAgree(FrameWalk walk) {
  std::vector<FrameWalk> minuteEdges, scattered;
  for (; walk.hour < 24; walk.Step()) {
    const bool afterEdge = walk.second == 0 && walk.sample < 6;
    const bool beforeEdge = walk.second == 59 && walk.sample >= walk.rate - 2;
    if (afterEdge || beforeEdge) minuteEdges.push_back(walk);
    if (walk.framesBefore % 9973 == 0) scattered.push_back(walk);
  }
  const int64_t framesPerDay = walk.framesBefore;

  const int64_t leapDay = 36583;
  ASSERT_EQ(DateOf(leapDay).tm_mday, 29);
  for (const FrameWalk& frame : minuteEdges)
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(leapDay, framesPerDay, frame));

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

TEST(TimeCodeTest, FieldsAndCountAgree) {
  for (const int rate : {24, 25, 30, 48, 50, 60, 120}) {
    ExpectThatFieldsAndCountAgree({rate, false});
    if (rate == 30 || rate == 60) ExpectThatFieldsAndCountAgree({rate, true});
  }
}

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
  EXPECT_TRUE(before.Year() == 1899 && before.Sample() == 49);
  EXPECT_EQ((TimeCodeBuilder().Date(2261, 12, 31).ClockTime(23, 59, 59, 49).Build() + 1).Year(), 2262);
  const TimeCode farthest = TimeCodeBuilder().Rate(Rate(1, 1)).Year(1900).Build() + highest;
  EXPECT_THROW(farthest.Year(), std::out_of_range);
  EXPECT_EQ(farthest.Second(), highest % 60);
  const TimeCode rateless = TimeCodeBuilder().Rate(Rate(0, 1)).Sample(-1).Build();
  EXPECT_THROW(rateless.Hour(), std::out_of_range);
  EXPECT_THROW(CalendarTools::DayPerMonth(2000, 0), std::out_of_range);
  EXPECT_THROW(CalendarTools::DayPerMonth(2000, 13), std::out_of_range);
}

TimeCodeBuilder At(int64_t rate, bool drop = false) {
  return TimeCodeBuilder().Rate(Rate(rate, 1)).IsDrop(drop);
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
  const struct {
    TimeCodeBuilder builder;
    const char* fault;
  } cases[] = {
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
  for (const auto& c : cases) {
    EXPECT_EQ(FaultOf(c.builder), c.fault);
    EXPECT_EQ(c.builder.IsValidToBuild(), std::string(c.fault) == "none") << c.fault;
  }
}

TEST(TimeCodeBuilderTest, YearAndDateGiveADateMonthAndDayDoNot) {
  EXPECT_EQ(TimeCodeBuilder().Month(2).Day(3).Build(), TimeCodeBuilder().Build());
  EXPECT_TRUE(!TimeCodeBuilder().Build().HasDate() && TimeCodeBuilder().Year(2000).Build().HasDate());
  EXPECT_TRUE(TimeCodeBuilder().Date(2000, 1, 1).Build().HasDate());
}

// The texts of the fields are those of numbers; what counts is which of them are read.
TEST(TimeCodeTest, TextForms) {
  const std::pair<TimeCode, std::string> cases[] = {
      {At(25).ClockTime(10, 0, 0, 12).Build(), "10:00:00:12"},
      {At(30, true).ClockTime(10, 1, 0, 2).Build(), "10:01:00;02"},
      {At(50).Date(2024, 2, 29).ClockTime(10, 0, 0, 49).Build(), "2024-02-29 10:00:00:49"},
      {At(120).ClockTime(23, 59, 59, 7).Build(), "23:59:59:007"},
      {TimeCode(), "1900-01-01 00:00:00:00"},
  };
  for (const auto& [timeCode, text] : cases) {
    EXPECT_EQ(timeCode.ToString(ClockTimeCodeFormatter()), text);
    ClockTimeCodeParser parser(timeCode.Rate());
    EXPECT_EQ(TimeCode::Parse(text, parser), timeCode) << text;
  }
  ClockTimeCodeParser thirty(VideoRates::Rate30()), fifty(VideoRates::Rate50());
  EXPECT_EQ(thirty.Parse("2024-02-29T10:00:00;12"), thirty.Parse("2024-02-29 10:00:00;12"));
  EXPECT_FALSE(fifty.IsStringFormatValid("00:00:00;00"));
  for (const std::string text :
       {"", "10:00:00", "10:00:00:1", "1:00:00:00", "24:00:00:00", "00:60:00:00", "00:00:60:00",
        "00:00:00:30", "00:01:00;01", "00;00:00:00", "00:00:00.00", "00:00:00:00 ", "2262-01-01 00:00:00:00",
        "2023-02-29 00:00:00:00", "2024-02-29  00:00:00:00", "2024-02-29", "00:00:00:0000000000"}) {
    EXPECT_FALSE(thirty.IsStringFormatValid(text)) << text;
    EXPECT_EQ(thirty.TryParse(text), std::pair(false, TimeCode())) << text;
    EXPECT_THROW(thirty.Parse(text), std::invalid_argument) << text;
  }
}

}  // namespace
}  // namespace Oru::TimePoints
