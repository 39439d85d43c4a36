#pragma once

#include "Oru/TimePoints/Core/TimeCode.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <memory>

namespace Oru::DataModel::MediaAssets {

/// An instant at which the time code of an essence starts or jumps: from there on it counts from `timeCode`.
class TimeCodeJump {
 public:
  TimeCodeJump() = default;
  /// @param instant  where the time code jumps
  /// @param code     what it jumps to
  TimeCodeJump(const TimePoints::TimePoint& instant, const TimePoints::TimeCode& code)
      : timePoint(instant), timeCode(code) {}

  /// Where the time code jumps.
  const TimePoints::TimePoint& TimePoint() const noexcept { return timePoint; }
  void TimePoint(const TimePoints::TimePoint& value) noexcept { timePoint = value; }
  /// What it jumps to.
  const TimePoints::TimeCode& TimeCode() const noexcept { return timeCode; }
  void TimeCode(const TimePoints::TimeCode& value) noexcept { timeCode = value; }

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<TimeCodeJump> Clone() const { return std::make_unique<TimeCodeJump>(*this); }

  /// The same jump at the same instant.
  bool operator==(const TimeCodeJump& other) const {
    return timePoint == other.timePoint && timeCode == other.timeCode;
  }
  bool operator!=(const TimeCodeJump& other) const { return !(*this == other); }
  /// By instant.
  bool operator<(const TimeCodeJump& other) const { return timePoint < other.timePoint; }

 private:
  TimePoints::TimePoint timePoint;
  TimePoints::TimeCode timeCode;
};

}  // namespace Oru::DataModel::MediaAssets
