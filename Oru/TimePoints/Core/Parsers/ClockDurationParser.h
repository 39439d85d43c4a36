#pragma once

#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/Int128.h"
#include "Oru/TimePoints/Core/Parsers/DurationParser.h"
#include "Oru/TimePoints/Core/Parsers/TextReader.h"

#include <string>

namespace Oru::TimePoints {

/// Reads a duration from `[-]HH:MM:SS.nnnnnnnnn`, what `ClockDurationFormatter` writes. The hours have two
/// digits or more; the fraction has one to nine digits, or is left out with its point: `00:00:01.5`,
/// `-100:00:00`.
class ClockDurationParser : public DurationParser {
 public:
  Duration Parse(const std::string& text) override {
    TextReader reader(text, "a duration [-]HH:MM:SS.nnnnnnnnn");
    const bool backwards = reader.TakeIf('-');
    const Int128 nanoseconds = reader.Clock(longestHours);
    reader.End();
    return Duration::FromNanoseconds(reader.Narrow(backwards ? -nanoseconds : nanoseconds));
  }

 private:
  /// Room for zeros in front of the seven digits that a duration can have.
  static constexpr size_t longestHours = 18;
};

}  // namespace Oru::TimePoints
