#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Essence.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What the essence tables write: an essence beside the key of the stream that it belongs to.
/// The essence stays the caller's.
struct ORU_DATAMODEL_DATABASE_EXPORT EssenceEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  EssenceEncapsulated(int64_t streamKey, Essence& ownedEssence) : fk(streamKey), essence(ownedEssence) {}

  /// The key of the owner.
  int64_t fk;
  /// What is stored. The table that stores it sets its object id.
  const Essence& essence;
  /// Whether the caller knows that the stream has no essence of that number yet. It isn't looked up then.
  bool isAbsent = false;
};

}  // namespace Oru::DataModel::MediaAssets::Database
