#pragma once

#include "Oru/TimePoints/Core/Formatters/TextParts.h"
#include "Oru/TimePoints/Core/Formatters/TimeCodeFormatter.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <cstdint>
#include <string>

namespace Oru::TimePoints {

/// Writes a time code as `HH:MM:SS:FF`, in drop-frame counting as `HH:MM:SS;FF`; a date goes before it. The
/// frames have two digits, or three where the rate goes past 100.
///
/// | Time code | Text |
/// |---|---|
/// | 25/1, clock only | `10:00:00:12` |
/// | 30/1 drop, clock only | `10:01:00;02` |
/// | 50/1 with a date | `2024-02-29 10:00:00:49` |
/// | 120/1, clock only | `10:00:00:007` |
///
/// `ClockTimeCodeParser` of the same rate reads back all that `TimeCodeBuilder` builds from a frame number
/// that isn't negative. Beyond that, text says less than a count: a time code without a date that was carried
/// past midnight shows the clock of its day, and a year outside 1900 to 2261 is shown though no parser takes
/// it. Throws `std::out_of_range` as the fields of `TimeCode` do.
class ClockTimeCodeFormatter : public TimeCodeFormatter {
 public:
  std::string Format(const TimeCode& value) const override {
    const std::string date =
        value.HasDate() ? TextParts::DateText({value.Year(), value.Month(), value.Day()}) + " " : "";
    return date + Field(value.Hour()) + ":" + Field(value.Minute()) + ":" + Field(value.Second()) +
           (value.IsDrop() ? ";" : ":") + Field(value.Sample(), FrameDigits(value.Rate()));
  }

 private:
  static std::string Field(int32_t value, size_t width = 2) {
    return TextParts::Digits(static_cast<uint64_t>(value), width);
  }

  static size_t FrameDigits(const Rate& rate) {
    const size_t digits = std::to_string(rate.Numerator() - 1).size();
    return digits < 2 ? 2 : digits;
  }
};

}  // namespace Oru::TimePoints
