#pragma once

#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Oru::Benchmarks {

/// The same jobs as those of `Rival`, as a program does them with the library.
///
/// Threads: an object belongs to one thread at a time.
class Library {
 public:
  using Identifier = BusinessEntityModel::BaseTypes::Identifier;
  using MediaAsset = DataModel::MediaAssets::MediaAsset;
  using AnglesMediaAssetGroup = DataModel::MediaAssets::AnglesMediaAssetGroup;
  using Sequence = BusinessEntityModel::Edits::Sequence;

  /// @param openDatabase  must outlive the object
  explicit Library(DataModel::MediaAssets::Database::DataModelDatabase& openDatabase)
      : database(openDatabase), assets(openDatabase.GetMediaAssetTable()) {}

  void Begin() { database.BeginTransaction(); }
  void Commit() { database.EndTransaction(true); }

  /// The writing operations throw std::runtime_error where a table gives false.
  void Save(MediaAsset& asset);
  int64_t FindKey(const Identifier& id) { return assets.GetObjectIdFromIdentifier(id); }
  bool GetAsset(int64_t key, MediaAsset& asset) { return assets.GetObject(key, asset); }
  void ReadDeep(int64_t key, MediaAsset& asset);
  void ReadLazy(int64_t key, MediaAsset& asset);
  int Walk();
  int WalkPlain() { return Walk(); }
  std::vector<MediaAsset> Search(const std::string& text, int limit);
  std::vector<MediaAsset> Match(const std::string& word, int limit);
  std::vector<std::string> MatchNames(const std::string& word, int limit);
  void Delete(MediaAsset& asset);
  void DeleteAbove(int64_t key);

  void SaveGroup(AnglesMediaAssetGroup& group);
  void ReadGroup(const Identifier& id, AnglesMediaAssetGroup& group);
  void SaveSequence(Sequence& sequence);
  void ReadSequence(const Identifier& id, Sequence& sequence);

 private:
  std::vector<MediaAsset> ReadAssets(Common::Databases::Query& query);
  void ReadOwnParts(MediaAsset& asset);

  DataModel::MediaAssets::Database::DataModelDatabase& database;
  DataModel::MediaAssets::Database::MediaAssetTable& assets;
};

}  // namespace Oru::Benchmarks
