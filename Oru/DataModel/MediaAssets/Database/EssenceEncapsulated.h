#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Essence.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What the essence tables write: an essence beside the key of the stream that it belongs to.
/// The essence stays the caller's.
///
/// Threads: a value belongs to one thread at a time; distinct values are independent.
struct ORU_DATAMODEL_DATABASE_EXPORT EssenceEncapsulated {
  EssenceEncapsulated(int64_t streamKey, Essence& ownedEssence) : fk(streamKey), essence(ownedEssence) {}

  int64_t fk;
  Essence& essence;
};

}  // namespace Oru::DataModel::MediaAssets::Database
