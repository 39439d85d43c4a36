#include "Oru/TimePoints/Core/CalendarTools.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>

namespace Oru::TimePoints {
namespace {

// Every day from 1677 to 2262, where time points and time codes live, against the C library's calendar.
TEST(CalendarToolsTest, DaysAndDatesAgreeWithTheSystemsCalendar) {
  for (int64_t day = -81500; day < 132600; ++day) {
    const std::time_t midnight = (day - CalendarTools::UnixEpochDay) * 86400;
    std::tm expected{};
    gmtime_r(&midnight, &expected);
    const CalendarDate date = CalendarTools::DateOfDay(day);
    ASSERT_EQ(date.year, expected.tm_year + 1900) << day;
    ASSERT_EQ(date.month, expected.tm_mon + 1) << day;
    ASSERT_EQ(date.day, expected.tm_mday) << day;
    ASSERT_EQ(CalendarTools::DaysSince1900(static_cast<int>(date.year), date.month, date.day), day);
  }
}

TEST(CalendarToolsTest, EveryDayHasADateAndOnlyTwelveMonthsHaveDays) {
  EXPECT_GT(CalendarTools::DateOfDay(std::numeric_limits<int64_t>::max()).year, 25252734927760000);
  EXPECT_LT(CalendarTools::DateOfDay(std::numeric_limits<int64_t>::min()).year, -25252734927760000);
  EXPECT_THROW(CalendarTools::DayPerMonth(2000, 0), std::out_of_range);
  EXPECT_THROW(CalendarTools::DayPerMonth(2000, 13), std::out_of_range);
}

}  // namespace
}  // namespace Oru::TimePoints
