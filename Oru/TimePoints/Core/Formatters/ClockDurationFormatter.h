#pragma once

#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/Formatters/DurationFormatter.h"
#include "Oru/TimePoints/Core/Formatters/TextParts.h"

#include <cstdint>
#include <string>

namespace Oru::TimePoints {

/// Writes a duration as `[-]HH:MM:SS.nnnnnnnnn`, the hours with as many digits as it takes.
///
/// | Duration | Text |
/// |---|---|
/// | 90 minutes and 20 ms | `01:30:00.020000000` |
/// | one nanosecond backwards | `-00:00:00.000000001` |
/// | `Duration::MaxValue()` | `2562047:47:16.854775807` |
class ClockDurationFormatter : public DurationFormatter {
 public:
  std::string Format(const Duration& value) const override {
    const auto nanoseconds = static_cast<uint64_t>(value.ToNanoseconds());
    const bool backwards = value.ToNanoseconds() < 0;
    return backwards ? "-" + TextParts::ClockText(0 - nanoseconds) : TextParts::ClockText(nanoseconds);
  }
};

}  // namespace Oru::TimePoints
