#pragma once

#include "Oru/TimePoints/Core/CalendarDate.h"

#include <cstdint>
#include <string>

namespace Oru::TimePoints {

/// The pieces that the text forms are put together from.
namespace TextParts {

/// A number that isn't negative, with zeros in front up to `width` digits.
inline std::string Digits(uint64_t value, size_t width) {
  const std::string digits = std::to_string(value);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

/// "YYYY-MM-DD"; the year must not be negative.
inline std::string DateText(const CalendarDate& date) {
  return Digits(static_cast<uint64_t>(date.year), 4) + "-" + Digits(static_cast<uint64_t>(date.month), 2) +
         "-" + Digits(static_cast<uint64_t>(date.day), 2);
}

/// "HH:MM:SS.nnnnnnnnn", with as many digits of hours as it takes.
inline std::string ClockText(uint64_t nanoseconds) {
  constexpr uint64_t perSecond = 1000000000;
  const uint64_t seconds = nanoseconds / perSecond;
  return Digits(seconds / 3600, 2) + ":" + Digits(seconds / 60 % 60, 2) + ":" + Digits(seconds % 60, 2) +
         "." + Digits(nanoseconds % perSecond, 9);
}

}  // namespace TextParts
}  // namespace Oru::TimePoints
