#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"

#include "Oru/TimePoints/Core/TimePoint.h"

#include <algorithm>

namespace Oru::DataModel::MediaAssets {

using TimePoints::Duration;
using TimePoints::TimeBoundary;
using TimePoints::TimeBounds;
using TimePoints::TimePoint;

namespace {

bool IsSet(const TimeBoundary& boundary) {
  return boundary.TimePoint() != TimePoint::Empty();
}

TimePoint EndOf(const TimeBounds& bounds) {
  return IsSet(bounds.OutBoundary()) ? bounds.OutBoundary().TimePoint() : TimePoint::MaxValue();
}

bool AreInOrder(const TimeBoundary& in, const TimeBoundary& out) {
  return !IsSet(in) || !IsSet(out) || in.TimePoint() <= out.TimePoint();
}

/// An in boundary that isn't set is the earliest instant but one: it needs no case of its own.
bool Contains(const TimeBounds& bounds, const TimePoint& instant) {
  return bounds.InBoundary().TimePoint() <= instant && instant <= EndOf(bounds);
}

}  // namespace

Duration TimeBoundsArray::GetDuration() const {
  Duration total;
  TimePoint counted = TimePoint::MinValue();
  for (const TimeBounds& bounds : *this) {
    if (!IsSet(bounds.InBoundary()) || !IsSet(bounds.OutBoundary())) continue;
    const TimePoint from = std::max(counted, bounds.InBoundary().TimePoint());
    const TimePoint to = bounds.OutBoundary().TimePoint();
    if (to <= from) continue;
    total += to - from;
    counted = to;
  }
  return total;
}

TimeBoundary TimeBoundsArray::EffectiveIn() const {
  if (IsSet(inBoundary) || Empty()) return inBoundary;
  return Front().InBoundary();
}

TimeBoundary TimeBoundsArray::EffectiveOut() const {
  if (IsSet(outBoundary) || Empty()) return outBoundary;
  const auto latest = std::max_element(begin(), end(), [](const TimeBounds& left, const TimeBounds& right) {
    return EndOf(left) < EndOf(right);
  });
  return latest->OutBoundary();
}

Duration TimeBoundsArray::GetInOutDuration() const {
  return EffectiveOut() - EffectiveIn();
}

bool TimeBoundsArray::HasOverlappingTimeBounds() const {
  // In order of their beginnings, bounds that overlap any others overlap a neighbour.
  const auto overlaps = [](const TimeBounds& left, const TimeBounds& right) {
    return right.InBoundary().TimePoint() < EndOf(left);
  };
  return std::adjacent_find(begin(), end(), overlaps) != end();
}

bool TimeBoundsArray::IsOutOfTimeBounds(const TimeBoundary& mark) const {
  return IsSet(mark) && std::none_of(begin(), end(), [&mark](const TimeBounds& bounds) {
           return Contains(bounds, mark.TimePoint());
         });
}

bool TimeBoundsArray::IsInOutOfTimeBounds() const {
  return IsOutOfTimeBounds(inBoundary);
}

bool TimeBoundsArray::IsOutOutOfTimeBounds() const {
  return IsOutOfTimeBounds(outBoundary);
}

bool TimeBoundsArray::AreMarksInOrder() const {
  return AreInOrder(inBoundary, outBoundary);
}

bool TimeBoundsArray::IsInValid() const {
  return !IsInOutOfTimeBounds() && AreMarksInOrder();
}

bool TimeBoundsArray::IsOutValid() const {
  return !IsOutOutOfTimeBounds() && AreMarksInOrder();
}

bool TimeBoundsArray::IsValid() const {
  const bool areBoundsInOrder = std::all_of(begin(), end(), [](const TimeBounds& bounds) {
    return AreInOrder(bounds.InBoundary(), bounds.OutBoundary());
  });
  return areBoundsInOrder && !HasOverlappingTimeBounds() && IsInValid() && IsOutValid();
}

bool TimeBoundsArray::operator==(const TimeBoundsArray& other) const {
  return SortedVectorBase::operator==(other) && inBoundary == other.inBoundary &&
         outBoundary == other.outBoundary;
}

}  // namespace Oru::DataModel::MediaAssets
