#include "Oru/DataModel/MediaAssets/Database/DapOperatorMetadataTable.h"

#include "Oru/DataModel/MediaAssets/Database/Columns/GridColumns.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/PackedTimeCode.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/Changeable.h"

ORU_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::DapOperatorMetadataProfile,
                    Oru::DataModel::MediaAssets::DapMetadataEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using namespace BusinessEntityModel::BaseTypes;

const std::string DapOperatorMetadataTable::tableName = "DapOperatorMetadata";
const std::array<std::string, 22> DapOperatorMetadataTable::columnNames = {"refMediaAsset",
                                                                           "zuServerId",
                                                                           "dapIdPage",
                                                                           "dapIdBank",
                                                                           "dapIdRow",
                                                                           "dapIdCamera",
                                                                           "umId",
                                                                           "varId",
                                                                           "rating",
                                                                           "archiveStatus",
                                                                           "userTimecodeType",
                                                                           "primaryTimecode",
                                                                           "userTimecode",
                                                                           "userTimecodeFormat",
                                                                           "todTimecode",
                                                                           "todTimecodeFormat",
                                                                           "icon",
                                                                           "color",
                                                                           "userProtected",
                                                                           "dapUIProtected",
                                                                           "fillAndKeyType",
                                                                           "fillAndKeyMediaAssetId"};

DapOperatorMetadataTable::DapOperatorMetadataTable(Sqlite::DatabaseSqlite& db) : OwnerKeyTable(db) {
  GenerateStatements();
  SetOwnerColumn(columnNames[Column::RefMediaAsset]);
  dapOperatorKeywordsTable = std::make_unique<DapOperatorKeywordsTable>(db);
}

DapOperatorMetadataTable::~DapOperatorMetadataTable() = default;

bool DapOperatorMetadataTable::Write(MetadataProfileDictionary& metadataDictionary, int64_t fk) {
  return Write(metadataDictionary, fk, Sqlite::OwnerRow::Stored);
}

bool DapOperatorMetadataTable::Write(MetadataProfileDictionary& metadataDictionary, int64_t fk,
                                     Sqlite::OwnerRow owner) {
  const auto profile = metadataDictionary.Get<DapOperatorMetadataProfile>();
  if (!profile) return true;
  if (!dapOperatorKeywordsTable->DeleteOwned(fk, owner)) return false;
  DapMetadataEncapsulated row(fk, *profile);
  return SaveWithKeywords(row, true, owner);
}

bool DapOperatorMetadataTable::Save(DapMetadataEncapsulated& obj, bool lazy) {
  return SaveWithKeywords(obj, lazy, Sqlite::OwnerRow::Stored);
}

bool DapOperatorMetadataTable::SaveWithKeywords(DapMetadataEncapsulated& obj, bool lazy,
                                                Sqlite::OwnerRow owner) {
  if (!SaveUnder(obj.fk, obj, lazy, owner)) return false;
  std::vector<Utf8String> keywords = obj.metadata.Keywords();
  return dapOperatorKeywordsTable->Write(keywords, obj.fk);
}

bool DapOperatorMetadataTable::BindToCursor(Cursor& cursor, DapMetadataEncapsulated& obj) {
  const DapOperatorMetadataProfile& profile = obj.metadata;
  const DapId place = profile.DapId();
  return cursor.Bind(columnNames[Column::RefMediaAsset], obj.fk) &&
         cursor.Bind(columnNames[Column::ZuServerId], profile.ServerId().SerialNumber()) &&
         cursor.Bind(columnNames[Column::DapIdPage], place.Page()) &&
         cursor.Bind(columnNames[Column::DapIdBank], place.Bank()) &&
         cursor.Bind(columnNames[Column::DapIdRow], place.Row()) &&
         cursor.Bind(columnNames[Column::DapIdCamera], int32_t{place.Camera()}) &&
         cursor.Bind(columnNames[Column::UmId], profile.UmId()) &&
         cursor.Bind(columnNames[Column::VarId], profile.VarId()) &&
         cursor.Bind(columnNames[Column::Rating], profile.Rating()) &&
         cursor.Bind(columnNames[Column::ArchiveStatus], static_cast<int32_t>(profile.ArchiveStatus())) &&
         cursor.Bind(columnNames[Column::UserTimecodeType],
                     static_cast<int32_t>(profile.UserTimecodeType())) &&
         cursor.Bind(columnNames[Column::PrimaryTimecode], static_cast<int32_t>(profile.PrimaryTimecode())) &&
         BindTimeCode(AttachedDatabase(), cursor, columnNames[Column::UserTimecode],
                      columnNames[Column::UserTimecodeFormat], profile.UserTimecode()) &&
         BindTimeCode(AttachedDatabase(), cursor, columnNames[Column::TodTimecode],
                      columnNames[Column::TodTimecodeFormat], profile.TodTimecode()) &&
         cursor.Bind(columnNames[Column::Icon], profile.Icon()) &&
         cursor.Bind(columnNames[Column::Color], profile.Color()) &&
         cursor.Bind(columnNames[Column::UserProtected], profile.IsUserProtected()) &&
         cursor.Bind(columnNames[Column::DapUIProtected], profile.IsDapUiProtected()) &&
         cursor.Bind(columnNames[Column::FillAndKeyType], static_cast<int32_t>(profile.FillAndKeyType())) &&
         cursor.Bind(columnNames[Column::FillAndKeyMediaAssetId], profile.FillAndKeyMediaAssetId().Value());
}

void DapOperatorMetadataTable::ReadFromCursor(const Cursor& cursor, DapOperatorMetadataProfile& object,
                                              bool) {
  object.ObjectId(cursor.GetInt64(columnNames[Column::RefMediaAsset]));
  ReadServer(cursor, columnNames[Column::ZuServerId],
             [&](const ZuServerId& server) { object.ServerId(server); });
  ReadGridPlace(cursor, columnNames[Column::DapIdPage], [&](int32_t place) { object.Page(place); });
  ReadGridPlace(cursor, columnNames[Column::DapIdBank], [&](int32_t place) { object.Bank(place); });
  ReadGridPlace(cursor, columnNames[Column::DapIdRow], [&](int32_t place) { object.Row(place); });
  const auto camera = static_cast<char>(cursor.GetInt32(columnNames[Column::DapIdCamera]));
  if (DapId::IsValidCamera(camera)) object.Camera(camera);
  object.UmId(cursor.GetString(columnNames[Column::UmId]));
  object.VarId(cursor.GetString(columnNames[Column::VarId]));
  object.Rating(cursor.GetInt32(columnNames[Column::Rating]));
  object.ArchiveStatus(static_cast<ArchiveStatus>(cursor.GetInt32(columnNames[Column::ArchiveStatus])));
  object.UserTimecodeType(
      static_cast<UserTimecodeType>(cursor.GetInt32(columnNames[Column::UserTimecodeType])));
  object.PrimaryTimecode(static_cast<TimecodePrimary>(cursor.GetInt32(columnNames[Column::PrimaryTimecode])));
  object.UserTimecode(
      ReadTimeCode(cursor, columnNames[Column::UserTimecode], columnNames[Column::UserTimecodeFormat]));
  object.TodTimecode(
      ReadTimeCode(cursor, columnNames[Column::TodTimecode], columnNames[Column::TodTimecodeFormat]));
  object.Icon(cursor.GetString(columnNames[Column::Icon]));
  object.Color(static_cast<uint32_t>(cursor.GetInt32(columnNames[Column::Color])));
  // In this order: the second flag, set, sets the first as well.
  object.UserProtected(cursor.GetBoolean(columnNames[Column::UserProtected]));
  object.DapUIProtected(cursor.GetBoolean(columnNames[Column::DapUIProtected]));
  object.FillAndKeyType(static_cast<FillAndKeyType>(cursor.GetInt32(columnNames[Column::FillAndKeyType])));
  object.FillAndKeyMediaAssetId(Identifier(cursor.GetString(columnNames[Column::FillAndKeyMediaAssetId])));
}

void DapOperatorMetadataTable::SetObjectId(DapMetadataEncapsulated& obj, int64_t objectId) {
  Changeable(obj.metadata).ObjectId(objectId);
}

int32_t DapOperatorMetadataTable::TimecodeFormat(const TimePoints::TimeCode& timeCode) {
  return Database::TimecodeFormat(timeCode);
}

TimePoints::Rate DapOperatorMetadataTable::TimecodeRate(int32_t format) {
  return Database::TimecodeRate(format);
}

bool DapOperatorMetadataTable::TimecodeDrop(int32_t format) {
  return Database::TimecodeDrop(format);
}

}  // namespace Oru::DataModel::MediaAssets::Database
