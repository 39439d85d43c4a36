#include "Oru/DataModel/MediaAssets/Database/Writing/StorableCheck.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectWrite.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using namespace BusinessEntityModel::BaseTypes;

namespace {

using Identifiers = std::vector<const Identifier*>;

class StorableCheck {
 public:
  explicit StorableCheck(const MediaAsset& checkedAsset) : asset(checkedAsset) {}

  void Run() const {
    if (asset.Id().IsEmpty()) Refuse("the asset has no identifier");
    if (Holds(MediaAssetParts::Metadata | MediaAssetParts::Operator)) CheckMetadata();
    if (Holds(MediaAssetParts::Annotations)) CheckAnnotations();
    if (Holds(MediaAssetParts::Resources)) CheckResources();
    if (Holds(MediaAssetParts::Tracks)) CheckTracks();
  }

 private:
  // Whether the asset holds one of the parts.
  bool Holds(MediaAssetParts parts) const { return (asset.HeldParts() & parts) != MediaAssetParts::Row; }

  [[noreturn]] void Refuse(const std::string& reason) const { RefuseObject(asset.Id(), reason); }

  void CheckMetadata() const {
    asset.Metadata().Iterate([&](const MetadataProfile& profile) {
      if (const auto* ofOperator = dynamic_cast<const DapOperatorMetadataProfile*>(&profile)) {
        if (Holds(MediaAssetParts::Operator)) CheckOperator(*ofOperator);
      } else {
        RequireGeneric(profile, "the asset");
      }
      return true;
    });
  }

  void CheckOperator(const DapOperatorMetadataProfile& profile) const {
    RequirePlace("page", profile.Page());
    RequirePlace("bank", profile.Bank());
    RequirePlace("row", profile.Row());
    const char camera = profile.Camera();
    if (camera != 0 && !DapId::IsValidCamera(camera))
      Refuse("camera " + std::to_string(camera) + " is none of the letters A to L");
    RequireCount("the user's time code", profile.UserTimecode());
    RequireCount("the time code of the time of day", profile.TodTimecode());
  }

  void RequirePlace(const char* what, int place) const {
    if (place == DapId::Unset || (place >= DapId::MinPage && place <= DapId::MaxPage)) return;
    Refuse(std::string(what) + " " + std::to_string(place) + " is off the range from 0 to 9");
  }

  void RequireCount(const char* what, const TimePoints::TimeCode& timeCode) const {
    if (timeCode.TotalSample() >= 0) return;
    Refuse(std::string(what) + " has the negative count " + std::to_string(timeCode.TotalSample()));
  }

  // The operator's profile has a table on assets only, and no other profile may have its name.
  void RequireGeneric(const MetadataProfile& profile, const std::string& owner) const {
    static const FullyQualifiedName operatorName = DapOperatorMetadataProfile::StaticFullyQualifiedName();
    if (dynamic_cast<const GenericMetadataProfile*>(&profile) != nullptr &&
        profile.FullyQualifiedName() != operatorName) {
      return;
    }
    Refuse("there is no table for the metadata profile " + profile.FullyQualifiedName().Value() + " of " +
           owner);
  }

  template <class Owner>
  void RequireGeneric(const MetadataProfileDictionary& metadata, const Owner& owner) const {
    metadata.Iterate([&](const MetadataProfile& profile) {
      RequireGeneric(profile, owner());
      return true;
    });
  }

  void CheckAnnotations() const {
    int number = 0;
    for (const auto& annotation : asset.Annotations()) {
      const auto name = [number] { return "annotation " + std::to_string(number); };
      if (!annotation) Refuse(name() + " is a null pointer");
      RequireGeneric(annotation->Metadata(), name);
      ++number;
    }
  }

  void CheckResources() const {
    Identifiers resources, streams;
    for (const auto& reference : asset.MediaResources()) {
      const auto resource = reference.Pointer();
      resources.push_back(resource ? &resource->Id() : &reference.Id());
      if (resource) CheckResource(*resource, streams);
    }
    RequireDistinct("resource", resources);
    RequireDistinct("stream", streams);
  }

  void CheckResource(const MediaResource& resource, Identifiers& streams) const {
    RequireGeneric(*resource.Metadata(), [&] { return "resource " + resource.Id().Value(); });
    for (const auto& reference : resource.Streams()) {
      const auto stream = reference.Pointer();
      streams.push_back(stream ? &stream->Id() : &reference.Id());
      if (stream) CheckStream(*stream);
    }
  }

  void CheckStream(const Stream& stream) const {
    RequireGeneric(*stream.Metadata(), [&] { return "stream " + stream.Id().Value(); });
    for (int32_t position = 0; position < stream.Essences().Size(); ++position) {
      const Essence& essence = stream.Essences()[position];
      const auto name = [&] { return EssenceName(position, stream.Id()); };
      RequireGeneric(*essence.Metadata(), name);
      if (essence.Nr() != position) Refuse(name() + " has the number " + std::to_string(essence.Nr()));
      if (essence.ChannelCount() < 0) Refuse(name() + " has " + Channels(essence.ChannelCount()));
    }
  }

  static std::string EssenceName(int32_t number, const Identifier& stream) {
    return "essence " + std::to_string(number) + " of stream " + stream.Value();
  }
  static std::string Channels(int32_t count) { return std::to_string(count) + " channels"; }

  void CheckTracks() const {
    Identifiers tracks;
    for (const auto& track : asset.Tracks()) {
      if (!track) Refuse("a track is a null pointer");
      tracks.push_back(&track->Id());
      CheckChannels(*track);
    }
    RequireDistinct("track", tracks);
  }

  void CheckChannels(const Track& track) const {
    using Place = std::tuple<const Identifier&, int32_t, int32_t>;
    std::vector<const TrackChannelToRemove*> channels;
    for (const auto& channel : track.Channels()) {
      if (!channel) Refuse("a channel of track " + track.Id().Value() + " is a null pointer");
      if (channel->ChannelNr() < 0) Refuse(ChannelName(track, *channel) + ", which can't be");
      channels.push_back(channel.get());
    }
    const auto place = [](const TrackChannelToRemove& channel) {
      return Place(channel.Stream().Id(), channel.EssenceNr(), channel.ChannelNr());
    };
    std::sort(channels.begin(), channels.end(),
              [&](const auto* left, const auto* right) { return place(*left) < place(*right); });
    const auto twice = std::adjacent_find(
        channels.begin(), channels.end(),
        [&](const auto* left, const auto* right) { return place(*left) == place(*right); });
    if (twice != channels.end()) Refuse(ChannelName(track, **twice) + " twice");
  }

  static std::string ChannelName(const Track& track, const TrackChannelToRemove& channel) {
    return "track " + track.Id().Value() + " takes channel " + std::to_string(channel.ChannelNr()) + " of " +
           EssenceName(channel.EssenceNr(), channel.Stream().Id());
  }

  void RequireDistinct(const std::string& what, Identifiers& ids) const {
    std::sort(ids.begin(), ids.end(), [](const auto* left, const auto* right) { return *left < *right; });
    if (!ids.empty() && ids.front()->IsEmpty()) Refuse("a " + what + " has no identifier");
    const auto twice = std::adjacent_find(
        ids.begin(), ids.end(), [](const auto* left, const auto* right) { return *left == *right; });
    if (twice != ids.end()) Refuse(what + " " + (*twice)->Value() + " is there twice");
  }

  const MediaAsset& asset;
};

}  // namespace

void RequireStorable(const MediaAsset& asset) {
  StorableCheck(asset).Run();
}

}  // namespace Oru::DataModel::MediaAssets::Database
