#pragma once

#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include "support/EntityFields.h"
#include "support/Prelude.h"

namespace Oru::TestSupport {

/// Makes media assets with everything that a file keeps of one, down to essences and channels. All identifiers of one
/// maker differ.
class RandomAssets : public RandomValues {
 public:
  using RandomValues::RandomValues;

  /// A new asset. Every channel of its tracks names a stream and an essence that the asset holds.
  MediaAsset Next() {
    MediaAsset asset{MediaAssetId(Id())};
    for (auto count = Below(3); count > 0; --count)
      asset.MediaResources().Insert(std::make_shared<MediaResource>(Id()));
    for (auto count = Below(4); count > 0; --count)
      asset.Tracks().Insert(std::make_shared<Track>(Id()));
    Change(asset);
    return asset;
  }

  /// An asset of few values, of which some aren't set, so that assets tie in every order.
  MediaAsset Similar() {
    const auto anyOf = [this](const std::vector<const char*>& texts) {
      return std::string(texts[Below(texts.size())]);
    };
    const auto upTo = [this](std::size_t last) { return static_cast<int>(Below(last + 1)); };
    MediaAsset asset{MediaAssetId("id" + std::to_string(Below(1000)) + Id())};
    asset.Name(
        anyOf({"Goal", "goalkeeper", "Corner", "", "a%b", "Zo\u00eb's interview", "goal and goal", "\xff"}));
    asset.Description(anyOf({"", "the goal", "INTERVIEW"}));
    asset.CreationDate(upTo(5));
    asset.ModificationDate(asset.CreationDate() + upTo(2));
    if (!Chance(4)) asset.InBoundary(TimePoints::TimePoint::FromNanoseconds(upTo(2)));
    if (!Chance(4)) asset.OutBoundary(TimePoints::TimePoint::FromNanoseconds(upTo(3)));
    if (!Chance(4)) {
      const auto profile = std::make_shared<DapOperatorMetadataProfile>();
      if (!Chance(3)) profile->ServerId(ZuServerId(10 * (1 + upTo(2))));
      if (!Chance(3)) profile->Page(upTo(2));
      if (!Chance(3)) profile->Bank(1 + upTo(2));
      if (!Chance(3)) profile->Row(upTo(2));
      if (!Chance(3)) profile->Camera(static_cast<char>('A' + upTo(2)));
      profile->UserProtected(Chance(3));
      profile->DapUIProtected(Chance(5));
      if (Chance(2)) profile->Keyword(0, anyOf({"Replay", "replay", "slow"}));
      asset.Metadata().Set(profile);
    }
    if (Chance(3)) asset.MediaResources().Insert(std::make_shared<MediaResource>(MediaResourceId("shared")));
    return asset;
  }

  /// Gives an asset new content as far as a save of a stored asset can carry it: its identifiers stay, and so
  /// do its resources, streams, essences and tracks, to which streams and essences may be added. All else
  /// comes, goes and changes.
  void Change(MediaAsset& asset) {
    SetFields(asset, *this);
    for (auto& reference : asset.MediaResources())
      Change(*reference);
    for (const auto& track : asset.Tracks())
      Change(*track, asset);
  }

 private:
  void Change(MediaResource& resource) {
    SetFields(resource, *this);
    for (auto count = Below(3); count > 0 && resource.Streams().size() < 4; --count)
      resource.Adopt(std::make_unique<Stream>(StreamId(Id())));
    for (auto& stream : resource.Streams()) {
      SetFields(*stream, *this);
      for (auto count = Below(4); count > 0 && stream->Essences().Size() < 5; --count)
        stream->Essences().Add(AnEssence());
      for (const auto& essence : stream->Essences()) {
        SetFields(*essence, *this);
        if (auto* video = dynamic_cast<VideoEssence*>(essence.get())) SetFields(*video, *this);
        if (auto* audio = dynamic_cast<AudioEssence*>(essence.get())) SetFields(*audio, *this);
      }
    }
  }

  std::unique_ptr<Essence> AnEssence() {
    if (Chance(3)) return std::make_unique<VideoEssence>();
    if (Chance(2)) return std::make_unique<AudioEssence>();
    return std::make_unique<DataEssence>();
  }

  void Change(Track& track, MediaAsset& asset) {
    track.Name(Text());
    track.Channels().clear();
    for (auto& resource : asset.MediaResources()) {
      for (auto& stream : resource->Streams()) {
        for (const auto& essence : stream->Essences()) {
          for (auto count = Below(3); count > 0; --count) {
            track.Channels().push_back(std::make_shared<TrackChannelToRemove>());
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
