#include "Oru/DataModel/MediaAssets/Database/RelationMediasTable.h"

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::Database::RelationMedias)

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Cursor;

const std::string RelationMediasTable::tableName = "RelationMediaAssetMediaResource";
const std::array<std::string, 2> RelationMediasTable::columnNames = {"refMediaAsset", "refMediaResource"};

RelationMediasTable::RelationMediasTable(Common::Databases::Sqlite::DatabaseSqlite& db) : KeylessTable(db) {
  GenerateStatements();
}

RelationMediasTable::~RelationMediasTable() = default;

bool RelationMediasTable::BindToCursor(Cursor& cursor, RelationMedias& object) {
  return cursor.Bind(columnNames[Column::RefMediaAsset], object.mediaAsset) &&
         cursor.Bind(columnNames[Column::RefMediaResource], object.mediaResource);
}

void RelationMediasTable::ReadFromCursor(const Cursor& cursor, RelationMedias& object, bool) {
  object.mediaAsset = cursor.GetInt64(columnNames[Column::RefMediaAsset]);
  object.mediaResource = cursor.GetInt64(columnNames[Column::RefMediaResource]);
}

}  // namespace Oru::DataModel::MediaAssets::Database
