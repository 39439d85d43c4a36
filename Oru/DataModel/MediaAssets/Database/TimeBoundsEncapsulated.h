#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/TimePoints/Core/TimeBounds.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What `TimeBoundsTable` writes: bounds beside the key of their owner. Alive for one save; the bounds
/// stay the caller's.
struct ORU_DATAMODEL_DATABASE_EXPORT TimeBoundsEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  TimeBoundsEncapsulated(int64_t ownerKey, const TimePoints::TimeBounds& ownedBounds)
      : fk(ownerKey), bounds(ownedBounds) {}

  /// The key of the owner.
  int64_t fk;
  /// What is stored.
  const TimePoints::TimeBounds& bounds;
};

}  // namespace Oru::DataModel::MediaAssets::Database
