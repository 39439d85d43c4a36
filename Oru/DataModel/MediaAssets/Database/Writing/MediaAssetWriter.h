#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/Common/Databases/Sqlite/OwnerRow.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/AssetUses.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/ResourceWriter.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <cstdint>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// Writes assets whole and removes them, by the tables, within the transaction of its caller. Internal to the
/// library.
///
/// What fails has written a part, and changed object ids: the caller rolls back and puts them back.
class MediaAssetWriter {
 public:
  explicit MediaAssetWriter(DataModelDatabase& writtenDatabase);

  /// The key of a stored asset, -1 when none has that identifier.
  /// @throws InvalidOperationException, with a log entry, when SQLite fails, as the other operations
  int64_t FindKey(const BusinessEntityModel::BaseTypes::Identifier& id);
  /// Whether the operator or the interface has protected the asset.
  bool IsProtected(int64_t key);

  /// Makes the file hold the asset as it is, as far as the object holds it. What the asset no longer uses,
  /// and nothing else does, goes.
  /// @param key  of the asset in the file, -1 for a new one
  /// @throws NotStoredException when the asset is at fault; InvalidOperationException, with a log entry, when
  ///         the file can't be written
  void Put(MediaAsset& asset, int64_t key);
  /// Stores a new asset with resources, streams and tracks that are all new.
  /// @throws as `Put`; NotStoredException also when one of these is stored already
  void PutNew(MediaAsset& asset);
  /// Stores a new asset that refers to the resources and tracks of another one.
  /// @param original  the key of the other asset
  /// @throws as `Put`
  void PutSharing(MediaAsset& asset, int64_t original);

  /// Removes an asset with what it owns, and what only it used: resources, tracks, and groups of which it was
  /// the last item.
  void Remove(int64_t key);

 private:
  void RequireNew(const MediaAsset& asset);
  void WriteOwn(MediaAsset& asset, int64_t key);
  void WriteOperatorProfile(MediaAsset& asset, Common::Databases::Sqlite::OwnerRow row);
  void WriteShared(MediaAsset& asset, bool isNew);
  std::vector<int64_t> WriteTracks(MediaAsset& asset, const std::vector<int64_t>& linked,
                                   std::vector<int64_t>& released);
  bool WriteChannels(const Track& track, bool isNew);
  [[noreturn]] void RefuseChannels(const MediaAsset& asset, const Track& track);
  void RelinkResources(const MediaAsset& asset, const std::vector<int64_t>& linked,
                       const std::vector<int64_t>& wanted);
  void RelinkTracks(const MediaAsset& asset, const std::vector<int64_t>& linked,
                    const std::vector<int64_t>& wanted);
  void Require(const MediaAsset& asset, bool isDone) const;

  DataModelDatabase& database;
  MediaAssetTable& assets;
  AssetUses uses;
  ResourceWriter resourceWriter;
  Common::Databases::Sqlite::PreparedStatement shareResources;
  Common::Databases::Sqlite::PreparedStatement shareTracks;
  Common::Databases::Sqlite::PreparedStatement channelsOfTrack;
  Common::Databases::Sqlite::PreparedStatement deleteAsset;
  Common::Databases::Sqlite::PreparedStatement protection;
};

}  // namespace Oru::DataModel::MediaAssets::Database
