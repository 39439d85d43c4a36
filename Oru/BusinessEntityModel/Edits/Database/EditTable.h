#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/Edits/Database/SequenceTable.h"
#include "Oru/BusinessEntityModel/Edits/Edit.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Oru::BusinessEntityModel::Edits::Database {

/// Edits, with their metadata. The sequences of an edit are neither saved nor read with it: each is saved
/// through `SequenceTable` with the edit's key in its wrapper. Deleting an edit deletes its sequences.
class ORU_DATAMODEL_DATABASE_EXPORT EditTable
    : public Common::Databases::Sqlite::DeclaredTable<EditTable, Edit, Edit> {
 public:
  /// @param database  must outlive the table
  explicit EditTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~EditTable() override;

  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Stores an edit and replaces its metadata. An object id of -1 is looked up by the identifier.
  bool Save(Edit& edit, bool lazy) override;

  /// Adds the stored metadata to an edit that has its object id.
  /// @throws std::bad_cast when the edit holds a profile of another class under the name of a stored one
  void ReadMetadata(Edit& edit);

  /// The key of the edit with that identifier, -1 when there is none.
  int64_t GetObjectIdFromIdentifier(const BaseTypes::Identifier& id) const;

  DataModel::MediaAssets::Database::MetadataTable& GetMetadataTable() { return metadataTable; }
  SequenceTable& GetSequenceTable() { return sequenceTable; }

  bool BindToCursor(Common::Databases::Cursor& cursor, Edit& edit) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, Edit& object, bool lazy) override;
  void SetObjectId(Edit& obj, int64_t objectId) override { obj.ObjectId(objectId); }
  int64_t GetObjectId(Edit& obj) const override { return obj.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { Key, Id, Name, CreationDate, CreationOwner, ModificationDate, ModificationOwner };
  };
  static const std::array<std::string, 7> columnNames;
  /// Finds the key of the row with an identifier, which the statement that is run takes as a parameter after
  /// it.
  static const std::string objectIdFromIdentifierQuery;

 private:
  DataModel::MediaAssets::Database::MetadataTable metadataTable;
  SequenceTable sequenceTable;
  mutable Common::Databases::Sqlite::PreparedStatement keyByIdentifier;
};

}  // namespace Oru::BusinessEntityModel::Edits::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::BusinessEntityModel::Edits::Edit)
