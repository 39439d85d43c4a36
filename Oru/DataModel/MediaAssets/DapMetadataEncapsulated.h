#pragma once

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets {

/// What the operator metadata table writes: the operator's profile of a clip beside the key of its asset.
/// The profile stays the caller's.
struct ORU_DATAMODEL_EXPORT DapMetadataEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  DapMetadataEncapsulated(int64_t mediaAssetKey, DapOperatorMetadataProfile& profile)
      : fk(mediaAssetKey), metadata(profile) {}

  /// The key of the owner.
  int64_t fk;
  /// What is stored. The table that stores it sets its object id.
  const DapOperatorMetadataProfile& metadata;
};

}  // namespace Oru::DataModel::MediaAssets
