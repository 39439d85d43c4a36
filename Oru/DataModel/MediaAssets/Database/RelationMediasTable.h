#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/RelationMedias.h"

#include <array>
#include <cstddef>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// The links of assets to media resources. Nothing keeps a pair from being stored twice; `MediaAssetTable`
/// writes links only for an asset that it has just inserted.
class ORU_DATAMODEL_DATABASE_EXPORT RelationMediasTable
    : public Common::Databases::Sqlite::KeylessTable<RelationMediasTable, RelationMedias, RelationMedias> {
 public:
  /// @param database  must outlive the table
  explicit RelationMediasTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~RelationMediasTable() override;

  using KeylessTable::ReadFromCursor;

  bool BindToCursor(Common::Databases::Cursor& cursor, RelationMedias& object) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, RelationMedias& object, bool lazy) override;

  static const std::string tableName;
  struct Column {
    enum : std::size_t { RefMediaAsset, RefMediaResource };
  };
  static const std::array<std::string, 2> columnNames;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::Database::RelationMedias)
