#pragma once

#include "Oru/TimePoints/Core/CalendarDate.h"
#include "Oru/TimePoints/Core/CheckedArithmetic.h"

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

/// The first and the last year of a time code.
inline constexpr int SinceYear = 1900;
inline constexpr int UntilYear = 2261;

/// The Gregorian calendar. Days are numbered from 1 January 1900, which is day 0.
///
/// Threads: all operations may be called from different threads at once.
namespace CalendarTools {

/// The number of 1 January 1970.
inline constexpr int64_t UnixEpochDay = 25567;

/// Whether the year has a 29th of February by the rule of the Gregorian calendar.
inline bool LeapYear(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// Throws `std::out_of_range` if `month` is outside 1 to 12.
inline int DayPerMonth(int year, int month) {
  static constexpr std::array<std::array<int, 12>, 2> days = {
      {{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31}, {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31}}};
  if (month < 1 || month > 12) {
    throw std::out_of_range("month " + std::to_string(month) + " must be between 1 and 12");
  }
  return days[LeapYear(year) ? 1 : 0][static_cast<size_t>(month - 1)];
}

/// The number of a day, negative before 1900. The day of the month is not checked; `month` is, as above.
inline int64_t DaysSince1900(int year, int month, int day) {
  const auto leapDaysBefore = [](int64_t firstOfYear) {
    const int64_t last = firstOfYear - 1;
    return CheckedArithmetic::FloorDivide<int64_t>(last, 4) -
           CheckedArithmetic::FloorDivide<int64_t>(last, 100) +
           CheckedArithmetic::FloorDivide<int64_t>(last, 400);
  };
  int64_t days = (int64_t{year} - SinceYear) * 365 + leapDaysBefore(year) - leapDaysBefore(SinceYear);
  for (int earlier = 1; earlier < month; ++earlier)
    days += DayPerMonth(year, earlier);
  return days + day - 1;
}

/// The date of a numbered day, the inverse of `DaysSince1900`.
inline CalendarDate DateOfDay(int64_t daysSince1900) {
  // The calendar repeats every 400 years.
  constexpr int64_t daysPerCycle = 146097;
  const int64_t cycle = CheckedArithmetic::FloorDivide(daysSince1900, daysPerCycle);
  const int64_t dayOfCycle = CheckedArithmetic::FloorRemainder(daysSince1900, daysPerCycle);

  // Years of 365 days guess a year too late at most: a cycle has only 97 leap days.
  int year = SinceYear + static_cast<int>(dayOfCycle / 365);
  if (DaysSince1900(year, 1, 1) > dayOfCycle) --year;

  int day = static_cast<int>(dayOfCycle - DaysSince1900(year, 1, 1)) + 1;
  int month = 1;
  for (; day > DayPerMonth(year, month); ++month)
    day -= DayPerMonth(year, month);
  return {year + cycle * 400, month, day};
}

}  // namespace CalendarTools
}  // namespace Oru::TimePoints
