#include "Library.h"

#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"

#include <stdexcept>
#include <utility>

namespace Oru::Benchmarks {

using Common::Databases::Sqlite::FullTextExpression;
using Common::Databases::Sqlite::ObjectCursorSqlite;
using Common::Databases::Sqlite::QuerySqlite;

namespace {

void Require(bool isDone) {
  if (!isDone) throw std::runtime_error("a table refused");
}

}  // namespace

void Library::Save(MediaAsset& asset) {
  Require(assets.Save(asset, true));
}

void Library::ReadDeep(int64_t key, MediaAsset& asset) {
  if (!assets.GetObject(key, asset)) return;
  ReadOwnParts(asset);
  assets.ReadMediaResources(asset);
  assets.ReadTrack(asset);
}

void Library::ReadLazy(int64_t key, MediaAsset& asset) {
  if (!assets.GetObject(key, asset)) return;
  ReadOwnParts(asset);
  assets.ReadMediaResourcesLazy(asset);
  assets.ReadTrackLazy(asset);
}

void Library::ReadOwnParts(MediaAsset& asset) {
  assets.ReadTimebounds(asset);
  assets.ReadMetadata(asset);
  assets.ReadDapOperatorMetadata(asset);
  assets.ReadAnnotations(asset);
}

int Library::Walk() {
  int count = 0;
  MediaAsset asset;
  for (const auto cursor = assets.OpenObjectCursor(true); cursor->Next(asset); ++count) {
  }
  return count;
}

std::vector<DataModel::MediaAssets::MediaAsset> Library::Search(const std::string& text, int limit) {
  QuerySqlite query;
  query.Contains("MediaAsset.name", text).Limit(limit, 0);
  return ReadAssets(query);
}

namespace {

QuerySqlite BestMatches(const std::string& word, int limit) {
  QuerySqlite query;
  query.Match("MediaAssetFts", FullTextExpression::AllWords(word));
  query.OrderByAsc("MediaAssetFts.rank").Limit(limit, 0);
  return query;
}

}  // namespace

std::vector<DataModel::MediaAssets::MediaAsset> Library::Match(const std::string& word, int limit) {
  QuerySqlite query = BestMatches(word, limit);
  return ReadAssets(query);
}

std::vector<std::string> Library::MatchNames(const std::string& word, int limit) {
  QuerySqlite query = BestMatches(word, limit);
  std::vector<std::string> found;
  const auto cursor = assets.OpenRawCursor(query);
  while (cursor->Next()) {
    found.push_back(cursor->GetString("id"));
    found.push_back(cursor->GetString("nameFts"));
  }
  return found;
}

std::vector<DataModel::MediaAssets::MediaAsset> Library::ReadAssets(Common::Databases::Query& query) {
  std::vector<MediaAsset> found;
  const auto cursor = assets.OpenObjectCursor(query, true);
  for (MediaAsset asset; cursor->Next(asset); asset = MediaAsset())
    found.push_back(std::move(asset));
  return found;
}

void Library::Delete(MediaAsset& asset) {
  Require(assets.Delete(asset));
}

void Library::DeleteAbove(int64_t key) {
  QuerySqlite query;
  query.GreaterThan("key", key);
  Require(assets.Delete(query));
}

void Library::SaveGroup(AnglesMediaAssetGroup& group) {
  Require(database.GetAnglesMediaAssetGroupTable().Save(group, true));
}

void Library::ReadGroup(const Identifier& id, AnglesMediaAssetGroup& group) {
  auto& groups = database.GetAnglesMediaAssetGroupTable();
  if (!groups.GetObject(groups.GetObjectIdFromIdentifier(id), group)) return;
  database.GetMediaAssetGroupTable().ReadAnglesMediaAssetGroupItems(group, false);
  groups.ReadDapOperatorProfileTable(group);
}

void Library::SaveSequence(Sequence& sequence) {
  Require(database.GetSequenceTable().Save(sequence));
}

void Library::ReadSequence(const Identifier& id, Sequence& sequence) {
  auto& sequences = database.GetSequenceTable();
  if (!sequences.GetObject(sequences.GetObjectIdFromIdentifier(id), sequence)) return;
  sequences.ReadMetadata(sequence);
  sequences.ReadDapOperatorProfileTable(sequence);
}

}  // namespace Oru::Benchmarks
