#pragma once

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets {

/// What the angle groups' operator table writes: the operator identity of a group beside the group's key.
/// The profile stays the caller's.
struct ORU_DATAMODEL_EXPORT AnglesDapMetadataEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  AnglesDapMetadataEncapsulated(int64_t groupKey, AnglesDapOperatorMetadataProfile& profile)
      : fk(groupKey), metadata(profile) {}

  /// The key of the owner.
  int64_t fk;
  /// What is stored. The table that stores it sets its object id.
  const AnglesDapOperatorMetadataProfile& metadata;
};

}  // namespace Oru::DataModel::MediaAssets
