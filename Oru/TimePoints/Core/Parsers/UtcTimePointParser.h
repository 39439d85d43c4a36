#pragma once

#include "Oru/TimePoints/Core/CalendarTools.h"
#include "Oru/TimePoints/Core/Int128.h"
#include "Oru/TimePoints/Core/Parsers/TextReader.h"
#include "Oru/TimePoints/Core/Parsers/TimePointParser.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <cstdint>
#include <string>

namespace Oru::TimePoints {

/// Reads a time point from `YYYY-MM-DDTHH:MM:SS.nnnnnnnnnZ`, what `UtcTimePointFormatter` writes. The
/// fraction has one to nine digits, or is left out with its point: `2024-02-29T10:00:00Z`. Only UTC is taken,
/// and no leap second.
class UtcTimePointParser : public TimePointParser {
 public:
  TimePoint Parse(const std::string& text) override {
    TextReader reader(text, "a time point YYYY-MM-DDTHH:MM:SS.nnnnnnnnnZ");
    const int64_t day = TakeDay(reader);
    reader.Take('T');
    const Int128 sinceMidnight = reader.Clock(2);
    if (sinceMidnight >= nanosecondsPerDay) reader.Fail("hour is above 23");
    reader.Take('Z');
    reader.End();
    return TimePoint::FromNanoseconds(reader.Narrow(day * nanosecondsPerDay + sinceMidnight));
  }

 private:
  static constexpr Int128 nanosecondsPerDay = 86400000000000;

  /// Days since 1970.
  static int64_t TakeDay(TextReader& reader) {
    const int year = static_cast<int>(reader.Digits(4, 4));
    reader.Take('-');
    const int month = reader.TwoDigits();
    reader.Take('-');
    const int day = reader.TwoDigits();
    if (month < 1 || month > 12) reader.Fail("month " + std::to_string(month) + " is not in the year");
    if (day < 1 || day > CalendarTools::DayPerMonth(year, month)) {
      reader.Fail("day " + std::to_string(day) + " is not in the month");
    }
    return CalendarTools::DaysSince1900(year, month, day) - CalendarTools::UnixEpochDay;
  }
};

}  // namespace Oru::TimePoints
