#pragma once

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "support/ClipBuilder.h"
#include "support/SqlValues.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Oru::TestSupport {

/// What a file of clips that share resources and tracks must hold, by identifiers alone: written beside
/// the tables, without their help, and compared with the file row by row.
///
/// What hangs under a resource or an asset follows from the number at the end of its identifier.
struct SharedClips {
  struct Asset {
    int server = 0;
    std::set<std::string> resources, tracks;
  };
  struct Group {
    bool hasAngles = false, hasProfile = false;
    /// Place and asset.
    std::vector<std::pair<int, std::string>> items;
  };
  using Choice = std::function<bool(const std::string& id, const Asset&)>;

  std::map<std::string, Asset> assets;
  std::set<std::string> resources;
  /// The resource that the track's one channel takes its essence from; empty when it has none.
  std::map<std::string, std::string> tracks;
  std::map<std::string, Group> groups;

  static int NumberOf(const std::string& id) { return std::stoi(id.substr(1)); }
  static int StreamsOf(const std::string& resource) { return NumberOf(resource) % 3; }
  static int EssencesOf(const std::string& resource) { return 1 + NumberOf(resource) % 2; }
  static bool HasAnnotation(const std::string& asset) { return NumberOf(asset) % 2 == 0; }

  /// Removes assets with what they own, and nothing that they shared.
  void Remove(const Choice& isDeleted) {
    for (auto asset = assets.begin(); asset != assets.end();)
      asset = isDeleted(asset->first, asset->second) ? assets.erase(asset) : std::next(asset);
    for (auto& [id, group] : groups) {
      auto& items = group.items;
      items.erase(std::remove_if(items.begin(), items.end(),
                                 [this](const auto& item) { return assets.count(item.second) == 0; }),
                  items.end());
    }
  }

  void CleanUp() {
    std::set<std::string> usedResources, usedTracks;
    for (const auto& [id, asset] : assets) {
      usedResources.insert(asset.resources.begin(), asset.resources.end());
      usedTracks.insert(asset.tracks.begin(), asset.tracks.end());
    }
    resources = usedResources;
    for (auto track = tracks.begin(); track != tracks.end();) {
      if (resources.count(track->second) == 0) track->second.clear();
      track = usedTracks.count(track->first) == 0 ? tracks.erase(track) : std::next(track);
    }
    for (auto group = groups.begin(); group != groups.end();)
      group = group->second.items.empty() ? groups.erase(group) : std::next(group);
  }

  /// A line for each row.
  std::multiset<std::string> Rows() const {
    std::multiset<std::string> rows;
    for (const auto& [id, asset] : assets) {
      rows.insert({"asset " + id, "metadata of " + id, "bounds of " + id});
      if (HasAnnotation(id)) rows.insert({"annotation of " + id, "metadata of annotation of " + id});
      if (asset.server != 0)
        rows.insert({"operator " + std::to_string(asset.server) + " of " + id, "keyword of " + id});
      for (const std::string& resource : asset.resources)
        rows.insert("link " + id + " " + resource);
      for (const std::string& track : asset.tracks)
        rows.insert("link " + id + " " + track);
    }
    for (const std::string& id : resources) {
      rows.insert("resource " + id);
      for (int i = 0; i < StreamsOf(id); ++i) {
        const std::string stream = id + "." + std::to_string(i);
        rows.insert({"stream " + stream + " of " + id, "metadata of " + stream});
        for (int nr = 0; nr < EssencesOf(id); ++nr)
          rows.insert("audio essence " + std::to_string(nr) + " of " + stream);
      }
    }
    for (const auto& [id, resource] : tracks) {
      rows.insert("track " + id);
      if (!resource.empty()) rows.insert("channel " + id + " " + resource + ".0");
    }
    for (const auto& [id, group] : groups) {
      rows.insert("group " + id);
      if (group.hasAngles) rows.insert("angles " + id);
      if (group.hasProfile) rows.insert("profile " + id);
      for (const auto& [place, asset] : group.items)
        rows.insert("item " + id + " " + std::to_string(place) + " " + asset);
    }
    return rows;
  }

  /// The same lines from a file.
  static std::multiset<std::string> RowsOf(Common::Databases::Sqlite::DatabaseSqlite& database) {
    const std::vector<std::string> rows = Column(database, R"(
      SELECT 'asset ' || id FROM MediaAsset
      UNION ALL SELECT 'metadata of ' || id FROM MetadataMediaAsset JOIN MediaAsset ON key = foreignKey
      UNION ALL SELECT 'bounds of ' || id FROM TimeBoundsMediaAsset JOIN MediaAsset ON key = foreignKey
      UNION ALL SELECT 'annotation of ' || id FROM Annotation a JOIN MediaAsset m ON m.key = refMediaAsset
      UNION ALL SELECT 'metadata of annotation of ' || id FROM MetadataAnnotation
        JOIN Annotation a ON a.key = foreignKey JOIN MediaAsset m ON m.key = refMediaAsset
      UNION ALL SELECT 'operator ' || zuServerId || ' of ' || id FROM DapOperatorMetadata
        JOIN MediaAsset ON key = refMediaAsset
      UNION ALL SELECT 'keyword of ' || id FROM DapOperatorKeywords JOIN MediaAsset ON key = refDapOperatorMetadata
      UNION ALL SELECT 'link ' || m.id || ' ' || r.id FROM RelationMediaAssetMediaResource
        JOIN MediaAsset m ON m.key = refMediaAsset JOIN MediaResource r ON r.key = refMediaResource
      UNION ALL SELECT 'link ' || m.id || ' ' || t.id FROM RelationAssetTrack
        JOIN MediaAsset m ON m.key = refMediaAsset JOIN Track t ON t.key = refTrack
      UNION ALL SELECT 'resource ' || id FROM MediaResource
      UNION ALL SELECT 'stream ' || s.id || ' of ' || r.id FROM Stream s JOIN MediaResource r ON r.key = refMediaResource
      UNION ALL SELECT 'metadata of ' || id FROM MetadataStream JOIN Stream ON key = foreignKey
      UNION ALL SELECT 'audio essence ' || nr || ' of ' || id FROM AudioEssence
        JOIN Essence e ON e.key = refEssence JOIN Stream s ON s.key = refStream
      UNION ALL SELECT 'track ' || id FROM Track
      UNION ALL SELECT 'channel ' || t.id || ' ' || s.id FROM TrackChannel JOIN Track t ON t.key = refTrack
        JOIN Essence e ON e.key = refEssence JOIN Stream s ON s.key = refStream
      UNION ALL SELECT 'group ' || id FROM MediaAssetGroup
      UNION ALL SELECT 'angles ' || id FROM AnglesMediaAssetGroup JOIN MediaAssetGroup ON key = refMediaAssetGroup
      UNION ALL SELECT 'profile ' || id FROM DapOperatorMetadataAngles JOIN MediaAssetGroup ON key = refAngles
      UNION ALL SELECT 'item ' || g.id || ' ' || angleIndex || ' ' || m.id FROM MediaAssetGroupItem i
        JOIN AnglesMediaAssetGroupItem ON i.key = refMediaAssetGroupItem
        JOIN MediaAssetGroup g ON g.key = refMediaAssetGroup JOIN MediaAsset m ON m.key = refMediaAsset)");
    return {rows.begin(), rows.end()};
  }

  /// An asset as it is written; each call makes all its objects again, so that only identifiers tie them.
  static DataModel::MediaAssets::MediaAsset Make(const std::string& id, const Asset& asset) {
    using namespace DataModel::MediaAssets;
    MediaAsset made{MediaAssetId(id)};
    made.Name("clip " + id);
    made.PhysicalTimebounds().Insert(BoundsOf(1, 2));
    SetOneEntry(made.Metadata(), "value");
    if (HasAnnotation(id)) {
      made.Annotations().push_back(std::make_shared<Annotation>(AnnotationType::CuePoint, "cue"));
      SetOneEntry(made.Annotations().back()->Metadata(), "value");
    }
    if (asset.server != 0) {
      const auto profile = std::make_shared<DapOperatorMetadataProfile>();
      profile->ServerId(ZuServerId(asset.server));
      profile->Keyword(0, "goal");
      made.Metadata().Set(profile);
    }
    for (const std::string& resource : asset.resources)
      made.MediaResources().Insert(MakeResource(resource));
    for (const std::string& track : asset.tracks)
      made.Tracks().Insert(MakeTrack(track, made));
    return made;
  }

  static std::shared_ptr<DataModel::MediaAssets::MediaResource> MakeResource(const std::string& id) {
    using namespace DataModel::MediaAssets;
    auto resource = std::make_shared<MediaResource>(MediaResourceId(id));
    for (int i = 0; i < StreamsOf(id); ++i) {
      auto stream = std::make_unique<Stream>(StreamId(id + "." + std::to_string(i)));
      SetOneEntry(*stream->Metadata(), "value");
      for (int nr = 0; nr < EssencesOf(id); ++nr)
        stream->Essences().Add(std::make_unique<AudioEssence>());
      resource->Adopt(std::move(stream));
    }
    return resource;
  }

  /// The resource that a track of these resources takes its channel from; empty when none has a stream.
  static std::string ChannelSource(const std::set<std::string>& resources) {
    for (const std::string& resource : resources) {
      if (StreamsOf(resource) > 0) return resource;
    }
    return {};
  }

 private:
  static std::shared_ptr<DataModel::MediaAssets::Track> MakeTrack(const std::string& id,
                                                                  DataModel::MediaAssets::MediaAsset& asset) {
    using namespace DataModel::MediaAssets;
    auto track = std::make_shared<Track>(TrackId(id));
    for (auto& resource : asset.MediaResources()) {
      if (resource->Streams().empty()) continue;
      track->Channels().push_back(Channel(resource->Streams().front().Id().Value(), 0, 0));
      break;
    }
    return track;
  }
};

}  // namespace Oru::TestSupport
