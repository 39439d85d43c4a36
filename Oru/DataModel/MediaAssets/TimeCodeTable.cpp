#include "Oru/DataModel/MediaAssets/TimeCodeTable.h"

#include "Oru/DataModel/MediaAssets/EntityGraph.h"

#include <algorithm>
#include <iterator>

namespace Oru::DataModel::MediaAssets {

std::shared_ptr<const TimeCodeJump> TimeCodeTable::JumpAt(const TimePoints::TimePoint& instant) const {
  const auto next = std::upper_bound(
      timeCodeJumps.begin(), timeCodeJumps.end(), instant,
      [](const TimePoints::TimePoint& left, const auto& right) { return left < right->TimePoint(); });
  return next == timeCodeJumps.begin() ? nullptr : *std::prev(next);
}

std::unique_ptr<TimeCodeTable> TimeCodeTable::Clone() const {
  auto clone = std::make_unique<TimeCodeTable>(*this);
  clone->timeCodeJumps = EntityGraph::CloneElements(timeCodeJumps);
  return clone;
}

bool TimeCodeTable::operator==(const TimeCodeTable& other) const {
  return fullyQualifiedName == other.fullyQualifiedName && timeCodeJumps == other.timeCodeJumps;
}

}  // namespace Oru::DataModel::MediaAssets
