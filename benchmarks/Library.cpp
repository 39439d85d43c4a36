#include "Library.h"

#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"

#include <stdexcept>
#include <utility>

namespace Oru::Benchmarks {

using Common::Databases::Sqlite::FullTextExpression;
using Common::Databases::Sqlite::QuerySqlite;
using DataModel::MediaAssets::Database::DataModelDatabase;
using DataModel::MediaAssets::Database::MediaAssetTable;

namespace {

void Require(bool isDone) {
  if (!isDone) throw std::runtime_error("a table refused");
}

QuerySqlite BestMatches(const std::string& word, int limit) {
  QuerySqlite query;
  query.Match("MediaAssetFts", FullTextExpression::AllWords(word));
  query.OrderByAsc("MediaAssetFts.rank").Limit(limit, 0);
  return query;
}

class Library final : public Side {
 public:
  explicit Library(DataModelDatabase& openDatabase)
      : database(openDatabase), assets(openDatabase.GetMediaAssetTable()) {}

  void Begin() override { database.BeginTransaction(); }
  void Commit() override { database.EndTransaction(true); }

  void Save(MediaAsset& asset) override { Require(assets.Save(asset, true)); }

  int64_t FindKey(const Identifier& id) override { return assets.GetObjectIdFromIdentifier(id); }

  bool GetAsset(int64_t key, MediaAsset& asset) override { return assets.GetObject(key, asset); }

  void ReadDeep(int64_t key, MediaAsset& asset) override {
    if (!assets.GetObject(key, asset)) return;
    ReadOwnParts(asset);
    assets.ReadMediaResources(asset);
    assets.ReadTrack(asset);
  }

  void ReadLazy(int64_t key, MediaAsset& asset) override {
    if (!assets.GetObject(key, asset)) return;
    ReadOwnParts(asset);
    assets.ReadMediaResourcesLazy(asset);
    assets.ReadTrackLazy(asset);
  }

  int Walk() override {
    int count = 0;
    MediaAsset asset;
    for (const auto cursor = assets.OpenObjectCursor(true); cursor->Next(asset); ++count) {
    }
    return count;
  }

  // Without a query the library reads no index that nothing names.
  int WalkPlain() override { return Walk(); }

  std::vector<MediaAsset> Search(const std::string& text, int limit) override {
    QuerySqlite query;
    query.Contains("MediaAsset.name", text).Limit(limit, 0);
    return ReadAssets(query);
  }

  std::vector<MediaAsset> Match(const std::string& word, int limit) override {
    QuerySqlite query = BestMatches(word, limit);
    return ReadAssets(query);
  }

  std::vector<std::string> MatchNames(const std::string& word, int limit) override {
    QuerySqlite query = BestMatches(word, limit);
    std::vector<std::string> found;
    const auto cursor = assets.OpenRawCursor(query);
    while (cursor->Next()) {
      found.push_back(cursor->GetString("id"));
      found.push_back(cursor->GetString("nameFts"));
    }
    return found;
  }

  void Delete(MediaAsset& asset) override { Require(assets.Delete(asset)); }

  void DeleteAbove(int64_t key) override {
    QuerySqlite query;
    query.GreaterThan("key", key);
    Require(assets.Delete(query));
  }

  void SaveGroup(AnglesMediaAssetGroup& group) override {
    Require(database.GetAnglesMediaAssetGroupTable().Save(group, true));
  }

  void ReadGroup(const Identifier& id, AnglesMediaAssetGroup& group) override {
    auto& groups = database.GetAnglesMediaAssetGroupTable();
    if (!groups.GetObject(groups.GetObjectIdFromIdentifier(id), group)) return;
    database.GetMediaAssetGroupTable().ReadAnglesMediaAssetGroupItems(group, false);
    groups.ReadDapOperatorProfileTable(group);
  }

  void SaveSequence(Sequence& sequence) override { Require(database.GetSequenceTable().Save(sequence)); }

  void ReadSequence(const Identifier& id, Sequence& sequence) override {
    auto& sequences = database.GetSequenceTable();
    if (!sequences.GetObject(sequences.GetObjectIdFromIdentifier(id), sequence)) return;
    sequences.ReadMetadata(sequence);
    sequences.ReadDapOperatorProfileTable(sequence);
  }

 private:
  void ReadOwnParts(MediaAsset& asset) {
    assets.ReadTimebounds(asset);
    assets.ReadMetadata(asset);
    assets.ReadDapOperatorMetadata(asset);
    assets.ReadAnnotations(asset);
  }

  std::vector<MediaAsset> ReadAssets(QuerySqlite& query) {
    std::vector<MediaAsset> found;
    const auto cursor = assets.OpenObjectCursor(query, true);
    for (MediaAsset asset; cursor->Next(asset); asset = MediaAsset())
      found.push_back(std::move(asset));
    return found;
  }

  DataModelDatabase& database;
  MediaAssetTable& assets;
};

}  // namespace

std::unique_ptr<Side> MakeLibrarySide(DataModelDatabase& database) {
  return std::make_unique<Library>(database);
}

}  // namespace Oru::Benchmarks
