#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupItemTable.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include <utility>

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::MediaAssetGroup)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;

const std::string MediaAssetGroupTable::tableName = "MediaAssetGroup";
const std::array<std::string, 4> MediaAssetGroupTable::columnNames = {"key", "id", "type", "name"};
const std::string MediaAssetGroupTable::objectIdFromIdentifierQuery =
    "SELECT key FROM MediaAssetGroup WHERE id = ";

MediaAssetGroupTable::MediaAssetGroupTable(MediaAssetTable& mediaAssetTable)
    : DeclaredTable(static_cast<Sqlite::DatabaseSqlite&>(mediaAssetTable.GetDatabase())),
      keyByIdentifier(objectIdFromIdentifierQuery + ":id") {
  GenerateStatements();
  anglesMediaAssetGroupTable = std::make_unique<AnglesMediaAssetGroupTable>(*this);
  mediaAssetGroupItemTable = std::make_unique<MediaAssetGroupItemTable>(mediaAssetTable);
  Sqlite::QuerySqlite items;
  items
      .Equals(MediaAssetGroupItemTable::columnNames[MediaAssetGroupItemTable::Column::RefMediaAssetGroup],
              int64_t{})
      .OrderByAsc(
          AnglesMediaAssetGroupItemTable::columnNames[AnglesMediaAssetGroupItemTable::Column::AngleIndex]);
  AnglesMediaAssetGroupItemTable& angles = mediaAssetGroupItemTable->GetAnglesMediaAssetGroupItemTable();
  itemsOfGroup = Sqlite::PreparedStatement(angles.StatementGenerator().SelectToRun(items).text);
}

MediaAssetGroupTable::~MediaAssetGroupTable() = default;

bool MediaAssetGroupTable::Save(MediaAssetGroup& obj, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    if (obj.ObjectId() == -1) obj.ObjectId(GetObjectIdFromIdentifier(obj.Id()));
    if (!DeclaredTable::Save(obj, lazy)) return false;
    const bool isDeleted = mediaAssetGroupItemTable->DeleteOwned(obj.ObjectId());
    // Written even so: rows that were left are refused one by one.
    const bool isWritten = mediaAssetGroupItemTable->Write(obj.Items(), obj.ObjectId());
    return isDeleted && isWritten;
  });
}

void MediaAssetGroupTable::ReadAnglesMediaAssetGroupItems(MediaAssetGroup& obj, bool lazy) {
  mediaAssetGroupItemTable->GetAnglesMediaAssetGroupItemTable().ForEachNew(
      itemsOfGroup, [] { return std::make_shared<AnglesMediaAssetGroupItem>(); },
      [&](std::shared_ptr<AnglesMediaAssetGroupItem> item) {
        if (lazy) {
          mediaAssetGroupItemTable->ReadMediaAssetLazy(*item);
        } else {
          mediaAssetGroupItemTable->ReadMediaAsset(*item);
        }
        obj.Items().push_back(std::move(item));
      },
      obj.ObjectId());
}

int64_t MediaAssetGroupTable::GetObjectIdFromIdentifier(const Identifier& id) const {
  return keyByIdentifier.FindKey(AttachedDatabase(), id.Value());
}

bool MediaAssetGroupTable::BindToCursor(Cursor& cursor, MediaAssetGroup& obj) {
  return cursor.Bind(columnNames[Column::Id], obj.Id().Value()) &&
         cursor.Bind(columnNames[Column::Type], obj.Type()) &&
         cursor.Bind(columnNames[Column::Name], obj.Name());
}

void MediaAssetGroupTable::ReadFromCursor(const Cursor& cursor, MediaAssetGroup& obj, bool) {
  obj.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  obj.Id(cursor.GetString(columnNames[Column::Id]));
  obj.Type(cursor.GetString(columnNames[Column::Type]));
  obj.Name(cursor.GetString(columnNames[Column::Name]));
}

}  // namespace Oru::DataModel::MediaAssets::Database
