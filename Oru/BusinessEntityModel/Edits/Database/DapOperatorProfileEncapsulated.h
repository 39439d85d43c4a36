#pragma once

#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>

namespace Oru::BusinessEntityModel::Edits::Database {

/// What `DapOperatorProfileTable` writes: the operator's profile of a sequence beside the sequence's key. The
/// profile stays the caller's.
struct ORU_DATAMODEL_DATABASE_EXPORT DapOperatorProfileEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  DapOperatorProfileEncapsulated(int64_t sequenceKey, DapOperatorMetadataProfile& ownedProfile)
      : sequenceFk(sequenceKey), profile(ownedProfile) {}

  /// The key of the owner.
  int64_t sequenceFk;
  /// What is stored. The table that stores it sets its object id.
  const DapOperatorMetadataProfile& profile;
};

}  // namespace Oru::BusinessEntityModel::Edits::Database
