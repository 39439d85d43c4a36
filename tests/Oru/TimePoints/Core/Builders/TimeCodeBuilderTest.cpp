#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include <gtest/gtest.h>

#include <limits>

namespace Oru::TimePoints {
namespace {

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
      {At(50).Date(2000, 2, 29), "none"},
      {At(50).Day(0), "day 0is negative or greater than 31 in month 1"},
      {At(50).Hour(24), "hour 24 must be between 0 and 23"},
      {At(50).Minute(60), "minute 60 must be between 0 and 59"},
      {At(50).Second(-7), "second -7 must be between 0 and 59"},
      {TimeCodeBuilder().Rate(Rate(30000, 1001)), "Denominator 1001 must be between equals to 1"},
      {TimeCodeBuilder().Rate(Rate(50, -1)), "Denominator -1 must be between equals to 1"},
      {At(25).Sample(25), "Sample 25 is greater than numerator ratio 25"},
      {At(25).Sample(-3), "none"},
      {At(30, true).Minute(1).Sample(1), "In dropped TimeCode, this value doesn't exist 1:0;1"},
      {At(30, true).Minute(59).Sample(-1), "In dropped TimeCode, this value doesn't exist 59:0;-1"},
      {At(30, true).Minute(1).Sample(2), "none"},
      {At(30, true).Minute(10), "none"},
      {At(60, true).Minute(1).Sample(3), "In dropped TimeCode, this value doesn't exist 1:0;3"},
      {At(60, true).Minute(1).Sample(4), "none"},
      {At(25, true), "Rate 25 / 1 is not compatible with drop TC format"},
      {At(25, true).Minute(3).Sample(4), "Rate 25 / 1 is not compatible with drop TC format"},
      {At(25, true).Date(1, 0, 0).ClockTime(99, 99, 99, 99), "year 1 must be between 1900 and 2261"},
      {At(25, true).Day(32).ClockTime(99, 99, 99, 99), "day 32is negative or greater than 31 in month 1"},
      {At(std::numeric_limits<int64_t>::max()), "The number of samples does not fit 64 bits"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FaultOf(c.builder), c.fault);
    EXPECT_EQ(c.builder.IsValidToBuild(), std::string(c.fault) == "none") << c.fault;
  }
}

TEST(TimeCodeBuilderTest, YearAndDateGiveADateMonthAndDayDoNot) {
  EXPECT_FALSE(TimeCodeBuilder().Month(2).Day(3).Build().HasDate());
  EXPECT_EQ(TimeCodeBuilder().Month(2).Day(3).Build(), TimeCodeBuilder().Build());
  EXPECT_TRUE(TimeCodeBuilder().Year(2000).Build().HasDate());
  EXPECT_TRUE(TimeCodeBuilder().Date(2000, 1, 1).Build().HasDate());
}

}  // namespace
}  // namespace Oru::TimePoints
