#pragma once

#include "Oru/TimePoints/Core/TimeBounds.h"

namespace Oru::DataModel::MediaAssets {

/// Orders bounds by the instant of the in boundary, and by that of the out boundary where those are the same.
/// The moving flags play no part.
struct TimeBoundsCompareLess {
  /// Whether `left < right`.
  bool operator()(const TimePoints::TimeBounds& left, const TimePoints::TimeBounds& right) const {
    const TimePoints::TimePoint& leftIn = left.InBoundary().TimePoint();
    const TimePoints::TimePoint& rightIn = right.InBoundary().TimePoint();
    if (leftIn != rightIn) return leftIn < rightIn;
    return left.OutBoundary().TimePoint() < right.OutBoundary().TimePoint();
  }
};

}  // namespace Oru::DataModel::MediaAssets
