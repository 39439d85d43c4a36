#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// The object ids that assets came with, down to their essences. They are put back at the end of a scope that
/// has not kept the new ones, so that a failed write leaves the objects as they were.
///
/// The objects must outlive this, or be dropped before. Internal to the library.
class ObjectIds {
 public:
  ObjectIds() = default;
  explicit ObjectIds(MediaAsset& asset) { Remember(asset); }
  ObjectIds(const ObjectIds&) = delete;
  ObjectIds& operator=(const ObjectIds&) = delete;
  ~ObjectIds() { PutBack(); }

  void Remember(MediaAsset& asset);
  /// Takes over what another one remembers.
  void Take(ObjectIds& other);
  /// Lets the objects keep the ids that they have now.
  void Keep() noexcept { remembered.clear(); }
  /// Gives the objects the ids that they came with.
  void PutBack() noexcept;

  /// Makes all object ids of an asset's tree -1, also those of streams that only a channel holds.
  static void Forget(MediaAsset& asset);

 private:
  std::vector<std::pair<BusinessEntityModel::BaseTypes::PersistentObject*, int64_t>> remembered;
};

}  // namespace Oru::DataModel::MediaAssets::Database
