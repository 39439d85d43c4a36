#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/Edits/Database/DapOperatorProfileTable.h"
#include "Oru/BusinessEntityModel/Edits/Database/SequenceEncapsulated.h"
#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Oru::BusinessEntityModel::Edits::Database {

/// Sequences, with their metadata and the operator's profile. A sequence is linked to its edit by the wrapper
/// that it is saved with; it goes when its edit is deleted.
///
/// The duration of a sequence whose duration isn't fixed is stored, but comes back as 0.
class ORU_DATAMODEL_DATABASE_EXPORT SequenceTable
    : public Common::Databases::Sqlite::DeclaredTable<SequenceTable, Sequence, SequenceEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit SequenceTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~SequenceTable() override;

  using DeclaredTable::Delete;
  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Stores a sequence with its metadata and, if it has one, the operator's profile; an absent profile leaves
  /// the stored one alone. An object id of -1 is looked up by the identifier. The link to the edit is what
  /// the wrapper says.
  /// @return false, with a log entry, when the database refuses, and for settings of time codes with a
  ///         negative count, which couldn't be read again
  /// @throws std::bad_cast at a metadata profile without a table; ObjectClosedException, with a log entry,
  ///         when the database is closed or the file has no tables
  bool Save(SequenceEncapsulated& obj, bool lazy) override;
  /// The same for a sequence of no edit. One that was linked to an edit is so no more.
  bool Save(Sequence& sequence, bool lazy);
  bool Save(Sequence& sequence) { return Save(sequence, true); }

  /// Deletes a sequence with its metadata. The form that takes an object sets its object id to -1.
  /// @return false, with a log entry, when the database refuses
  bool Delete(Sequence& sequence);
  bool Delete(const SequenceId& id);
  /// Deletes the sequences whose operator's profile names one server, and leaves their edits.
  bool DeleteByServerId(DataModel::MediaAssets::ZuServerId serverId);

  /// Adds the stored metadata to a sequence that has its object id.
  /// @throws std::bad_cast when the sequence holds a profile of another class under the name of a stored one
  void ReadMetadata(Sequence& sequence);
  /// Adds the stored operator's profile to a sequence that has its object id, or fills the one that it holds.
  /// @throws std::invalid_argument for a stored number that is no server's, 0 included; std::bad_cast when
  ///         the sequence holds another class of profile under that name
  void ReadDapOperatorProfileTable(Sequence& sequence);

  /// The key of the sequence with that identifier, -1 when there is none.
  int64_t GetObjectIdFromIdentifier(const BaseTypes::Identifier& id) const;

  DataModel::MediaAssets::Database::MetadataTable& GetMetadataTable() { return metadataTable; }
  DapOperatorProfileTable& GetDapOperatorProfileTable() { return dapOperatorProfileTable; }

  bool BindToCursor(Common::Databases::Cursor& cursor, SequenceEncapsulated& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, Sequence& object, bool lazy) override;
  void SetObjectId(SequenceEncapsulated& obj, int64_t objectId) override;
  int64_t GetObjectId(SequenceEncapsulated& obj) const override { return obj.sequence.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t {
      Key,
      Id,
      Name,
      Version,
      Duration,
      FixedDuration,
      Timepoint,
      CreationDate,
      CreationOwner,
      ModificationDate,
      ModificationOwner,
      EditRef
    };
  };
  static const std::array<std::string, 12> columnNames;
  /// Finds the key of the row with an identifier, which the statement that is run takes as a parameter after
  /// it.
  static const std::string objectIdFromIdentifierQuery;

 private:
  DataModel::MediaAssets::Database::MetadataTable metadataTable;
  DapOperatorProfileTable dapOperatorProfileTable;
  mutable Common::Databases::Sqlite::PreparedStatement keyByIdentifier;
};

}  // namespace Oru::BusinessEntityModel::Edits::Database

ORU_TABLE_TEMPLATES(extern, Oru::BusinessEntityModel::Edits::Sequence,
                    Oru::BusinessEntityModel::Edits::Database::SequenceEncapsulated)
