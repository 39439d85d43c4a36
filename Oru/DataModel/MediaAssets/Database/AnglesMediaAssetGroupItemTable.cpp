#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupItemTable.h"

ORU_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::AnglesMediaAssetGroupItem,
                    Oru::DataModel::MediaAssets::Database::GroupItemEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Cursor;
using Common::Databases::Sqlite::DatabaseSqlite;

const std::string AnglesMediaAssetGroupItemTable::tableName = "AnglesMediaAssetGroupItem";
const std::array<std::string, 3> AnglesMediaAssetGroupItemTable::columnNames = {"refMediaAssetGroupItem",
                                                                                "angleIndex", "name"};
const std::string AnglesMediaAssetGroupItemTable::fromClause =
    "MediaAssetGroupItem JOIN AnglesMediaAssetGroupItem ON MediaAssetGroupItem.key == "
    "AnglesMediaAssetGroupItem.refMediaAssetGroupItem";

AnglesMediaAssetGroupItemTable::AnglesMediaAssetGroupItemTable(MediaAssetGroupItemTable& table)
    : ExtensionTable(static_cast<DatabaseSqlite&>(table.GetDatabase()), table),
      mediaAssetGroupItemTable(table) {
  GenerateStatements();
}

AnglesMediaAssetGroupItemTable::~AnglesMediaAssetGroupItemTable() = default;

bool AnglesMediaAssetGroupItemTable::Save(GroupItemEncapsulated& obj, bool lazy) {
  const bool isNew = GetObjectId(obj) == -1;
  if (!mediaAssetGroupItemTable.Save(obj, lazy)) return false;
  return isNew ? Insert(obj, lazy) : Update(obj, lazy);
}

bool AnglesMediaAssetGroupItemTable::Delete(GroupItemEncapsulated& obj) {
  return mediaAssetGroupItemTable.Delete(obj);
}

bool AnglesMediaAssetGroupItemTable::BindToCursor(Cursor& cursor, GroupItemEncapsulated& obj) {
  // A plain item has no angle, and so no name.
  static const BusinessEntityModel::BaseTypes::Utf8String noName;
  const auto* angle = dynamic_cast<const AnglesMediaAssetGroupItem*>(&obj.groupItem);
  return cursor.Bind(columnNames[Column::AngleIndex], obj.index) &&
         cursor.Bind(columnNames[Column::Name], angle ? angle->Name() : noName) &&
         cursor.Bind(columnNames[Column::RefMediaAssetGroupItem], GetObjectId(obj));
}

void AnglesMediaAssetGroupItemTable::ReadFromCursor(const Cursor& cursor, AnglesMediaAssetGroupItem& obj,
                                                    bool lazy) {
  mediaAssetGroupItemTable.ReadFromCursor(cursor, obj, lazy);
  obj.Name(cursor.GetString(columnNames[Column::Name]));
}

}  // namespace Oru::DataModel::MediaAssets::Database
