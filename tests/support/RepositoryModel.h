#pragma once

#include "Oru/DataModel/MediaAssets/Database/CopyResources.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace Oru::TestSupport {

/// What a file must hold that was written through a repository: a plain map from identifiers to assets,
/// beside one of the resources and one of the tracks that they share.
class RepositoryModel {
 public:
  using Identifier = BusinessEntityModel::BaseTypes::Identifier;
  using MediaAsset = DataModel::MediaAssets::MediaAsset;
  using MediaAssetParts = DataModel::MediaAssets::MediaAssetParts;
  using MediaResource = DataModel::MediaAssets::MediaResource;
  using Track = DataModel::MediaAssets::Track;

  struct Clip {
    /// Without resources and tracks.
    MediaAsset own;
    std::set<Identifier> resources, tracks;
  };

  std::map<Identifier, Clip> clips;
  std::map<Identifier, std::shared_ptr<const MediaResource>> resources;
  std::map<Identifier, std::shared_ptr<const Track>> tracks;

  /// @return false, with nothing changed, when the asset must be refused
  bool Put(const MediaAsset& asset, const Identifier& storedAs) {
    RepositoryModel next = *this;
    if (!next.Write(*asset.Clone(), storedAs)) return false;
    next.CleanUp();
    *this = std::move(next);
    return true;
  }

  void Remove(const Identifier& id) {
    clips.erase(id);
    CleanUp();
  }

  /// The asset that a file must give back.
  MediaAsset Asset(const Identifier& id) const {
    const Clip& clip = clips.at(id);
    MediaAsset asset = *clip.own.Clone();
    for (const Identifier& resource : clip.resources)
      asset.MediaResources().Insert(std::shared_ptr<MediaResource>(resources.at(resource)->Clone()));
    for (const Identifier& track : clip.tracks)
      asset.Tracks().Insert(tracks.at(track)->Clone());
    return asset;
  }

  /// The channels of an asset's tracks, which a comparison of assets passes over.
  static std::multiset<std::string> Channels(const MediaAsset& asset) {
    std::multiset<std::string> lines;
    for (const auto& track : asset.Tracks()) {
      for (const auto& channel : track->Channels()) {
        lines.insert(track->Id().Value() + " " + channel->Stream().Id().Value() + " " +
                     std::to_string(channel->EssenceNr()) + "." + std::to_string(channel->ChannelNr()));
      }
    }
    return lines;
  }

 private:
  static bool Holds(const MediaAsset& asset, MediaAssetParts part) {
    return (asset.HeldParts() & part) == part;
  }

  bool Write(MediaAsset asset, const Identifier& storedAs) {
    Clip clip;
    if (const auto stored = clips.find(storedAs); stored != clips.end()) {
      clip = std::move(stored->second);
      clips.erase(stored);
    }
    if (Holds(asset, MediaAssetParts::Resources)) {
      clip.resources.clear();
      for (auto& reference : asset.MediaResources()) {
        clip.resources.insert(reference.Id());
        if (reference) Write(*reference);
        if (resources.count(reference.Id()) == 0) return false;
      }
      for (auto& track : tracks)
        track.second = WithoutLostChannels(*track.second);
    }
    if (Holds(asset, MediaAssetParts::Tracks)) {
      clip.tracks.clear();
      for (const auto& track : asset.Tracks()) {
        if (WithoutLostChannels(*track)->Channels().size() < track->Channels().size()) return false;
        clip.tracks.insert(track->Id());
        tracks[track->Id()] = track->Clone();
      }
    }
    const Identifier id = asset.Id();
    WriteOwn(clip.own, std::move(asset));
    clips[id] = std::move(clip);
    return true;
  }

  // Streams that were stored keep their order, and new ones follow.
  void Write(const MediaResource& resource) {
    std::shared_ptr<MediaResource> written = resource.Clone();
    std::shared_ptr<const MediaResource>& stored = resources[resource.Id()];
    if (stored) {
      const auto& streams = stored->Streams();
      const auto place = [&streams](const auto& stream) {
        return std::find_if(streams.begin(), streams.end(),
                            [&](const auto& other) { return other.Id() == stream.Id(); });
      };
      std::stable_sort(written->Streams().begin(), written->Streams().end(),
                       [&](const auto& left, const auto& right) { return place(left) < place(right); });
    }
    stored = std::move(written);
  }

  static void WriteOwn(MediaAsset& own, MediaAsset asset) {
    using Profile = DataModel::MediaAssets::DapOperatorMetadataProfile;
    const auto in = asset.InBoundary(), out = asset.OutBoundary();
    if (!Holds(asset, MediaAssetParts::TimeBounds)) asset.PhysicalTimebounds() = own.PhysicalTimebounds();
    asset.InBoundary(in);
    asset.OutBoundary(out);
    auto generic = (Holds(asset, MediaAssetParts::Metadata) ? asset : own).Metadata().DeepCopy();
    const auto profile = (Holds(asset, MediaAssetParts::Operator) ? asset : own).Metadata().Get<Profile>();
    generic.Erase(Profile::StaticFullyQualifiedName());
    asset.Metadata() = generic;
    if (profile) asset.Metadata().Set(profile);
    if (!Holds(asset, MediaAssetParts::Annotations)) asset.Annotations() = own.Annotations();
    asset.MediaResources().Clear();
    asset.Tracks().Clear();
    asset.HeldParts(MediaAssetParts::All);
    own = std::move(asset);
  }

  bool HasEssence(const Identifier& streamId, int32_t number) const {
    for (const auto& resource : resources) {
      for (const auto& stream : resource.second->Streams()) {
        if (stream.Id() == streamId) return number >= 0 && number < stream->Essences().Size();
      }
    }
    return false;
  }

  std::shared_ptr<const Track> WithoutLostChannels(const Track& track) const {
    std::shared_ptr<Track> kept = track.Clone();
    auto& channels = kept->Channels();
    channels.erase(std::remove_if(channels.begin(), channels.end(),
                                  [this](const auto& channel) {
                                    return !HasEssence(channel->Stream().Id(), channel->EssenceNr());
                                  }),
                   channels.end());
    return kept;
  }

  void CleanUp() {
    std::set<Identifier> usedResources, usedTracks, usedStreams;
    for (const auto& clip : clips) {
      usedResources.insert(clip.second.resources.begin(), clip.second.resources.end());
      usedTracks.insert(clip.second.tracks.begin(), clip.second.tracks.end());
    }
    for (auto track = tracks.begin(); track != tracks.end();)
      track = usedTracks.count(track->first) == 0 ? tracks.erase(track) : std::next(track);
    for (const auto& track : tracks) {
      for (const auto& channel : track.second->Channels())
        usedStreams.insert(channel->Stream().Id());
    }
    for (auto resource = resources.begin(); resource != resources.end();) {
      const auto& streams = resource->second->Streams();
      const bool isUsed = usedResources.count(resource->first) > 0 ||
                          std::any_of(streams.begin(), streams.end(),
                                      [&](const auto& stream) { return usedStreams.count(stream.Id()) > 0; });
      resource = isUsed ? std::next(resource) : resources.erase(resource);
    }
  }
};

}  // namespace Oru::TestSupport
