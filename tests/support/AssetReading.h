#pragma once

#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include <cstdint>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>

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

/// What a comparison of assets passes over: the keys of all loaded objects, and the channels of tracks.
inline std::multiset<std::string> KeysAndChannels(const DataModel::MediaAssets::MediaAsset& asset,
                                                  bool withResources) {
  std::multiset<std::string> lines = {"asset " + std::to_string(asset.ObjectId())};
  const auto add = [&lines](const std::string& what, const auto& object) {
    lines.insert(what + " " + std::to_string(object.ObjectId()));
  };
  for (const auto& annotation : asset.Annotations())
    add("annotation", *annotation);
  for (const auto& track : asset.Tracks()) {
    add("track", *track);
    for (const auto& channel : track->Channels()) {
      lines.insert(track->Id().Value() + " " + channel->Stream().Id().Value() + " " +
                   std::to_string(channel->EssenceNr()) + "." + std::to_string(channel->ChannelNr()));
    }
  }
  for (const auto& resource : asset.MediaResources()) {
    if (!withResources) continue;
    add("resource", *resource);
    for (const auto& stream : resource->Streams()) {
      add("stream", *stream);
      for (const auto& essence : stream->Essences())
        add("essence", *essence);
    }
  }
  return lines;
}

/// Whether a reading gives what was saved. An operator's profile is read also where none was saved.
inline bool IsReadingOf(const DataModel::MediaAssets::MediaAsset& saved,
                        const DataModel::MediaAssets::MediaAsset& reading, bool withResources) {
  const auto expected = saved.Clone();
  if (!expected->HasDapOperatorMetadata())
    expected->Metadata().Set(std::make_shared<DataModel::MediaAssets::DapOperatorMetadataProfile>());
  return reading == *expected &&
         KeysAndChannels(reading, withResources) == KeysAndChannels(saved, withResources);
}

/// Whether the file holds a saved asset, with its keys and channels.
inline bool IsStored(DataModel::MediaAssets::Database::DataModelDatabase& database,
                     const DataModel::MediaAssets::MediaAsset& saved) {
  return IsReadingOf(saved, ReadDeep(database, saved.ObjectId()), true);
}

}  // namespace Oru::TestSupport
