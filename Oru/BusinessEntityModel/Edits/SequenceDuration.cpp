#include "Oru/BusinessEntityModel/Edits/SequenceDuration.h"

namespace Oru::BusinessEntityModel::Edits {

SequenceDuration::SequenceDuration() = default;
SequenceDuration::SequenceDuration(const TimePoints::Duration& length) : duration(length), fixed(true) {}

bool SequenceDuration::operator==(const SequenceDuration& other) const {
  return duration == other.duration && fixed == other.fixed;
}

bool SequenceDuration::operator<(const SequenceDuration& other) const {
  if (duration != other.duration) return duration.CompareTo(other.duration) < 0;
  return !fixed && other.fixed;
}

}  // namespace Oru::BusinessEntityModel::Edits
