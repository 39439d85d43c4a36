#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/EssenceEncapsulated.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"
#include "Oru/DataModel/MediaAssets/Essence.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

class AudioEssenceTable;
class DataEssenceTable;
class VideoEssenceTable;

/// What essences of all kinds have in common, with their metadata; the kinds add a row each in a table of
/// their own. An essence is known by its number within its stream.
class ORU_DATAMODEL_DATABASE_EXPORT EssenceTable
    : public Common::Databases::Sqlite::DeclaredTable<
          EssenceTable, BusinessEntityModel::BaseTypes::PersistentObject, EssenceEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit EssenceTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~EssenceTable() override;

  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Stores essences of any kinds under a stream. Stored essences that aren't in the array stay.
  /// @return false, with a log entry, at the first essence that is refused; those before it are written
  bool Write(const EssenceArray& essences, int64_t fk);
  bool Write(const EssenceArray& essences, int64_t fk, Common::Databases::Sqlite::OwnerRow stream);

  /// Stores the row of all kinds and replaces the metadata. An object id of -1 is looked up by stream and
  /// number.
  bool Save(EssenceEncapsulated& obj, bool lazy) override;

  /// Adds the stored metadata of an essence to it. No other read operation does.
  void ReadMetadata(Essence& essence);

  /// The key of the essence with that number in a stream, -1 when there is none.
  int64_t GetObjectIdFromEssenceNr(int64_t streamRef, int32_t number);

  MetadataTable& GetMetadataTable() { return *metadataTable; }
  AudioEssenceTable& GetAudioEssenceTable();
  DataEssenceTable& GetDataEssenceTable();
  VideoEssenceTable& GetVideoEssenceTable();

  bool BindToCursor(Common::Databases::Cursor& cursor, EssenceEncapsulated& obj) override;
  /// @param obj  the base of an `Essence`
  void ReadFromCursor(const Common::Databases::Cursor& cursor,
                      BusinessEntityModel::BaseTypes::PersistentObject& obj, bool lazy) override;
  void SetObjectId(EssenceEncapsulated& obj, int64_t objectId) override;
  int64_t GetObjectId(EssenceEncapsulated& obj) const override { return obj.essence.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { Key, RefStream, Nr, ChannelCount };
  };
  static const std::array<std::string, 4> columnNames;

 private:
  using KindTable =
      Common::Databases::Table<BusinessEntityModel::BaseTypes::PersistentObject, EssenceEncapsulated>;

  // By `Essence::Type`.
  std::array<std::unique_ptr<KindTable>, 3> table;
  std::unique_ptr<MetadataTable> metadataTable;
  Common::Databases::Sqlite::PreparedStatement keyByNr;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_TABLE_TEMPLATES(extern, Oru::BusinessEntityModel::BaseTypes::PersistentObject,
                    Oru::DataModel::MediaAssets::Database::EssenceEncapsulated)
