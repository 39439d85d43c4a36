#pragma once

#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include "support/AssetFields.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace Oru::TestSupport {

/// The row of a stored asset with all that is the asset's own, but without resources and tracks.
/// @throws std::invalid_argument when there is no such row
inline DataModel::MediaAssets::MediaAsset ReadOwnParts(
    DataModel::MediaAssets::Database::DataModelDatabase& database, int64_t key) {
  auto& assets = database.GetMediaAssetTable();
  DataModel::MediaAssets::MediaAsset asset;
  if (!assets.GetObject(key, asset)) throw std::invalid_argument("there is no asset of that key");
  assets.ReadTimebounds(asset);
  assets.ReadMetadata(asset);
  assets.ReadDapOperatorMetadata(asset);
  assets.ReadAnnotations(asset);
  return asset;
}

/// All that is stored of an asset, down to the metadata of essences.
inline DataModel::MediaAssets::MediaAsset ReadDeep(
    DataModel::MediaAssets::Database::DataModelDatabase& database, int64_t key) {
  auto asset = ReadOwnParts(database, key);
  auto& assets = database.GetMediaAssetTable();
  assets.ReadMediaResources(asset);
  assets.ReadTrack(asset);
  for (auto& resource : asset.MediaResources()) {
    for (auto& stream : resource->Streams()) {
      for (const auto& essence : stream->Essences())
        database.GetEssenceTable().ReadMetadata(*essence);
    }
  }
  return asset;
}

/// The same with resources and the streams of channels by their identifiers alone.
inline DataModel::MediaAssets::MediaAsset ReadLazy(
    DataModel::MediaAssets::Database::DataModelDatabase& database, int64_t key) {
  auto asset = ReadOwnParts(database, key);
  database.GetMediaAssetTable().ReadMediaResourcesLazy(asset);
  database.GetMediaAssetTable().ReadTrackLazy(asset);
  return asset;
}

/// A copy of an asset that knows its resources and the streams of its channels by their identifiers alone.
inline DataModel::MediaAssets::MediaAsset WithoutLoadedObjects(
    const DataModel::MediaAssets::MediaAsset& asset) {
  DataModel::MediaAssets::MediaAsset bare = std::move(*asset.Clone());
  for (auto& reference : bare.MediaResources())
    reference = DataModel::MediaAssets::MediaResourceReferenceVector::value_type(reference.Id());
  for (const auto& track : bare.Tracks()) {
    for (const auto& channel : track->Channels())
      channel->Stream(DataModel::MediaAssets::StreamReference(channel->Stream().Id()));
  }
  return bare;
}

/// What the file holds of a saved asset in place of what it should hold: the first field, empty when there is
/// none.
inline std::string DeepDifference(DataModel::MediaAssets::Database::DataModelDatabase& database,
                                  const DataModel::MediaAssets::MediaAsset& saved) {
  const auto reading = ReadDeep(database, saved.ObjectId());
  return AssetFields::AsStored(saved).FirstDifference(AssetFields::Of(reading));
}
inline std::string LazyDifference(DataModel::MediaAssets::Database::DataModelDatabase& database,
                                  const DataModel::MediaAssets::MediaAsset& saved) {
  const auto reading = ReadLazy(database, saved.ObjectId());
  return AssetFields::AsStored(WithoutLoadedObjects(saved)).FirstDifference(AssetFields::Of(reading));
}

}  // namespace Oru::TestSupport
