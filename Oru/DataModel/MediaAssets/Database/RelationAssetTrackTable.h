#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/RelationAssetTrack.h"

#include <array>
#include <cstddef>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// The links of assets to tracks. Nothing keeps a pair from being stored twice; `MediaAssetTable` writes
/// links only for an asset that it has just inserted.
class ORU_DATAMODEL_DATABASE_EXPORT RelationAssetTrackTable
    : public Common::Databases::Sqlite::KeylessTable<RelationAssetTrackTable, RelationAssetTrack,
                                                     RelationAssetTrack> {
 public:
  /// @param database  must outlive the table
  explicit RelationAssetTrackTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~RelationAssetTrackTable() override;

  using KeylessTable::ReadFromCursor;

  bool BindToCursor(Common::Databases::Cursor& cursor, RelationAssetTrack& object) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, RelationAssetTrack& object,
                      bool lazy) override;

  static const std::string tableName;
  struct Column {
    enum : std::size_t { RefMediaAsset, RefTrack };
  };
  static const std::array<std::string, 2> columnNames;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::Database::RelationAssetTrack)
