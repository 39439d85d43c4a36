#include "Oru/BusinessEntityModel/Edits/Database/EditTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"

ORU_ENTITY_TABLE_TEMPLATES(, Oru::BusinessEntityModel::Edits::Edit)

namespace Oru::BusinessEntityModel::Edits::Database {

using namespace Common::Databases;
using BaseTypes::Identifier;

const std::string EditTable::tableName = "Edit";
const std::array<std::string, 7> EditTable::columnNames = {
    "key", "id", "name", "creationDate", "creationOwner", "modificationDate", "modificationOwner"};
const std::string EditTable::objectIdFromIdentifierQuery = "SELECT key FROM Edit WHERE id = ";

EditTable::EditTable(Sqlite::DatabaseSqlite& db)
    : DeclaredTable(db),
      metadataTable("MetadataEdit", db),
      sequenceTable(db),
      keyByIdentifier(objectIdFromIdentifierQuery + ":id") {
  GenerateStatements();
}

EditTable::~EditTable() = default;

bool EditTable::Save(Edit& edit, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    if (edit.ObjectId() == -1) edit.ObjectId(GetObjectIdFromIdentifier(edit.Id()));
    return DeclaredTable::Save(edit, lazy) && metadataTable.Write(edit.Metadata(), edit.ObjectId());
  });
}

void EditTable::ReadMetadata(Edit& edit) {
  metadataTable.Read(edit.ObjectId(), edit.Metadata());
}

int64_t EditTable::GetObjectIdFromIdentifier(const Identifier& id) const {
  return keyByIdentifier.FindKey(AttachedDatabase(), id.Value());
}

bool EditTable::BindToCursor(Cursor& cursor, Edit& edit) {
  return cursor.Bind(columnNames[Column::Id], edit.Id().Value()) &&
         cursor.Bind(columnNames[Column::Name], edit.Name()) &&
         cursor.Bind(columnNames[Column::CreationDate], int64_t{edit.CreationDate()}) &&
         cursor.Bind(columnNames[Column::CreationOwner], edit.CreationOwner().Value()) &&
         cursor.Bind(columnNames[Column::ModificationDate], int64_t{edit.ModificationDate()}) &&
         cursor.Bind(columnNames[Column::ModificationOwner], edit.ModificationOwner().Value());
}

void EditTable::ReadFromCursor(const Cursor& cursor, Edit& object, bool) {
  object.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  object.Id(cursor.GetString(columnNames[Column::Id]));
  object.Name(cursor.GetString(columnNames[Column::Name]));
  object.CreationDate(cursor.GetInt64(columnNames[Column::CreationDate]));
  object.CreationOwner(cursor.GetString(columnNames[Column::CreationOwner]));
  object.ModificationDate(cursor.GetInt64(columnNames[Column::ModificationDate]));
  object.ModificationOwner(cursor.GetString(columnNames[Column::ModificationOwner]));
}

}  // namespace Oru::BusinessEntityModel::Edits::Database
