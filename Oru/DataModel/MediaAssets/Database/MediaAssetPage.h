#pragma once

#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <cstdint>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// What a search found.
struct MediaAssetPage {
  /// The assets of the page, in the order asked for.
  std::vector<MediaAsset> assets;
  /// How many assets the search finds without regard to `Limit` and `After`.
  int64_t total = 0;
};

}  // namespace Oru::DataModel::MediaAssets::Database
