#pragma once

#include "Oru/BusinessEntityModel/Edits/Edit.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"

#include "support/DatabasePrelude.h"

namespace Oru::TestSupport {

/// What a file must hold, whichever way it was written: plain maps from identifiers to clips, to the resources and
/// tracks that they share, to groups of clips, and
/// to edits.
class ClipModel {
 public:
  using Identifier = BusinessEntityModel::BaseTypes::Identifier;
  using Profile = DapOperatorMetadataProfile;

  struct Clip {
    /// Without resources and tracks.
    MediaAsset own;
    std::set<Identifier> resources, tracks;
  };
  struct Group {
    std::shared_ptr<MediaAssetGroup> object;
    bool isMultiAngle = false;
  };

  std::map<Identifier, Clip> clips;
  std::map<Identifier, std::shared_ptr<const MediaResource>> resources;
  std::map<Identifier, std::shared_ptr<const Track>> tracks;
  std::map<Identifier, Group> groups;
  std::map<Identifier, BusinessEntityModel::Edits::Edit> edits;

  /// A put through a repository.
  /// @return false, with nothing changed, when the asset must be refused
  bool Put(const MediaAsset& asset, const Identifier& storedAs) {
    ClipModel next = *this;
    if (!next.Write(*asset.Clone(), storedAs)) return false;
    next.DropWhatWas(Used());
    *this = std::move(next);
    return true;
  }

  /// A removal through a repository.
  void Remove(const Identifier& id) {
    const Uses before = Used();
    Erase({id});
    DropWhatWas(before);
  }

  /// A save through the tables. They link an asset only when it is new, and delete nothing but what has no row of
  /// its own.
  void Save(const MediaAsset& saved) {
    MediaAsset asset = *saved.Clone();
    const bool isNew = clips.count(asset.Id()) == 0;
    Clip& clip = clips[asset.Id()];
    for (auto& reference : asset.MediaResources()) {
      Write(*reference);
      if (isNew) clip.resources.insert(reference.Id());
    }
    for (const auto& track : asset.Tracks()) {
      tracks[track->Id()] = track->Clone();
      if (isNew) clip.tracks.insert(track->Id());
    }
    if (const auto kept = clip.own.Metadata().Get<Profile>(); kept && !asset.HasDapOperatorMetadata())
      asset.Metadata().Set(kept);
    asset.HeldParts(MediaAssetParts::All);
    WriteOwn(clip.own, std::move(asset));
  }

  void Write(const MediaResource& resource) {
    std::shared_ptr<MediaResource> written = resource.Clone();
    std::shared_ptr<const MediaResource>& stored = resources[resource.Id()];
    if (stored) {
      KeepOrder(written->Streams(), stored->Streams(),
                [](const auto& left, const auto& right) { return left.Id() == right.Id(); });
    }
    stored = std::move(written);
  }

  /// Whatever way it is written, a stored group stays a multi-angle one and keeps the identity that it isn't given.
  void Write(const MediaAssetGroup& group, bool isMultiAngle) {
    Group& stored = groups[group.Id()];
    std::shared_ptr<MediaAssetGroup> written = group.Clone();
    if (stored.object && written->Metadata().Empty())
      written->Metadata() = stored.object->Metadata().DeepCopy();
    stored = {std::move(written), isMultiAngle || stored.isMultiAngle};
  }

  /// Removes clips with what they own, and nothing that they shared.
  void Erase(const std::set<Identifier>& ids) {
    for (const Identifier& id : ids)
      clips.erase(id);
    for (auto& group : groups) {
      group.second.object = group.second.object->Clone();
      auto& items = group.second.object->Items();
      items.erase(
          std::remove_if(items.begin(), items.end(),
                         [this](const auto& item) { return clips.count(item->MediaAsset().Id()) == 0; }),
          items.end());
    }
  }

  /// The clean-up of the tables: what no link refers to goes, whether it was in use before or not.
  void CleanUp() {
    const Uses linked = Linked();
    KeepOnly(resources, linked.resources, nullptr);
    KeepOnly(tracks, linked.tracks, nullptr);
    KeepOnly(groups, linked.groups, nullptr);
    LoseChannels();
  }

  /// The asset that a file must give back, or some of its parts.
  MediaAsset Asset(const Identifier& id, MediaAssetParts parts = MediaAssetParts::All) const {
    const Clip& clip = clips.at(id);
    MediaAsset asset, own = *clip.own.Clone();
    own.HeldParts(parts);
    WriteOwn(asset, std::move(own));
    asset.HeldParts(parts);
    if (Holds(asset, MediaAssetParts::Resources)) {
      for (const Identifier& resource : clip.resources)
        asset.MediaResources().Insert(std::shared_ptr<MediaResource>(resources.at(resource)->Clone()));
    }
    if (Holds(asset, MediaAssetParts::Tracks)) {
      for (const Identifier& track : clip.tracks)
        asset.Tracks().Insert(tracks.at(track)->Clone());
    }
    return asset;
  }

  /// Whether a stored resource or track has an identifier of the asset's.
  bool SharesAnyOf(MediaAsset& asset) const {
    for (auto& resource : asset.MediaResources()) {
      if (resources.count(resource.Id()) > 0) return true;
    }
    return std::any_of(asset.Tracks().begin(), asset.Tracks().end(),
                       [this](const auto& track) { return tracks.count(track->Id()) > 0; });
  }

 private:
  struct Uses {
    std::set<Identifier> resources, tracks, groups;
  };

  static bool Holds(const MediaAsset& asset, MediaAssetParts part) {
    return (asset.HeldParts() & part) == part;
  }

  // What was stored keeps its order, and what is new follows.
  template <class Elements, class IsSame>
  static void KeepOrder(Elements& written, const Elements& stored, IsSame isSame) {
    const auto place = [&](const auto& element) {
      return std::find_if(stored.begin(), stored.end(),
                          [&](const auto& other) { return isSame(element, other); });
    };
    std::stable_sort(written.begin(), written.end(),
                     [&](const auto& left, const auto& right) { return place(left) < place(right); });
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
      LoseChannels();
    }
    if (Holds(asset, MediaAssetParts::Tracks)) {
      clip.tracks.clear();
      for (const auto& track : asset.Tracks()) {
        const std::shared_ptr<Track> written = WithoutLostChannels(*track);
        if (written->Channels().size() < track->Channels().size()) return false;
        clip.tracks.insert(track->Id());
        std::shared_ptr<const Track>& stored = tracks[track->Id()];
        if (stored) {
          KeepOrder(written->Channels(), stored->Channels(),
                    [](const auto& left, const auto& right) { return *left == *right; });
        }
        stored = written;
      }
    }
    const Identifier id = asset.Id();
    WriteOwn(clip.own, std::move(asset));
    clips[id] = std::move(clip);
    for (auto& group : groups) {
      group.second.object = group.second.object->Clone();
      for (const auto& item : group.second.object->Items()) {
        if (item->MediaAsset().Id() == storedAs) item->MediaAsset(MediaAssetReference(id));
      }
    }
    return true;
  }

  static void WriteOwn(MediaAsset& own, MediaAsset asset) {
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

  std::shared_ptr<Track> WithoutLostChannels(const Track& track) const {
    std::shared_ptr<Track> kept = track.Clone();
    auto& channels = kept->Channels();
    channels.erase(std::remove_if(channels.begin(), channels.end(),
                                  [this](const auto& channel) {
                                    return !HasEssence(channel->Stream().Id(), channel->EssenceNr());
                                  }),
                   channels.end());
    return kept;
  }

  void LoseChannels() {
    for (auto& track : tracks)
      track.second = WithoutLostChannels(*track.second);
  }

  Uses Linked() const {
    Uses uses;
    for (const auto& clip : clips) {
      uses.resources.insert(clip.second.resources.begin(), clip.second.resources.end());
      uses.tracks.insert(clip.second.tracks.begin(), clip.second.tracks.end());
    }
    for (const auto& group : groups) {
      if (!group.second.object->Items().empty()) uses.groups.insert(group.first);
    }
    return uses;
  }

  // With the resources whose essences the channels of tracks take.
  Uses Used() const {
    Uses uses = Linked();
    std::set<Identifier> streams;
    for (const auto& track : tracks) {
      for (const auto& channel : track.second->Channels())
        streams.insert(channel->Stream().Id());
    }
    for (const auto& resource : resources) {
      for (const auto& stream : resource.second->Streams()) {
        if (streams.count(stream.Id()) > 0) uses.resources.insert(resource.first);
      }
    }
    return uses;
  }

  template <class Map>
  static void KeepOnly(Map& map, const std::set<Identifier>& kept, const std::set<Identifier>* candidates) {
    for (auto entry = map.begin(); entry != map.end();) {
      const bool isGone =
          kept.count(entry->first) == 0 && (!candidates || candidates->count(entry->first) > 0);
      entry = isGone ? map.erase(entry) : std::next(entry);
    }
  }

  // Removes what was in use before and is no longer.
  void DropWhatWas(const Uses& before) {
    KeepOnly(tracks, Linked().tracks, &before.tracks);
    KeepOnly(groups, Linked().groups, &before.groups);
    KeepOnly(resources, Used().resources, &before.resources);
  }
};

}  // namespace Oru::TestSupport
