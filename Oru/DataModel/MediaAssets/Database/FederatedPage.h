#pragma once

#include "Oru/DataModel/MediaAssets/Database/FederatedAsset.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// What a search over several files found.
struct FederatedPage {
  /// A file that didn't answer.
  struct Silence {
    /// Its place in the list of the `MediaAssetFederation`.
    std::size_t file = 0;
    /// Why, in SQLite's words as far as they go.
    std::string reason;
  };

  /// The assets of the page, in the order asked for.
  std::vector<FederatedAsset> assets;
  /// How many assets the search finds in the files that answered, without regard to the page.
  int64_t total = 0;
  /// The files that didn't answer, in the order of the list. Page and total are without them.
  std::vector<Silence> silent;
};

}  // namespace Oru::DataModel::MediaAssets::Database
