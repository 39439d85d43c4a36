#pragma once

#include "Oru/TimePoints/Core/CalendarTools.h"
#include "Oru/TimePoints/Core/CheckedArithmetic.h"
#include "Oru/TimePoints/Core/Formatters/TextParts.h"
#include "Oru/TimePoints/Core/Formatters/TimePointFormatter.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <cstdint>
#include <string>

namespace Oru::TimePoints {

/// Writes a time point as ISO 8601 in UTC, `YYYY-MM-DDTHH:MM:SS.nnnnnnnnnZ`. Days have 86400 seconds. The
/// unset instant is written as the date that its number means.
///
/// | Time point | Text |
/// |---|---|
/// | 0 | `1970-01-01T00:00:00.000000000Z` |
/// | -1 | `1969-12-31T23:59:59.999999999Z` |
/// | `TimePoint::MaxValue()` | `2262-04-11T23:47:16.854775807Z` |
/// | `TimePoint::Empty()` | `1677-09-21T00:12:43.145224193Z` |
class UtcTimePointFormatter : public TimePointFormatter {
 public:
  std::string Format(const TimePoint& value) const override {
    constexpr int64_t perDay = 86400000000000;
    const int64_t day = CheckedArithmetic::FloorDivide(value.ToNanoseconds(), perDay);
    const int64_t sinceMidnight = CheckedArithmetic::FloorRemainder(value.ToNanoseconds(), perDay);
    return TextParts::DateText(CalendarTools::DateOfDay(day + CalendarTools::UnixEpochDay)) + "T" +
           TextParts::ClockText(static_cast<uint64_t>(sinceMidnight)) + "Z";
  }
};

}  // namespace Oru::TimePoints
