#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/StreamTable.h"
#include "Oru/DataModel/MediaAssets/MediaResource.h"
#include "Oru/DataModel/MediaAssets/MediaResourceReferenceVector.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// Media resources, with their streams, time bounds and technical metadata. Several assets may share a
/// resource.
///
/// Deletion is by row: what the resource owns is deleted by cascade. Resources that no asset uses any more are
/// removed by `MediaAssetTable`.
class ORU_DATAMODEL_DATABASE_EXPORT MediaResourceTable
    : public Common::Databases::Sqlite::DeclaredTable<MediaResourceTable, MediaResource, MediaResource> {
 public:
  /// @param database  must outlive the table
  explicit MediaResourceTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~MediaResourceTable() override;

  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Stores a resource with all that it holds. An object id of -1 is looked up by the identifier. Stored
  /// streams that it no longer holds stay.
  bool Save(MediaResource& obj, bool lazy) override;
  /// Stores the loaded resources of the references, passing over those that hold an identifier only.
  /// @return false, with a log entry, at the first resource that is refused; those before it are written
  bool Write(MediaResourceReferenceVector& references, bool lazy);

  /// Add what is stored to a resource that has its object id. None clears a collection first.
  void ReadMetadata(MediaResource& mediaResource);
  /// @throws std::runtime_error when the resource already holds one of the bounds
  void ReadTimebounds(MediaResource& mediaResource);
  /// The streams with their time bounds, metadata and essences.
  void ReadStreams(MediaResource& mediaResource);
  /// The streams with their time bounds and metadata.
  void ReadStreamsLazy(MediaResource& mediaResource);

  /// The key of the resource with that identifier, -1 when there is none.
  int64_t GetObjectIdFromIdentifier(const BusinessEntityModel::BaseTypes::Identifier& id) const;

  TimeBoundsTable& GetTimeBoundsTable() { return *timeBoundsTable; }
  MetadataTable& GetMetadataTable() { return *metadataTable; }
  StreamTable& GetStreamTable() { return *streamTable; }

  bool BindToCursor(Common::Databases::Cursor& cursor, MediaResource& object) override;
  /// Reads the row.
  /// @throws std::runtime_error when its modification date is before its creation date
  void ReadFromCursor(const Common::Databases::Cursor& cursor, MediaResource& object, bool lazy) override;
  void SetObjectId(MediaResource& obj, int64_t objectId) override { obj.ObjectId(objectId); }
  int64_t GetObjectId(MediaResource& obj) const override { return obj.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { Key, Id, Name, GeneralFormat, ModificationDate, CreationDate };
  };
  static const std::array<std::string, 6> columnNames;
  /// Finds the key of the row with an identifier, which the statement that is run takes as a parameter after
  /// it.
  static const std::string objectIdFromIdentifierQuery;

 private:
  enum class Depth { Lazy, Deep };
  void ReadStreams(MediaResource& mediaResource, Depth depth);

  std::unique_ptr<StreamTable> streamTable;
  std::unique_ptr<TimeBoundsTable> timeBoundsTable;
  std::unique_ptr<MetadataTable> metadataTable;
  mutable Common::Databases::Sqlite::PreparedStatement keyByIdentifier;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::MediaResource)
