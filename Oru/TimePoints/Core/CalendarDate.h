#pragma once

#include <cstdint>

namespace Oru::TimePoints {

/// A day of the Gregorian calendar, which is carried on before its introduction.
struct CalendarDate {
  /// The year, which may be 0 or negative.
  int64_t year = 0;
  /// 1 to 12.
  int month = 1;
  /// 1 to the days of the month.
  int day = 1;
};

}  // namespace Oru::TimePoints
