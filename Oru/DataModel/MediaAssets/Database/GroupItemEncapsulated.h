#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroupItem.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What the group item tables write: an item beside the keys of its group and its asset and its place in
/// the group. The item stays the caller's.
struct ORU_DATAMODEL_DATABASE_EXPORT GroupItemEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  GroupItemEncapsulated(int64_t groupKey, int64_t assetKey, MediaAssetGroupItem& item)
      : GroupItemEncapsulated(groupKey, assetKey, item, 0) {}
  GroupItemEncapsulated(int64_t groupKey, int64_t assetKey, MediaAssetGroupItem& item, int32_t place)
      : fkMediaAssetGroup(groupKey), fkMediaAsset(assetKey), index(place), groupItem(item) {}

  /// The key of the group.
  int64_t fkMediaAssetGroup;
  /// The key of the asset that the item refers to.
  int64_t fkMediaAsset;
  /// From 0.
  int32_t index;
  /// What is stored. The table that stores it sets its object id.
  const MediaAssetGroupItem& groupItem;
};

}  // namespace Oru::DataModel::MediaAssets::Database
