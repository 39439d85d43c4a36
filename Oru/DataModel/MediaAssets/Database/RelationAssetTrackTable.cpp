#include "Oru/DataModel/MediaAssets/Database/RelationAssetTrackTable.h"

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::Database::RelationAssetTrack)

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Cursor;

const std::string RelationAssetTrackTable::tableName = "RelationAssetTrack";
const std::array<std::string, 2> RelationAssetTrackTable::columnNames = {"refMediaAsset", "refTrack"};

RelationAssetTrackTable::RelationAssetTrackTable(Common::Databases::Sqlite::DatabaseSqlite& db)
    : KeylessTable(db) {
  GenerateStatements();
}

RelationAssetTrackTable::~RelationAssetTrackTable() = default;

bool RelationAssetTrackTable::BindToCursor(Cursor& cursor, RelationAssetTrack& object) {
  return cursor.Bind(columnNames[Column::RefMediaAsset], object.asset) &&
         cursor.Bind(columnNames[Column::RefTrack], object.track);
}

void RelationAssetTrackTable::ReadFromCursor(const Cursor& cursor, RelationAssetTrack& object, bool) {
  object.asset = cursor.GetInt64(columnNames[Column::RefMediaAsset]);
  object.track = cursor.GetInt64(columnNames[Column::RefTrack]);
}

}  // namespace Oru::DataModel::MediaAssets::Database
