#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/AnglesDapMetadataEncapsulated.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// The operator identity of multi-angle groups: one row at most per group, under the group's key.
class ORU_DATAMODEL_DATABASE_EXPORT AnglesDapOperatorMetadataTable
    : public Common::Databases::Sqlite::OwnerKeyTable<
          AnglesDapOperatorMetadataTable, AnglesDapOperatorMetadataProfile, AnglesDapMetadataEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit AnglesDapOperatorMetadataTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~AnglesDapOperatorMetadataTable() override;

  using OwnerKeyTable::ReadFromCursor;
  using OwnerKeyTable::Save;

  /// Stores the operator identity of a dictionary for a group. Without one nothing is written and what is
  /// stored stays.
  /// @throws std::invalid_argument, with nothing written, for a page, bank or clip outside 0 to 255
  bool Write(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadataDictionary, int64_t fk);
  /// Stores a profile, whose object id becomes the group's key.
  /// @throws std::invalid_argument, with nothing written, for a page, bank or clip outside 0 to 255
  bool Save(AnglesDapMetadataEncapsulated& obj, bool lazy) override { return SaveUnder(obj.fk, obj, lazy); }

  bool BindToCursor(Common::Databases::Cursor& cursor, AnglesDapMetadataEncapsulated& obj) override;
  /// Reads the row. A server number, page, bank or clip outside its range is passed over: the profile keeps
  /// what it holds.
  void ReadFromCursor(const Common::Databases::Cursor& cursor, AnglesDapOperatorMetadataProfile& obj,
                      bool lazy) override;
  void SetObjectId(AnglesDapMetadataEncapsulated& obj, int64_t objectId) override;
  int64_t GetObjectId(AnglesDapMetadataEncapsulated& obj) const override { return obj.metadata.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { RefAngles, ZuServerId, DapIdPage, DapIdBank, DapIdRow };
  };
  static const std::array<std::string, 5> columnNames;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::AnglesDapOperatorMetadataProfile,
                    Oru::DataModel::MediaAssets::AnglesDapMetadataEncapsulated)
