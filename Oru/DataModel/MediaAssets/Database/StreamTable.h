#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/EssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"
#include "Oru/DataModel/MediaAssets/Database/StreamEncapsulated.h"
#include "Oru/DataModel/MediaAssets/Database/TimeBoundsTable.h"
#include "Oru/DataModel/MediaAssets/Stream.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// The streams of media resources, with their essences, time bounds and technical metadata. The locations of
/// a stream aren't stored.
class ORU_DATAMODEL_DATABASE_EXPORT StreamTable
    : public Common::Databases::Sqlite::DeclaredTable<
          StreamTable, BusinessEntityModel::BaseTypes::PersistentObject, StreamEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit StreamTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~StreamTable() override;

  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Stores a stream with all that it holds. An object id of -1 is looked up by the identifier; a stream that
  /// is stored under another resource moves to the one that saves it. Stored essences that it no longer holds
  /// stay.
  bool Save(StreamEncapsulated& obj, bool lazy) override;
  /// Stores the loaded streams of the references under a resource, passing over those that hold an identifier
  /// only.
  /// @return false, with a log entry, at the first stream that is refused; those before it are written
  bool Write(StreamReferenceVector& references, int64_t fk, bool lazy);

  /// Add what is stored to a stream that has its object id. None clears a collection first.
  void ReadMetadata(Stream& stream);
  /// @throws std::runtime_error when the stream already holds one of the bounds
  void ReadTimebounds(Stream& stream);
  /// The essences come in the order of their stored numbers and are numbered again by their places.
  void ReadEssences(Stream& stream);
  /// Append the essences of one kind of the stream with that key:
  void ReadVideosEssences(int64_t streamKey, std::vector<std::unique_ptr<Essence>>& essences);
  void ReadAudioEssences(int64_t streamKey, std::vector<std::unique_ptr<Essence>>& essences);
  void ReadDataEssences(int64_t streamKey, std::vector<std::unique_ptr<Essence>>& essences);

  /// The key of the stream with that identifier, -1 when there is none.
  int64_t GetObjectIdFromIdentifier(const BusinessEntityModel::BaseTypes::Identifier& id) const;

  TimeBoundsTable& GetTimeBoundsTable() { return *timeBoundsTable; }
  MetadataTable& GetMetadataTable() { return *metadataTable; }
  EssenceTable& GetEssenceTable() { return *essenceTable; }
  AudioEssenceTable& GetAudioEssenceTable() { return essenceTable->GetAudioEssenceTable(); }
  DataEssenceTable& GetDataEssenceTable() { return essenceTable->GetDataEssenceTable(); }
  VideoEssenceTable& GetVideoEssenceTable() { return essenceTable->GetVideoEssenceTable(); }

  bool BindToCursor(Common::Databases::Cursor& cursor, StreamEncapsulated& obj) override;
  /// @param obj  the base of a `Stream`
  void ReadFromCursor(const Common::Databases::Cursor& cursor,
                      BusinessEntityModel::BaseTypes::PersistentObject& obj, bool lazy) override;
  void SetObjectId(StreamEncapsulated& obj, int64_t objectId) override;
  int64_t GetObjectId(StreamEncapsulated& obj) const override { return obj.stream.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { Key, Id, RefMediaResource, WrapperFormat };
  };
  static const std::array<std::string, 4> columnNames;
  /// Finds the key of the row with an identifier, which the statement that is run takes as a parameter after
  /// it.
  static const std::string objectIdFromIdentifierQuery;

 private:
  std::unique_ptr<EssenceTable> essenceTable;
  std::unique_ptr<TimeBoundsTable> timeBoundsTable;
  std::unique_ptr<MetadataTable> metadataTable;
  mutable Common::Databases::Sqlite::PreparedStatement keyByIdentifier;
};

}  // namespace Oru::DataModel::MediaAssets::Database

// The view's templates are those of `EssenceTable`, which reads the same type.
extern template class Oru::Common::Databases::Sqlite::ObjectCursorSqlite<
    Oru::BusinessEntityModel::BaseTypes::PersistentObject,
    Oru::DataModel::MediaAssets::Database::StreamEncapsulated>;
ORU_WRITER_TEMPLATES(extern, Oru::BusinessEntityModel::BaseTypes::PersistentObject,
                     Oru::DataModel::MediaAssets::Database::StreamEncapsulated)
