#pragma once

#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include "support/EntityFields.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Oru::TestSupport {

/// Makes media assets with everything that a file keeps of one, down to essences and channels. All identifiers of one
/// maker differ.
class RandomAssets : public RandomValues {
 public:
  using RandomValues::RandomValues;

  /// A new asset. Every channel of its tracks names a stream and an essence that the asset holds.
  DataModel::MediaAssets::MediaAsset Next() {
    DataModel::MediaAssets::MediaAsset asset{DataModel::MediaAssets::MediaAssetId(Id())};
    for (auto count = Below(3); count > 0; --count)
      asset.MediaResources().Insert(std::make_shared<DataModel::MediaAssets::MediaResource>(Id()));
    for (auto count = Below(4); count > 0; --count)
      asset.Tracks().Insert(std::make_shared<DataModel::MediaAssets::Track>(Id()));
    Change(asset);
    return asset;
  }

  /// Gives an asset new content as far as a save of a stored asset can carry it: its identifiers stay, and so
  /// do its resources, streams, essences and tracks, to which streams and essences may be added. All else
  /// comes, goes and changes.
  void Change(DataModel::MediaAssets::MediaAsset& asset) {
    SetFields(asset, *this);
    for (auto& reference : asset.MediaResources())
      Change(*reference);
    for (const auto& track : asset.Tracks())
      Change(*track, asset);
  }

 private:
  void Change(DataModel::MediaAssets::MediaResource& resource) {
    using namespace DataModel::MediaAssets;
    SetFields(resource, *this);
    for (auto count = Below(3); count > 0; --count)
      resource.Adopt(std::make_unique<Stream>(StreamId(Id())));
    for (auto& stream : resource.Streams()) {
      SetFields(*stream, *this);
      for (auto count = Below(4); count > 0; --count)
        stream->Essences().Add(AnEssence());
      for (const auto& essence : stream->Essences()) {
        SetFields(*essence, *this);
        if (auto* video = dynamic_cast<VideoEssence*>(essence.get())) SetFields(*video, *this);
        if (auto* audio = dynamic_cast<AudioEssence*>(essence.get())) SetFields(*audio, *this);
      }
    }
  }

  std::unique_ptr<DataModel::MediaAssets::Essence> AnEssence() {
    using namespace DataModel::MediaAssets;
    if (Chance(3)) return std::make_unique<VideoEssence>();
    if (Chance(2)) return std::make_unique<AudioEssence>();
    return std::make_unique<DataEssence>();
  }

  void Change(DataModel::MediaAssets::Track& track, DataModel::MediaAssets::MediaAsset& asset) {
    track.Name(Text());
    track.Channels().clear();
    for (auto& resource : asset.MediaResources()) {
      for (auto& stream : resource->Streams()) {
        for (const auto& essence : stream->Essences()) {
          for (auto count = Below(3); count > 0; --count) {
            track.Channels().push_back(std::make_shared<DataModel::MediaAssets::TrackChannelToRemove>());
            track.Channels().back()->Stream(stream);
            track.Channels().back()->EssenceNr(essence->Nr());
            track.Channels().back()->ChannelNr(2 * (Count() / 2) + static_cast<int32_t>(count) % 2);
          }
        }
      }
    }
  }
};

}  // namespace Oru::TestSupport
