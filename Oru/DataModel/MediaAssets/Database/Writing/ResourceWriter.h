#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableSqlite.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/EssenceEncapsulated.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/AssetUses.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// Writes the resources of an asset, with their streams and essences, so that the file holds them as the
/// objects are: streams and essences that they no longer hold go. Resources and streams go by their
/// identifiers, and essences by their numbers. Internal to the library.
class ResourceWriter {
 public:
  ResourceWriter(DataModelDatabase& writtenDatabase, AssetUses& assetUses);

  /// Stores the resources that the asset holds, and finds those of which it only knows the identifier. The
  /// links to them are left alone.
  /// @param asset   has its key
  /// @param linked  the resources that the asset is linked to in the file, in ascending order
  /// @return the keys of all resources that the asset refers to, in ascending order
  /// @throws NotStoredException when the asset refers to a resource or a stream that isn't stored, or to a
  ///         stream of another resource; InvalidOperationException and ObjectClosedException when SQLite
  ///         fails
  std::vector<int64_t> Write(MediaAsset& asset, const std::vector<int64_t>& linked);

 private:
  using KindTable = Common::Databases::Sqlite::TableSqlite<BusinessEntityModel::BaseTypes::PersistentObject,
                                                           EssenceEncapsulated>;
  struct StoredStream {
    int64_t key = -1;
    int64_t resource = -1;
  };
  struct StoredEssence {
    int64_t key;
    // By `Essence::Type`.
    std::array<bool, 3> isOfKind;
  };
  // The asset that is being written.
  struct Writing {
    const MediaAsset& asset;
    const std::vector<int64_t>& linked;
    // The resources that it refers to, and those of them that it holds.
    std::vector<int64_t> keys;
    std::vector<int64_t> heldKeys;
  };

  int64_t WriteRow(const Writing& writing, MediaResource& resource);
  void WriteStreams(const Writing& writing, MediaResource& resource);
  void WriteStream(const Writing& writing, Stream& stream, int64_t resource);
  bool MayTakeStreamFrom(const Writing& writing, int64_t resource);
  void DeleteStreamsNotIn(const Writing& writing, MediaResource& resource);
  void WriteEssences(const Writing& writing, Stream& stream, bool isNew);
  void WriteEssence(const Writing& writing, Essence& essence, int64_t stream, const StoredEssence* stored);
  StoredStream FindStream(const BusinessEntityModel::BaseTypes::Identifier& id);
  std::map<int32_t, StoredEssence> FindEssences(int64_t stream);
  std::string ResourceName(int64_t key);
  void Require(const Writing& writing, bool isDone) const;

  DataModelDatabase& database;
  AssetUses& uses;
  MediaResourceTable& resources;
  StreamTable& streams;
  EssenceTable& essences;
  // By `Essence::Type`.
  std::array<KindTable*, 3> kinds;
  Common::Databases::Sqlite::PreparedStatement streamById;
  Common::Databases::Sqlite::PreparedStatement essencesOfStream;
  Common::Databases::Sqlite::PreparedStatement resourceByKey;
};

}  // namespace Oru::DataModel::MediaAssets::Database
