#include "Oru/DataModel/MediaAssets/Database/AnglesDapOperatorMetadataTable.h"

#include "Oru/DataModel/MediaAssets/Database/Columns/GridColumns.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/Changeable.h"

ORU_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::AnglesDapOperatorMetadataProfile,
                    Oru::DataModel::MediaAssets::AnglesDapMetadataEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::MetadataProfileDictionary;

const std::string AnglesDapOperatorMetadataTable::tableName = "DapOperatorMetadataAngles";
const std::array<std::string, 5> AnglesDapOperatorMetadataTable::columnNames = {
    "refAngles", "zuServerId", "dapIdPage", "dapIdBank", "dapIdRow"};

AnglesDapOperatorMetadataTable::AnglesDapOperatorMetadataTable(Sqlite::DatabaseSqlite& db)
    : OwnerKeyTable(db) {
  GenerateStatements();
  SetOwnerColumn(columnNames[Column::RefAngles]);
}

AnglesDapOperatorMetadataTable::~AnglesDapOperatorMetadataTable() = default;

bool AnglesDapOperatorMetadataTable::Write(MetadataProfileDictionary& metadataDictionary, int64_t fk) {
  const auto profile = metadataDictionary.Get<AnglesDapOperatorMetadataProfile>();
  if (!profile) return true;
  AnglesDapMetadataEncapsulated row(fk, *profile);
  return Save(row);
}

bool AnglesDapOperatorMetadataTable::BindToCursor(Cursor& cursor, AnglesDapMetadataEncapsulated& obj) {
  const DapId place = obj.metadata.DapId();
  return cursor.Bind(columnNames[Column::RefAngles], obj.fk) &&
         cursor.Bind(columnNames[Column::ZuServerId], obj.metadata.ServerId().SerialNumber()) &&
         cursor.Bind(columnNames[Column::DapIdPage], place.Page()) &&
         cursor.Bind(columnNames[Column::DapIdBank], place.Bank()) &&
         cursor.Bind(columnNames[Column::DapIdRow], place.Clip());
}

void AnglesDapOperatorMetadataTable::ReadFromCursor(const Cursor& cursor,
                                                    AnglesDapOperatorMetadataProfile& obj, bool) {
  obj.ObjectId(cursor.GetInt64(columnNames[Column::RefAngles]));
  ReadServer(cursor, columnNames[Column::ZuServerId],
             [&](const ZuServerId& server) { obj.ServerId(server); });
  ReadGridPlace(cursor, columnNames[Column::DapIdPage], [&](int32_t place) { obj.Page(place); });
  ReadGridPlace(cursor, columnNames[Column::DapIdBank], [&](int32_t place) { obj.Bank(place); });
  ReadGridPlace(cursor, columnNames[Column::DapIdRow], [&](int32_t place) { obj.Clip(place); });
}

void AnglesDapOperatorMetadataTable::SetObjectId(AnglesDapMetadataEncapsulated& obj, int64_t objectId) {
  Changeable(obj.metadata).ObjectId(objectId);
}

}  // namespace Oru::DataModel::MediaAssets::Database
