#pragma once

#include "Oru/TimePoints/Core/TimeBounds.h"

namespace Oru::DataModel::MediaAssets {

/// Both instants and both moving flags are the same.
struct TimeBoundsCompareEqual {
  /// Whether `left == right`.
  bool operator()(const TimePoints::TimeBounds& left, const TimePoints::TimeBounds& right) const {
    return left == right;
  }
};

}  // namespace Oru::DataModel::MediaAssets
