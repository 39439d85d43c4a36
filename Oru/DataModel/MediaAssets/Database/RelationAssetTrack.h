#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// The link of an asset to a track: the keys of their rows.
struct ORU_DATAMODEL_DATABASE_EXPORT RelationAssetTrack {
  /// Keys of the two rows; -1 for none:
  int64_t asset = -1;
  int64_t track = -1;
};

}  // namespace Oru::DataModel::MediaAssets::Database
