#pragma once

#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace Oru::TestSupport {

using namespace DataModel::MediaAssets;
using DataModel::MediaAssets::Database::DataModelDatabase;

/// All that is stored of an asset, with resources and the streams of channels by their identifiers alone.
/// @throws std::invalid_argument when there is no such row
inline MediaAsset ReadLazy(DataModelDatabase& database, int64_t key) {
  auto& assets = database.GetMediaAssetTable();
  MediaAsset asset;
  if (!assets.GetObject(key, asset)) throw std::invalid_argument("there is no asset of that key");
  assets.ReadTimebounds(asset);
  assets.ReadMetadata(asset);
  assets.ReadDapOperatorMetadata(asset);
  assets.ReadAnnotations(asset);
  assets.ReadMediaResourcesLazy(asset);
  assets.ReadTrackLazy(asset);
  return asset;
}

/// The same with resources and tracks in full, down to the metadata of essences.
inline MediaAsset ReadDeep(DataModelDatabase& database, int64_t key) {
  auto asset = ReadLazy(database, key);
  asset.MediaResources().Clear();
  asset.Tracks().Clear();
  database.GetMediaAssetTable().ReadMediaResources(asset);
  database.GetMediaAssetTable().ReadTrack(asset);
  for (auto& resource : asset.MediaResources()) {
    for (auto& stream : resource->Streams()) {
      for (const auto& essence : stream->Essences())
        database.GetEssenceTable().ReadMetadata(*essence);
    }
  }
  return asset;
}

/// The channels of an asset's tracks, which a comparison of assets passes over.
inline std::vector<std::string> Channels(const MediaAsset& asset) {
  std::vector<std::string> lines;
  for (const auto& track : asset.Tracks()) {
    for (const auto& channel : track->Channels()) {
      lines.push_back(track->Id().Value() + " " + channel->Stream().Id().Value() + " " +
                      std::to_string(channel->EssenceNr()) + "." + std::to_string(channel->ChannelNr()));
    }
  }
  return lines;
}

/// What the order by place compares: nothing without a profile, and what isn't set follows what is.
inline std::vector<int64_t> PlaceOf(const MediaAsset& asset) {
  if (!asset.HasDapOperatorMetadata()) return {};
  const auto& profile = asset.DapOperatorMetadata();
  const auto orLast = [](int64_t value) { return value == 0 ? int64_t{1} << 40 : value; };
  return {orLast(profile.ServerId().SerialNumber()), profile.Page(), profile.Bank(), profile.Row(),
          orLast(profile.Camera())};
}

/// The keys of all objects below an asset, with the kind of each.
inline std::multiset<std::string> Keys(const MediaAsset& asset) {
  std::multiset<std::string> lines = {"asset " + std::to_string(asset.ObjectId())};
  const auto add = [&lines](const std::string& what, const auto& object) {
    lines.insert(what + " " + std::to_string(object.ObjectId()));
  };
  for (const auto& annotation : asset.Annotations())
    add("annotation", *annotation);
  for (const auto& track : asset.Tracks())
    add("track", *track);
  for (const auto& resource : asset.MediaResources()) {
    add("resource", *resource);
    for (const auto& stream : resource->Streams()) {
      add("stream", *stream);
      for (const auto& essence : stream->Essences())
        add("essence", *essence);
    }
  }
  return lines;
}

/// Whether a reading through the tables gives an asset. They read an operator's profile also where there is none, and
/// the channels of a track in any order.
inline bool IsReadingOf(const MediaAsset& asset, const MediaAsset& reading) {
  const auto expected = asset.Clone();
  if (!expected->HasDapOperatorMetadata())
    expected->Metadata().Set(std::make_shared<DapOperatorMetadataProfile>());
  const auto some = Channels(asset), others = Channels(reading);
  return reading == *expected && some.size() == others.size() &&
         std::is_permutation(some.begin(), some.end(), others.begin());
}

/// Whether the file holds a saved asset, with its keys and channels.
inline bool IsStored(DataModelDatabase& database, const MediaAsset& saved) {
  const auto reading = ReadDeep(database, saved.ObjectId());
  return IsReadingOf(saved, reading) && Keys(saved) == Keys(reading);
}

}  // namespace Oru::TestSupport
