#include "Oru/DataModel/MediaAssets/Database/Writing/AssetUses.h"

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;

// CROSS JOIN keeps SQLite to the order of the tables: https://sqlite.org/optoverview.html#crossjoin
AssetUses::AssetUses(Sqlite::DatabaseSqlite& usedDatabase)
    : database(usedDatabase),
      linkedResources(
          "SELECT DISTINCT refMediaResource FROM RelationMediaAssetMediaResource WHERE refMediaAsset = ?"
          " ORDER BY refMediaResource"),
      trackedResources(
          "SELECT DISTINCT s.refMediaResource FROM RelationAssetTrack r"
          " CROSS JOIN TrackChannel c ON c.refTrack = r.refTrack CROSS JOIN Essence e ON e.key = c.refEssence"
          " CROSS JOIN Stream s ON s.key = e.refStream WHERE r.refMediaAsset = ?"
          " ORDER BY s.refMediaResource"),
      resourcesOfTrack(
          "SELECT DISTINCT s.refMediaResource FROM TrackChannel c CROSS JOIN Essence e ON e.key = "
          "c.refEssence"
          " CROSS JOIN Stream s ON s.key = e.refStream WHERE c.refTrack = ? ORDER BY s.refMediaResource"),
      streams("SELECT key FROM Stream WHERE refMediaResource = ? ORDER BY key"),
      linkedTracks(
          "SELECT DISTINCT refTrack FROM RelationAssetTrack WHERE refMediaAsset = ? ORDER BY refTrack"),
      groups(
          "SELECT DISTINCT refMediaAssetGroup FROM MediaAssetGroupItem WHERE refMediaAsset = ?"
          " ORDER BY refMediaAssetGroup"),
      linkElsewhere(
          "SELECT 1 FROM RelationMediaAssetMediaResource WHERE refMediaResource = ? AND refMediaAsset <> ?"),
      deleteUnusedTrack(
          "DELETE FROM Track WHERE key = ?1"
          " AND NOT EXISTS (SELECT 1 FROM RelationAssetTrack WHERE refTrack = ?1)"),
      deleteUnusedResource(
          "DELETE FROM MediaResource WHERE key = ?1"
          " AND NOT EXISTS (SELECT 1 FROM RelationMediaAssetMediaResource WHERE refMediaResource = ?1)"
          " AND NOT EXISTS (SELECT 1 FROM Stream s CROSS JOIN Essence e ON e.refStream = s.key"
          " CROSS JOIN TrackChannel c ON c.refEssence = e.key WHERE s.refMediaResource = ?1)"),
      deleteUnusedGroup(
          "DELETE FROM MediaAssetGroup WHERE key = ?1"
          " AND NOT EXISTS (SELECT 1 FROM MediaAssetGroupItem WHERE refMediaAssetGroup = ?1)") {}

std::vector<int64_t> AssetUses::Find(Sqlite::PreparedStatement& select, int64_t owner) {
  Sqlite::PreparedStatement::Run run(select, database, owner);
  std::vector<int64_t> keys;
  while (run.Step())
    keys.push_back(run.Row().GetInt64(0));
  return keys;
}

std::vector<int64_t> AssetUses::LinkedResources(int64_t asset) {
  return Find(linkedResources, asset);
}

std::vector<int64_t> AssetUses::TrackedResources(int64_t asset) {
  return Find(trackedResources, asset);
}

std::vector<int64_t> AssetUses::ResourcesOfTrack(int64_t track) {
  return Find(resourcesOfTrack, track);
}

std::vector<int64_t> AssetUses::Streams(int64_t resource) {
  return Find(streams, resource);
}

std::vector<int64_t> AssetUses::Tracks(int64_t asset) {
  return Find(linkedTracks, asset);
}

std::vector<int64_t> AssetUses::Groups(int64_t asset) {
  return Find(groups, asset);
}

bool AssetUses::IsLinkedElsewhere(int64_t resource, int64_t asset) {
  return linkElsewhere.FindKey(database, resource, asset) != -1;
}

void AssetUses::DeleteUnusedTracks(const std::vector<int64_t>& tracks) {
  RunForEach(deleteUnusedTrack, tracks);
}

void AssetUses::DeleteUnusedResources(const std::vector<int64_t>& resources) {
  RunForEach(deleteUnusedResource, resources);
}

void AssetUses::DeleteUnusedGroups(const std::vector<int64_t>& unused) {
  RunForEach(deleteUnusedGroup, unused);
}

void AssetUses::RunForEach(Sqlite::PreparedStatement& statement, const std::vector<int64_t>& keys) {
  for (const int64_t key : keys)
    Sqlite::PreparedStatement::Run(statement, database, key).Step();
}

}  // namespace Oru::DataModel::MediaAssets::Database
