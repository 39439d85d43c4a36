#pragma once

#include "Oru/Common/Databases/Sqlite/StatementText.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetOrder.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <cstddef>
#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// An asset that a search over several files found.
struct FederatedAsset {
  /// The place of its file in the list of the `MediaAssetFederation`. Identifiers and object ids are those of
  /// that file.
  std::size_t file = 0;
  /// The asset, the caller's to change or to move from.
  MediaAsset asset;

 private:
  friend class FederatedSearch;

  // Where the asset is in the order, whatever becomes of the object.
  MediaAssetOrder order = MediaAssetOrder::Key;
  Common::Databases::Sqlite::StatementValue value;
  int64_t key = -1;
};

}  // namespace Oru::DataModel::MediaAssets::Database
