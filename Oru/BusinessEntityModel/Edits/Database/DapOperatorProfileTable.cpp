#include "Oru/BusinessEntityModel/Edits/Database/DapOperatorProfileTable.h"

#include "Oru/DataModel/MediaAssets/Database/Columns/PackedTimeCode.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/Changeable.h"
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
  SetOwnerColumn(columnNames[Column::RefSequence]);
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
  // Without regeneration settings the columns of it take the values of default ones, which are never read.
  const DapOperatorTimecodeRegen regen =
      hasRegen ? profile.TimecodeRegen().Value() : DapOperatorTimecodeRegen();
  // A value that is refused ends its own group only.
  const bool isProfileBound =
      cursor.Bind(columnNames[Column::ZuServerId], profile.ServerId().SerialNumber()) &&
      cursor.Bind(columnNames[Column::DapIdPage], profile.Page()) &&
      cursor.Bind(columnNames[Column::DapIdBank], profile.Bank()) &&
      cursor.Bind(columnNames[Column::DapIdRow], profile.Row()) &&
      cursor.Bind(columnNames[Column::UmId], profile.UmId()) &&
      cursor.Bind(columnNames[Column::VarId], profile.VarId()) &&
      cursor.Bind(columnNames[Column::NbVideoElements], profile.VideoElementsCount()) &&
      cursor.Bind(columnNames[Column::ArchiveStatus], static_cast<int32_t>(profile.ArchiveStatus())) &&
      cursor.Bind(columnNames[Column::TcRegenOn], hasRegen);
  const bool isRegenBound =
      cursor.Bind(columnNames[Column::TcRegenContinuity], static_cast<int32_t>(regen.ContinueIn())) &&
      cursor.Bind(columnNames[Column::TcRegenReference], static_cast<int32_t>(regen.From())) &&
      BindTimeCode(AttachedDatabase(), cursor, columnNames[Column::TcRegenTimecodeRef],
                   columnNames[Column::TcRegenTimecodeRefFormat], regen.TimecodeRef()) &&
      cursor.Bind(columnNames[Column::TcRegenOutput], static_cast<int32_t>(regen.In()));
  const bool isKeyBound = cursor.Bind(columnNames[Column::RefSequence], obj.sequenceFk);
  return isProfileBound && isRegenBound && isKeyBound;
}

void DapOperatorProfileTable::ReadFromCursor(const Cursor& cursor, DapOperatorMetadataProfile& obj, bool) {
  obj.ServerId(ZuServerId(cursor.GetInt32(columnNames[Column::ZuServerId])));
  obj.Page(cursor.GetInt32(columnNames[Column::DapIdPage]));
  obj.Bank(cursor.GetInt32(columnNames[Column::DapIdBank]));
  obj.Row(cursor.GetInt32(columnNames[Column::DapIdRow]));
  obj.UmId(cursor.GetString(columnNames[Column::UmId]));
  obj.VarId(cursor.GetString(columnNames[Column::VarId]));
  obj.VideoElementsCount(cursor.GetInt32(columnNames[Column::NbVideoElements]));
  obj.ArchiveStatus(static_cast<ArchiveStatus>(cursor.GetInt32(columnNames[Column::ArchiveStatus])));
  if (cursor.GetInt32(columnNames[Column::TcRegenOn]) == 0) return;

  using Regen = DapOperatorTimecodeRegen;
  Regen regen;
  regen.ContinueIn(static_cast<Regen::Continuity>(cursor.GetInt32(columnNames[Column::TcRegenContinuity])));
  regen.From(static_cast<Regen::Reference>(cursor.GetInt32(columnNames[Column::TcRegenReference])));
  regen.TimecodeRef(ReadTimeCode(cursor, columnNames[Column::TcRegenTimecodeRef],
                                 columnNames[Column::TcRegenTimecodeRefFormat]));
  regen.In(static_cast<Regen::Output>(cursor.GetInt32(columnNames[Column::TcRegenOutput])));
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
