#include "Oru/BusinessEntityModel/Edits/Database/SequenceTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/Changeable.h"

#include <memory>

ORU_TABLE_TEMPLATES(, Oru::BusinessEntityModel::Edits::Sequence,
                    Oru::BusinessEntityModel::Edits::Database::SequenceEncapsulated)

namespace Oru::BusinessEntityModel::Edits::Database {

using namespace Common::Databases;
using BaseTypes::Identifier;
using TimePoints::Duration;
using TimePoints::TimePoint;

const std::string SequenceTable::tableName = "Sequence";
const std::array<std::string, 12> SequenceTable::columnNames = {
    "key",       "id",           "name",          "version",          "duration",          "fixedDuration",
    "timepoint", "creationDate", "creationOwner", "modificationDate", "modificationOwner", "editRef"};
const std::string SequenceTable::objectIdFromIdentifierQuery = "SELECT key FROM Sequence WHERE id = ";

SequenceTable::SequenceTable(Sqlite::DatabaseSqlite& db)
    : DeclaredTable(db),
      metadataTable("MetadataSequence", db),
      dapOperatorProfileTable(db),
      keyByIdentifier(objectIdFromIdentifierQuery + ":id") {
  GenerateStatements();
}

SequenceTable::~SequenceTable() = default;

bool SequenceTable::Save(SequenceEncapsulated& obj, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    Sequence& sequence = DataModel::MediaAssets::Database::Changeable(obj.sequence);
    if (sequence.ObjectId() == -1) sequence.ObjectId(GetObjectIdFromIdentifier(sequence.Id()));
    return DeclaredTable::Save(obj, lazy) && metadataTable.Write(sequence.Metadata(), sequence.ObjectId()) &&
           dapOperatorProfileTable.Write(sequence.Metadata(), sequence.ObjectId());
  });
}

bool SequenceTable::Save(Sequence& sequence, bool lazy) {
  SequenceEncapsulated row(sequence);
  return Save(row, lazy);
}

bool SequenceTable::Delete(Sequence& sequence) {
  SequenceEncapsulated row(sequence);
  return Delete(row);
}

bool SequenceTable::Delete(const SequenceId& id) {
  Sqlite::QuerySqlite query;
  query.Equals(columnNames[Column::Id], id.Value());
  return Delete(query);
}

bool SequenceTable::DeleteByServerId(DataModel::MediaAssets::ZuServerId serverId) {
  const std::string text =
      "DELETE FROM Sequence WHERE Sequence.key IN "
      "(SELECT DISTINCT DapOperatorMetadataSequence.refSequence FROM DapOperatorMetadataSequence "
      "WHERE DapOperatorMetadataSequence.zuServerId=" +
      std::to_string(serverId.SerialNumber()) + ");";
  return AttachedDatabase().ExecuteStatement(text);
}

void SequenceTable::ReadMetadata(Sequence& sequence) {
  metadataTable.Read(sequence.ObjectId(), sequence.Metadata());
}

void SequenceTable::ReadDapOperatorProfileTable(Sequence& sequence) {
  using Profile = DapOperatorMetadataProfile;
  const auto name = DapOperatorMetadataProfile::StaticFullyQualifiedName();
  if (sequence.Metadata().Contains(name)) {
    dapOperatorProfileTable.ReadOwned(sequence.ObjectId(),
                                      dynamic_cast<Profile&>(sequence.Metadata().At(name)));
    return;
  }
  const auto profile = std::make_shared<Profile>();
  if (dapOperatorProfileTable.ReadOwned(sequence.ObjectId(), *profile)) sequence.Metadata().Set(profile);
}

int64_t SequenceTable::GetObjectIdFromIdentifier(const Identifier& id) const {
  return keyByIdentifier.FindKey(AttachedDatabase(), id.Value());
}

bool SequenceTable::BindToCursor(Cursor& cursor, SequenceEncapsulated& obj) {
  const Sequence& sequence = obj.sequence;
  const bool isBound =
      cursor.Bind(columnNames[Column::Id], sequence.Id().Value()) &&
      cursor.Bind(columnNames[Column::Name], sequence.Name()) &&
      cursor.Bind(columnNames[Column::Version], sequence.Version()) &&
      cursor.Bind(columnNames[Column::Duration], sequence.Duration().Duration().ToNanoseconds()) &&
      cursor.Bind(columnNames[Column::FixedDuration], sequence.Duration().Fixed()) &&
      cursor.Bind(columnNames[Column::Timepoint], sequence.GetTimePoint().ToNanoseconds()) &&
      cursor.Bind(columnNames[Column::CreationDate], int64_t{sequence.CreationDate()}) &&
      cursor.Bind(columnNames[Column::CreationOwner], sequence.CreationOwner().Value()) &&
      cursor.Bind(columnNames[Column::ModificationDate], int64_t{sequence.ModificationDate()}) &&
      cursor.Bind(columnNames[Column::ModificationOwner], sequence.ModificationOwner().Value());
  // Bound even when another value was refused.
  const bool isEditBound = obj.editFk == -1 ? cursor.Bind(columnNames[Column::EditRef])
                                            : cursor.Bind(columnNames[Column::EditRef], obj.editFk);
  return isBound && isEditBound;
}

void SequenceTable::ReadFromCursor(const Cursor& cursor, Sequence& object, bool) {
  object.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  object.Id(cursor.GetString(columnNames[Column::Id]));
  object.Name(cursor.GetString(columnNames[Column::Name]));
  object.Version(cursor.GetInt32(columnNames[Column::Version]));
  const bool isFixed = cursor.GetBoolean(columnNames[Column::FixedDuration]);
  SequenceDuration duration;
  if (isFixed)
    duration = SequenceDuration(Duration::FromNanoseconds(cursor.GetInt64(columnNames[Column::Duration])));
  object.Duration(duration);
  object.SetTimePoint(TimePoint::FromNanoseconds(cursor.GetInt64(columnNames[Column::Timepoint])));
  object.CreationDate(cursor.GetInt64(columnNames[Column::CreationDate]));
  object.CreationOwner(cursor.GetString(columnNames[Column::CreationOwner]));
  object.ModificationDate(cursor.GetInt64(columnNames[Column::ModificationDate]));
  object.ModificationOwner(cursor.GetString(columnNames[Column::ModificationOwner]));
}

void SequenceTable::SetObjectId(SequenceEncapsulated& obj, int64_t objectId) {
  DataModel::MediaAssets::Database::Changeable(obj.sequence).ObjectId(objectId);
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
