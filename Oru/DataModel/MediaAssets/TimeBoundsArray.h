#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorBase.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/TimeBoundsCompareEqual.h"
#include "Oru/DataModel/MediaAssets/TimeBoundsCompareLess.h"
#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/TimeBoundary.h"
#include "Oru/TimePoints/Core/TimeBounds.h"

namespace Oru::DataModel::MediaAssets {

/// The stretches of time for which there is material, in order of time, and beside them two marks: the in and
/// the out boundary that were set on it. A mark that isn't set is a default `TimeBoundary`.
///
/// Nothing is checked when bounds go in or marks are set; `IsValid` and its like check afterwards. For all of
/// them a boundary that isn't set leaves its side open, an instant on a boundary lies inside, and the moving
/// flags play no part.
class ORU_DATAMODEL_EXPORT TimeBoundsArray
    : public BusinessEntityModel::BaseTypes::SortedVectorBase<TimePoints::TimeBounds, TimeBoundsCompareLess,
                                                              TimeBoundsCompareEqual> {
 public:
  /// The in mark; a default boundary when it isn't set.
  const TimePoints::TimeBoundary& InBoundary() const noexcept { return inBoundary; }
  void InBoundary(const TimePoints::TimeBoundary& value) noexcept { inBoundary = value; }
  /// The out mark; a default boundary when it isn't set.
  const TimePoints::TimeBoundary& OutBoundary() const noexcept { return outBoundary; }
  void OutBoundary(const TimePoints::TimeBoundary& value) noexcept { outBoundary = value; }

  /// How much material there is: the time inside the bounds, where they overlap counted once, without the
  /// gaps between them. Bounds with an open side, and those that end before they begin, count nothing.
  /// @throws std::overflow_error above 2^63 - 1 nanoseconds
  TimePoints::Duration GetDuration() const;

  /// The time from the in mark to the out mark. Where a mark isn't set, the beginning of the first bounds or
  /// the latest end of any is used instead; if that isn't set either the duration is 0. Negative if out is
  /// before in.
  /// @throws std::overflow_error if the span doesn't fit a `Duration`
  TimePoints::Duration GetInOutDuration() const;

  /// Whether two of the bounds have more than an instant in common.
  bool HasOverlappingTimeBounds() const;

  /// Whether the in mark is set and lies inside none of the bounds. So with any mark where there are no
  /// bounds.
  bool IsInOutOfTimeBounds() const;
  /// The same of the out mark.
  bool IsOutOutOfTimeBounds() const;

  /// Whether the in mark isn't set, or lies inside one of the bounds and not after the out mark.
  bool IsInValid() const;
  /// Whether the out mark isn't set, or lies inside one of the bounds and not before the in mark.
  bool IsOutValid() const;

  /// Whether none of the bounds ends before it begins, no two overlap, and both marks are valid.
  bool IsValid() const;

  /// The same bounds and the same marks.
  bool operator==(const TimeBoundsArray& other) const;
  bool operator!=(const TimeBoundsArray& other) const { return !(*this == other); }

 private:
  TimePoints::TimeBoundary EffectiveIn() const;
  TimePoints::TimeBoundary EffectiveOut() const;
  bool IsOutOfTimeBounds(const TimePoints::TimeBoundary& mark) const;
  bool AreMarksInOrder() const;

  TimePoints::TimeBoundary inBoundary;
  TimePoints::TimeBoundary outBoundary;
};

}  // namespace Oru::DataModel::MediaAssets
