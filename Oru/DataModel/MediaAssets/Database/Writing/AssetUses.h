#pragma once

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"

#include <cstdint>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// What assets use of that which they share: resources, tracks and groups. Finds what an asset uses, and
/// deletes what nothing uses any more once the asset has let go of it. All by keys. Internal to the library.
///
/// A track is used by the assets that are linked to it, and a group by its items. A resource is used by the
/// assets that are linked to it, and by the channels of tracks that take one of its streams.
///
/// The operations throw InvalidOperationException, with a log entry, when SQLite fails, and
/// ObjectClosedException, likewise, when it refuses a statement.
class AssetUses {
 public:
  explicit AssetUses(Common::Databases::Sqlite::DatabaseSqlite& usedDatabase);

  /// The resources that the asset is linked to. None occurs twice, in ascending order, as in all of these.
  std::vector<int64_t> LinkedResources(int64_t asset);
  /// The resources whose streams the tracks of the asset take.
  std::vector<int64_t> TrackedResources(int64_t asset);
  /// The resources whose streams a track takes.
  std::vector<int64_t> ResourcesOfTrack(int64_t track);
  std::vector<int64_t> Streams(int64_t resource);
  std::vector<int64_t> Tracks(int64_t asset);
  std::vector<int64_t> Groups(int64_t asset);
  /// Whether an asset other than that one is linked to the resource.
  bool IsLinkedElsewhere(int64_t resource, int64_t asset);

  /// Delete those that nothing uses any more. Tracks come before resources, which they may be the last to
  /// use.
  void DeleteUnusedTracks(const std::vector<int64_t>& tracks);
  void DeleteUnusedResources(const std::vector<int64_t>& resources);
  void DeleteUnusedGroups(const std::vector<int64_t>& groups);

 private:
  std::vector<int64_t> Find(Common::Databases::Sqlite::PreparedStatement& select, int64_t owner);
  void RunForEach(Common::Databases::Sqlite::PreparedStatement& statement, const std::vector<int64_t>& keys);

  Common::Databases::Sqlite::DatabaseSqlite& database;
  Common::Databases::Sqlite::PreparedStatement linkedResources;
  Common::Databases::Sqlite::PreparedStatement trackedResources;
  Common::Databases::Sqlite::PreparedStatement resourcesOfTrack;
  Common::Databases::Sqlite::PreparedStatement streams;
  Common::Databases::Sqlite::PreparedStatement linkedTracks;
  Common::Databases::Sqlite::PreparedStatement groups;
  Common::Databases::Sqlite::PreparedStatement linkElsewhere;
  Common::Databases::Sqlite::PreparedStatement deleteUnusedTrack;
  Common::Databases::Sqlite::PreparedStatement deleteUnusedResource;
  Common::Databases::Sqlite::PreparedStatement deleteUnusedGroup;
};

}  // namespace Oru::DataModel::MediaAssets::Database
