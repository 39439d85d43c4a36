#include "Oru/BusinessEntityModel/Edits/Database/DapOperatorProfileTable.h"

#include "Oru/DataModel/MediaAssets/Database/Columns/PackedTimeCode.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/Changeable.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

ORU_TABLE_TEMPLATES(, Oru::BusinessEntityModel::Edits::DapOperatorMetadataProfile,
                    Oru::BusinessEntityModel::Edits::Database::DapOperatorProfileEncapsulated)

namespace Oru::BusinessEntityModel::Edits::Database {

using namespace Common::Databases;
using BaseTypes::MetadataProfileDictionary;
using DataModel::MediaAssets::ArchiveStatus;
using DataModel::MediaAssets::ZuServerId;
using DataModel::MediaAssets::Database::BindTimeCode;
using DataModel::MediaAssets::Database::ReadTimeCode;

namespace {

// By the columns' places.
enum Column {
  RefSequence,
  ServerId,
  Page,
  Bank,
  Row,
  UmId,
  VarId,
  VideoElements,
  Archive,
  RegenOn,
  RegenContinuity,
  RegenReference,
  RegenTimecode,
  RegenTimecodeFormat,
  RegenOutput,
};

}  // namespace

const std::string DapOperatorProfileTable::tableName = "DapOperatorMetadataSequence";
const std::array<std::string, 15> DapOperatorProfileTable::columnNames = {"refSequence",
                                                                          "zuServerId",
                                                                          "dapIdPage",
                                                                          "dapIdBank",
                                                                          "dapIdRow",
                                                                          "umId",
                                                                          "varId",
                                                                          "nbVideoElements",
                                                                          "archiveStatus",
                                                                          "tcRegenOn",
                                                                          "tcRegenContinuity",
                                                                          "tcRegenReference",
                                                                          "tcRegenTimecodeRef",
                                                                          "tcRegenTimecodeRefFormat",
                                                                          "tcRegenOutput"};

DapOperatorProfileTable::DapOperatorProfileTable(Sqlite::DatabaseSqlite& db) : OwnerKeyTable(db) {
  GenerateStatements();
  OwnerStandsIn(columnNames[0]);
}

DapOperatorProfileTable::~DapOperatorProfileTable() = default;

bool DapOperatorProfileTable::Write(MetadataProfileDictionary& metadataDictionary, int64_t fk) {
  const auto profile = metadataDictionary.Get<DapOperatorMetadataProfile>();
  if (!profile) return true;
  DapOperatorProfileEncapsulated row(fk, *profile);
  return Save(row);
}

bool DapOperatorProfileTable::Save(DapOperatorMetadataProfile& profile, bool lazy) {
  DapOperatorProfileEncapsulated row(profile.ObjectId(), profile);
  return Save(row, lazy);
}

bool DapOperatorProfileTable::Delete(DapOperatorMetadataProfile& profile) {
  DapOperatorProfileEncapsulated row(profile.ObjectId(), profile);
  return Delete(row);
}

bool DapOperatorProfileTable::BindToCursor(Cursor& cursor, DapOperatorProfileEncapsulated& obj) {
  const DapOperatorMetadataProfile& profile = obj.profile;
  const bool hasRegen = profile.TimecodeRegen().HasValue();
  // Without regeneration settings the columns of it take the values of default ones, which nobody reads.
  const DapOperatorTimecodeRegen regen =
      hasRegen ? profile.TimecodeRegen().Value() : DapOperatorTimecodeRegen();
  // A value that is refused ends its own group only.
  const bool isProfileBound =
      cursor.Bind(columnNames[ServerId], profile.ServerId().SerialNumber()) &&
      cursor.Bind(columnNames[Page], profile.Page()) && cursor.Bind(columnNames[Bank], profile.Bank()) &&
      cursor.Bind(columnNames[Row], profile.Row()) && cursor.Bind(columnNames[UmId], profile.UmId()) &&
      cursor.Bind(columnNames[VarId], profile.VarId()) &&
      cursor.Bind(columnNames[VideoElements], profile.VideoElementsCount()) &&
      cursor.Bind(columnNames[Archive], static_cast<int32_t>(profile.ArchiveStatus())) &&
      cursor.Bind(columnNames[RegenOn], hasRegen);
  const bool isRegenBound =
      cursor.Bind(columnNames[RegenContinuity], static_cast<int32_t>(regen.ContinueIn())) &&
      cursor.Bind(columnNames[RegenReference], static_cast<int32_t>(regen.From())) &&
      BindTimeCode(cursor, columnNames[RegenTimecode], columnNames[RegenTimecodeFormat],
                   regen.TimecodeRef()) &&
      cursor.Bind(columnNames[RegenOutput], static_cast<int32_t>(regen.In()));
  const bool isKeyBound = cursor.Bind(columnNames[RefSequence], obj.sequenceFk);
  return isProfileBound && isRegenBound && isKeyBound;
}

void DapOperatorProfileTable::ReadFromCursor(const Cursor& cursor, DapOperatorMetadataProfile& obj, bool) {
  obj.ServerId(ZuServerId(cursor.GetInt32(columnNames[ServerId])));
  obj.Page(cursor.GetInt32(columnNames[Page]));
  obj.Bank(cursor.GetInt32(columnNames[Bank]));
  obj.Row(cursor.GetInt32(columnNames[Row]));
  obj.UmId(cursor.GetString(columnNames[UmId]));
  obj.VarId(cursor.GetString(columnNames[VarId]));
  obj.VideoElementsCount(cursor.GetInt32(columnNames[VideoElements]));
  obj.ArchiveStatus(static_cast<ArchiveStatus>(cursor.GetInt32(columnNames[Archive])));
  if (cursor.GetInt32(columnNames[RegenOn]) == 0) return;

  using Regen = DapOperatorTimecodeRegen;
  Regen regen;
  regen.ContinueIn(static_cast<Regen::Continuity>(cursor.GetInt32(columnNames[RegenContinuity])));
  regen.From(static_cast<Regen::Reference>(cursor.GetInt32(columnNames[RegenReference])));
  regen.TimecodeRef(ReadTimeCode(cursor, columnNames[RegenTimecode], columnNames[RegenTimecodeFormat]));
  regen.In(static_cast<Regen::Output>(cursor.GetInt32(columnNames[RegenOutput])));
  obj.TimecodeRegen(regen);
}

void DapOperatorProfileTable::SetObjectId(DapOperatorProfileEncapsulated& obj, int64_t objectId) {
  DataModel::MediaAssets::Database::Changeable(obj.profile).ObjectId(objectId);
}

int32_t DapOperatorProfileTable::TimecodeFormat(const TimePoints::TimeCode& timeCode) {
  return DataModel::MediaAssets::Database::TimecodeFormat(timeCode);
}

TimePoints::Rate DapOperatorProfileTable::TimecodeRate(int32_t format) {
  return DataModel::MediaAssets::Database::TimecodeRate(format);
}

bool DapOperatorProfileTable::TimecodeDrop(int32_t format) {
  return DataModel::MediaAssets::Database::TimecodeDrop(format);
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
