#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorSharedPointer.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/TimeCodeJump.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// One time code of an essence, under a name, as the jumps that it makes. Not stored.
///
/// A copy shares the jumps with its original; `Clone` has its own.
class ORU_DATAMODEL_EXPORT TimeCodeTable {
 public:
  /// The jumps in the order of time.
  using Jumps = BaseTypes::SortedVectorSharedPointer<TimeCodeJump>;

  TimeCodeTable() = default;
  /// A table of that name without jumps.
  explicit TimeCodeTable(BaseTypes::FullyQualifiedName name) : fullyQualifiedName(std::move(name)) {}

  /// The name of the table.
  const BaseTypes::FullyQualifiedName& FullyQualifiedName() const noexcept { return fullyQualifiedName; }
  void FullyQualifiedName(BaseTypes::FullyQualifiedName value) noexcept {
    fullyQualifiedName = std::move(value);
  }

  /// In order of time.
  const Jumps& TimeCodeJumps() const noexcept { return timeCodeJumps; }
  Jumps& TimeCodeJumps() noexcept { return timeCodeJumps; }

  /// The jump that is in force at an instant: the last one at or before it. Null before the first.
  std::shared_ptr<const TimeCodeJump> JumpAt(const TimePoints::TimePoint& instant) const;

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<TimeCodeTable> Clone() const;

  /// The same name and the same jumps.
  bool operator==(const TimeCodeTable& other) const;
  bool operator!=(const TimeCodeTable& other) const { return !(*this == other); }
  /// By name.
  bool operator<(const TimeCodeTable& other) const noexcept {
    return fullyQualifiedName < other.fullyQualifiedName;
  }

 private:
  BaseTypes::FullyQualifiedName fullyQualifiedName;
  Jumps timeCodeJumps;
};

}  // namespace Oru::DataModel::MediaAssets
