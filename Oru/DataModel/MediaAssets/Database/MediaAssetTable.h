#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/AnnotationTable.h"
#include "Oru/DataModel/MediaAssets/Database/DapOperatorMetadataTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MediaResourceTable.h"
#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"
#include "Oru/DataModel/MediaAssets/Database/RelationAssetTrackTable.h"
#include "Oru/DataModel/MediaAssets/Database/RelationMediasTable.h"
#include "Oru/DataModel/MediaAssets/Database/TimeBoundsTable.h"
#include "Oru/DataModel/MediaAssets/Database/TrackTable.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

class MediaAssetGroupTable;
class UnusedRows;

/// Media assets, with all that belongs to them.
///
/// A save writes an asset whole, in a fixed order, and stops at the first part that fails; it opens no
/// transaction. Bracket it with a `TransactionGuard` to have all or nothing, and to be fast.
///
/// A read comes in two stages. Cursors and `GetObject` fill the asset's own columns; the `Read...` operations
/// add what belongs to an asset that has its object id, one kind each, as the caller asks for them. None
/// clears a collection first. They pass on the exceptions of cursors (InvalidOperationException,
/// ObjectClosedException); what was added before stays.
///
/// A row whose modification date is before its creation date can't be read: std::runtime_error ends the
/// walk.
///
/// Every row comes through `MediaAssetFts`, the full-text index over name and description, which
/// `Query::Match` searches. In a query these two are written `MediaAsset.name` and `MediaAsset.description`;
/// a raw cursor also has the columns `nameFts` and `descriptionFts`, which mark matched terms with <b> and
/// </b>.
class ORU_DATAMODEL_DATABASE_EXPORT MediaAssetTable
    : public Common::Databases::Sqlite::DeclaredTable<MediaAssetTable, MediaAsset, MediaAsset> {
 public:
  /// @param database  must outlive the table
  explicit MediaAssetTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~MediaAssetTable() override;

  using DeclaredTable::Delete;
  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Stores an asset with all that it holds. An object id of -1 is looked up by the identifier.
  ///
  /// Annotations, time bounds and generic metadata replace the stored ones. An operator's profile replaces
  /// the stored one, and its absence leaves it alone. Loaded resources and tracks are stored, and none is
  /// removed. The links to them are written when the asset is inserted and at no other time.
  /// @return false at the first part that fails, with a log entry that says why: SQLite refused it, the file
  ///         is locked, or a read would refuse it (a time code with a negative count, a null pointer). What
  ///         was written before stays, and the asset keeps the object id that it reached
  /// @throws std::invalid_argument at a page, bank or row of the operator's profile that isn't between 0 and
  ///         255 (`DapId::Unset`), such as -1 or 256; std::bad_cast at a metadata profile that is neither
  ///         generic nor the operator's; ObjectClosedException, with a log entry, when the database is closed
  ///         or the file has no tables. What was written before stays then too
  bool Save(MediaAsset& obj, bool lazy) override;

  /// Delete assets, with all that they own, and then whatever no asset uses any more
  /// (`CleanUpDependentData`). The form that takes an asset sets its object id to -1; the others touch no
  /// object in memory.
  /// @return false, with a log entry, when the database refuses; a failed clean-up leaves the assets deleted,
  ///         and the next deletion makes up for it
  bool Delete(Common::Databases::Query& query) override;
  /// Deletes the assets that the operator keeps on one server.
  bool DeleteByServerId(ZuServerId serverId);

  /// Delete what no asset uses: resources and tracks without a link, whatever stored them, and groups without
  /// items:
  bool DeleteUnusedMediaResources();
  bool DeleteUnusedTracks();
  bool DeleteEmptyAssetGroups();
  /// The three above, in this order, up to the first that fails.
  bool CleanUpDependentData();

  /// @throws std::runtime_error when the asset already holds one of the bounds
  void ReadTimebounds(MediaAsset& mediaAsset);
  /// @throws std::bad_cast when the asset holds a profile of another class under the name of a stored one
  void ReadMetadata(MediaAsset& mediaAsset);
  /// The operator's profile with its keywords, a default one when none is stored. A profile that the asset
  /// already holds is filled.
  /// @throws std::bad_cast when the asset holds another class of profile under that name; std::out_of_range
  ///         for a stored time code with a negative count
  void ReadDapOperatorMetadata(MediaAsset& mediaAsset);
  /// The keywords of the operator's profile, which is made when the asset holds none.
  void ReadDapOperatorKeyword(MediaAsset& mediaAsset);
  /// The annotations with their metadata, in the order of the last save.
  void ReadAnnotations(MediaAsset& mediaAsset);
  /// The metadata of the annotation with that key.
  void ReadMetadata(int64_t id, Annotation& annotation);
  /// The resources with their metadata, time bounds, streams and essences.
  /// @throws std::runtime_error when the asset already refers to one of them
  void ReadMediaResources(MediaAsset& mediaAsset);
  /// References to the resources, each with an identifier only.
  /// @throws std::runtime_error when the asset already refers to one of them
  void ReadMediaResourcesLazy(MediaAsset& mediaAsset);
  /// The tracks with their channels, each with its stream and essences.
  /// @throws std::runtime_error when the asset already holds one of them
  void ReadTrack(MediaAsset& mediaAsset);
  /// The tracks with their channels, each with the identifier of its stream.
  /// @throws std::runtime_error when the asset already holds one of them
  void ReadTrackLazy(MediaAsset& mediaAsset);
  /// Sets one stored entry in a dictionary, in a new profile if there is none of the row's name.
  /// @throws std::bad_cast when the profile of that name isn't a generic one
  void AddMetadata(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadataProfileDictionary,
                   const MetadataRow& metadataRow) const;

  /// The key of the asset with that identifier, -1 when there is none.
  int64_t GetObjectIdFromIdentifier(const BusinessEntityModel::BaseTypes::Identifier& id) const;

  MediaResourceTable& GetMediaResourceTable() { return *mediaResouceTable; }
  RelationMediasTable& GetRelationMediasTable() { return *relationMediasTable; }
  DapOperatorMetadataTable& GetDapOperatorMetadataTable() { return *dapOperatorMetadataTable; }
  DapOperatorKeywordsTable& GetDapOperatorKeywordsTable() {
    return dapOperatorMetadataTable->GetDapOperatorKeywordsTable();
  }
  TimeBoundsTable& GetTimeBoundsTable() { return *timeBoundsTable; }
  MetadataTable& GetMetadataTable() { return *metadataTable; }
  AnnotationTable& GetAnnotationTable() { return *annotationTable; }
  TrackTable& GetTrackTable() { return *trackTable; }
  RelationAssetTrackTable& GetRelationAssetTrackTable() { return *relationAssetTrackTable; }
  StreamTable& GetStreamTable() { return mediaResouceTable->GetStreamTable(); }
  EssenceTable& GetEssenceTable() { return GetStreamTable().GetEssenceTable(); }
  AudioEssenceTable& GetAudioEssenceTable() { return GetStreamTable().GetAudioEssenceTable(); }
  DataEssenceTable& GetDataEssenceTable() { return GetStreamTable().GetDataEssenceTable(); }
  VideoEssenceTable& GetVideoEssenceTable() { return GetStreamTable().GetVideoEssenceTable(); }

  const std::string& GetSelectColumnName(int32_t index) const override;
  const std::string& GetSelectColumnAlias(int32_t index) const override;
  int32_t GetSelectColumnsCount() const override;
  const std::string& GetFromClause() const override;
  /// The same columns without a look into the full-text index, which marks nothing where nothing is matched.
  const std::string& GetPlainSelectStatement() const override { return plainSelectStatement; }
  bool IsPlain(const Common::Databases::Sqlite::QuerySqlite& query) const override;
  bool BindToCursor(Common::Databases::Cursor& cursor, MediaAsset& obj) override;
  /// Reads the row. References that are stored replace those of the asset; absent ones leave them as they
  /// are.
  void ReadFromCursor(const Common::Databases::Cursor& cursor, MediaAsset& obj, bool lazy) override;
  void SetObjectId(MediaAsset& obj, int64_t objectId) override { obj.ObjectId(objectId); }
  int64_t GetObjectId(MediaAsset& obj) const override { return obj.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t {
      Key,
      Id,
      AssetType,
      Ancestor,
      Parent,
      Name,
      Description,
      InBoundary,
      InBoundaryMoving,
      OutBoundary,
      OutBoundaryMoving,
      ModificationDate,
      CreationDate
    };
  };
  static const std::array<std::string, 13> columnNames;
  /// Finds the key of the row with an identifier, which the statement that is run takes as a parameter after
  /// it.
  static const std::string objectIdFromIdentifierQuery;
  /// The join with the full-text index that a read selects from, and what it selects: the columns and two
  /// marked texts of the index, each under its alias:
  static const std::string fromClause;
  static const std::array<std::string, 15> selectColumnNames;
  static const std::array<std::string, 15> selectColumnAliases;
  /// Finds the identifiers of an asset's resources; the statement that is run takes the asset's key as a
  /// parameter after it, and closes the parenthesis.
  static const std::string lazyMediaResourceQuery;

 private:
  void WatchDependentData();
  bool LinkMediaResources(MediaAsset& obj);
  bool LinkTracks(MediaAsset& obj);
  std::shared_ptr<DapOperatorMetadataProfile> OperatorProfile(MediaAsset& mediaAsset) const;
  template <class ReadChannels>
  void ReadTracks(MediaAsset& mediaAsset, ReadChannels readChannels);

  std::string plainSelectStatement;
  std::unique_ptr<MediaResourceTable> mediaResouceTable;
  std::unique_ptr<RelationMediasTable> relationMediasTable;
  std::unique_ptr<DapOperatorMetadataTable> dapOperatorMetadataTable;
  std::unique_ptr<TimeBoundsTable> timeBoundsTable;
  std::unique_ptr<MetadataTable> metadataTable;
  std::unique_ptr<AnnotationTable> annotationTable;
  std::unique_ptr<TrackTable> trackTable;
  std::unique_ptr<RelationAssetTrackTable> relationAssetTrackTable;
  std::unique_ptr<MediaAssetGroupTable> mediaAssetGroupTable;
  Common::Databases::Sqlite::PreparedStatement linkedResources;
  Common::Databases::Sqlite::PreparedStatement linkedTracks;
  Common::Databases::Sqlite::PreparedStatement lazyResources;
  std::unique_ptr<UnusedRows> unusedMediaResources;
  std::unique_ptr<UnusedRows> unusedTracks;
  std::unique_ptr<UnusedRows> emptyAssetGroups;
  mutable Common::Databases::Sqlite::PreparedStatement keyByIdentifier;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::MediaAsset)
