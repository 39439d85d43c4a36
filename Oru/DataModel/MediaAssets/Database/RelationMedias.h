#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// The link of an asset to a media resource: the keys of their rows.
struct ORU_DATAMODEL_DATABASE_EXPORT RelationMedias {
  /// Keys of the two rows; -1 for none:
  int64_t mediaAsset = -1;
  int64_t mediaResource = -1;
};

}  // namespace Oru::DataModel::MediaAssets::Database
