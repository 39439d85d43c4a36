#pragma once

#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/Formatters/TimeBoundaryFormatter.h"
#include "Oru/TimePoints/Core/Parsers/TimeBoundaryParser.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <string>

namespace Oru::TimePoints {

/// One end of a stretch of time. A moving boundary still travels: the out boundary of a recording that runs.
/// A default boundary is unset: it is fixed at `TimePoint::Empty()`.
class TimeBoundary {
 public:
  TimeBoundary() = default;
  /// @param instant  where the boundary lies
  /// @param moving   whether it still moves
  TimeBoundary(const TimePoints::TimePoint& instant, bool moving) : timePoint(instant), isMoving(moving) {}
  /// A boundary that doesn't move.
  TimeBoundary(const TimePoints::TimePoint& instant) : timePoint(instant) {}

  /// The unset boundary, as a default one.
  static TimeBoundary Empty() { return TimeBoundary(); }

  /// Where the boundary lies; the empty time point when it isn't set.
  const TimePoints::TimePoint& TimePoint() const { return timePoint; }
  /// Whether the boundary still moves, as the end of a recording that goes on.
  bool IsMoving() const { return isMoving; }

  /// Same instant and same movement: the flag counts, also between unset boundaries.
  bool operator==(const TimeBoundary& other) const {
    return timePoint == other.timePoint && isMoving == other.isMoving;
  }
  bool operator!=(const TimeBoundary& other) const { return !(*this == other); }

  /// The span from `other` to this boundary; zero if one of them has no instant. Throws
  /// `std::overflow_error` if the span doesn't fit a `Duration`.
  Duration operator-(const TimeBoundary& other) const {
    const TimePoints::TimePoint unset = TimePoints::TimePoint::Empty();
    if (timePoint == unset || other.timePoint == unset) return Duration::Empty();
    return timePoint - other.timePoint;
  }

  /// The text that the formatter gives.
  std::string ToString(const TimeBoundaryFormatter& formatter) const { return formatter.Format(*this); }
  /// Throws `std::invalid_argument` if the parser refuses the text.
  static TimeBoundary Parse(const std::string& text, TimeBoundaryParser& parser) {
    return parser.Parse(text);
  }

 private:
  TimePoints::TimePoint timePoint;
  bool isMoving = false;
};

}  // namespace Oru::TimePoints
