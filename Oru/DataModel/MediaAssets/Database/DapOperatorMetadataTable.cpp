#include "Oru/DataModel/MediaAssets/Database/DapOperatorMetadataTable.h"

#include "Oru/DataModel/MediaAssets/Database/Columns/GridColumns.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/PackedTimeCode.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/Changeable.h"

ORU_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::DapOperatorMetadataProfile,
                    Oru::DataModel::MediaAssets::DapMetadataEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using namespace BusinessEntityModel::BaseTypes;

namespace {

// By the columns' places.
enum Column {
  RefMediaAsset,
  ServerId,
  Page,
  Bank,
  Row,
  Camera,
  UmId,
  VarId,
  Rating,
  Archive,
  UserType,
  Primary,
  User,
  UserFormat,
  Tod,
  TodFormat,
  Icon,
  Color,
  UserProtected,
  UiProtected,
  FillAndKey,
  FillAndKeyId,
};

}  // namespace

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
  OwnerStandsIn(columnNames[0]);
  dapOperatorKeywordsTable = std::make_unique<DapOperatorKeywordsTable>(db);
}

DapOperatorMetadataTable::~DapOperatorMetadataTable() = default;

bool DapOperatorMetadataTable::Write(MetadataProfileDictionary& metadataDictionary, int64_t fk) {
  const auto profile = metadataDictionary.Get<DapOperatorMetadataProfile>();
  if (!profile) return true;
  if (!dapOperatorKeywordsTable->DeleteOnKey(fk)) return false;
  DapMetadataEncapsulated row(fk, *profile);
  return Save(row);
}

bool DapOperatorMetadataTable::Save(DapMetadataEncapsulated& obj, bool lazy) {
  if (!SaveUnder(obj.fk, obj, lazy)) return false;
  std::vector<Utf8String> keywords = obj.metadata.Keywords();
  return dapOperatorKeywordsTable->Write(keywords, obj.fk);
}

bool DapOperatorMetadataTable::BindToCursor(Cursor& cursor, DapMetadataEncapsulated& obj) {
  const DapOperatorMetadataProfile& profile = obj.metadata;
  const DapId place = profile.DapId();
  return cursor.Bind(columnNames[RefMediaAsset], obj.fk) &&
         cursor.Bind(columnNames[ServerId], profile.ServerId().SerialNumber()) &&
         cursor.Bind(columnNames[Page], place.Page()) && cursor.Bind(columnNames[Bank], place.Bank()) &&
         cursor.Bind(columnNames[Row], place.Row()) &&
         cursor.Bind(columnNames[Camera], int32_t{place.Camera()}) &&
         cursor.Bind(columnNames[UmId], profile.UmId()) && cursor.Bind(columnNames[VarId], profile.VarId()) &&
         cursor.Bind(columnNames[Rating], profile.Rating()) &&
         cursor.Bind(columnNames[Archive], static_cast<int32_t>(profile.ArchiveStatus())) &&
         cursor.Bind(columnNames[UserType], static_cast<int32_t>(profile.UserTimecodeType())) &&
         cursor.Bind(columnNames[Primary], static_cast<int32_t>(profile.PrimaryTimecode())) &&
         BindTimeCode(cursor, columnNames[User], columnNames[UserFormat], profile.UserTimecode()) &&
         BindTimeCode(cursor, columnNames[Tod], columnNames[TodFormat], profile.TodTimecode()) &&
         cursor.Bind(columnNames[Icon], profile.Icon()) && cursor.Bind(columnNames[Color], profile.Color()) &&
         cursor.Bind(columnNames[UserProtected], profile.IsUserProtected()) &&
         cursor.Bind(columnNames[UiProtected], profile.IsDapUiProtected()) &&
         cursor.Bind(columnNames[FillAndKey], static_cast<int32_t>(profile.FillAndKeyType())) &&
         cursor.Bind(columnNames[FillAndKeyId], profile.FillAndKeyMediaAssetId().Value());
}

void DapOperatorMetadataTable::ReadFromCursor(const Cursor& cursor, DapOperatorMetadataProfile& object,
                                              bool) {
  object.ObjectId(cursor.GetInt64(columnNames[RefMediaAsset]));
  ReadServer(cursor, columnNames[ServerId], [&](const ZuServerId& server) { object.ServerId(server); });
  ReadGridPlace(cursor, columnNames[Page], [&](int32_t place) { object.Page(place); });
  ReadGridPlace(cursor, columnNames[Bank], [&](int32_t place) { object.Bank(place); });
  ReadGridPlace(cursor, columnNames[Row], [&](int32_t place) { object.Row(place); });
  const auto camera = static_cast<char>(cursor.GetInt32(columnNames[Camera]));
  if (DapId::IsValidCamera(camera)) object.Camera(camera);
  object.UmId(cursor.GetString(columnNames[UmId]));
  object.VarId(cursor.GetString(columnNames[VarId]));
  object.Rating(cursor.GetInt32(columnNames[Rating]));
  object.ArchiveStatus(static_cast<ArchiveStatus>(cursor.GetInt32(columnNames[Archive])));
  object.UserTimecodeType(static_cast<UserTimecodeType>(cursor.GetInt32(columnNames[UserType])));
  object.PrimaryTimecode(static_cast<TimecodePrimary>(cursor.GetInt32(columnNames[Primary])));
  object.UserTimecode(ReadTimeCode(cursor, columnNames[User], columnNames[UserFormat]));
  object.TodTimecode(ReadTimeCode(cursor, columnNames[Tod], columnNames[TodFormat]));
  object.Icon(cursor.GetString(columnNames[Icon]));
  object.Color(static_cast<uint32_t>(cursor.GetInt32(columnNames[Color])));
  // In this order: the second flag, set, sets the first as well.
  object.UserProtected(cursor.GetBoolean(columnNames[UserProtected]));
  object.DapUIProtected(cursor.GetBoolean(columnNames[UiProtected]));
  object.FillAndKeyType(static_cast<FillAndKeyType>(cursor.GetInt32(columnNames[FillAndKey])));
  object.FillAndKeyMediaAssetId(Identifier(cursor.GetString(columnNames[FillAndKeyId])));
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
