#pragma once

#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/Formatters/TimeBoundsFormatter.h"
#include "Oru/TimePoints/Core/Parsers/TimeBoundsParser.h"
#include "Oru/TimePoints/Core/TimeBoundary.h"
#include "Oru/TimePoints/Core/Visibility.h"

#include <string>

namespace Oru::TimePoints {

/// A stretch of time between two boundaries, each of which may be unset or moving. Nothing asks that the in
/// boundary be the earlier one.
class ORU_TIMEPOINTS_VISIBLE TimeBounds {
 public:
  TimeBounds() = default;
  /// Takes the boundaries as they are; none is checked against the other.
  TimeBounds(const TimeBoundary& in, const TimeBoundary& out) : inBoundary(in), outBoundary(out) {}

  /// Two unset boundaries, as in a default value.
  static TimeBounds Empty() { return TimeBounds(); }

  /// The beginning and the end:
  const TimeBoundary& InBoundary() const { return inBoundary; }
  const TimeBoundary& OutBoundary() const { return outBoundary; }

  /// From in to out, negative if out is the earlier one; zero if a boundary has no instant. Throws
  /// `std::overflow_error` if the span doesn't fit.
  TimePoints::Duration Duration() const { return outBoundary - inBoundary; }

  /// The same boundaries, moving flags included.
  bool operator==(const TimeBounds& other) const {
    return inBoundary == other.inBoundary && outBoundary == other.outBoundary;
  }
  bool operator!=(const TimeBounds& other) const { return !(*this == other); }

  /// The text that the formatter gives.
  std::string ToString(const TimeBoundsFormatter& formatter) const { return formatter.Format(*this); }
  /// Throws `std::invalid_argument` if the parser refuses the text.
  static TimeBounds Parse(const std::string& text, TimeBoundsParser& parser) { return parser.Parse(text); }

 private:
  TimeBoundary inBoundary;
  TimeBoundary outBoundary;
};

}  // namespace Oru::TimePoints
