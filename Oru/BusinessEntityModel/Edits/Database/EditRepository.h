#pragma once

#include "Oru/BusinessEntityModel/Edits/Database/EditTable.h"
#include "Oru/BusinessEntityModel/Edits/Edit.h"
#include "Oru/BusinessEntityModel/Edits/Identifiers.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Oru::BusinessEntityModel::Edits::Database {

/// Edits, stored and read whole: with their metadata and their sequences in order, and with the metadata and
/// operator's profiles of those.
///
/// What a file doesn't keep of a sequence: a duration that isn't fixed comes back as 0, and the reference
/// time code of a regeneration keeps its rate at 50/1 and 60/1 only, and always has a date.
///
/// Objects are known by their identifiers; their object ids are set when an operation succeeds, and are as
/// before when it doesn't. Each operation that writes is one transaction, or a savepoint in the caller's.
/// Each that reads sees one state of the file.
///
/// All operations throw InvalidOperationException, with a log entry, when the file can't be read or written;
/// those that write do so within a `ReadGuard` too. Those that read throw std::invalid_argument when a
/// sequence, saved through its table, has an operator's profile without a server, and std::out_of_range when
/// its time code has a negative count.
///
/// Threads: a repository belongs to one thread at a time; several on one database may be used from different
/// threads at once. An operation keeps the connection to itself from begin to end.
class ORU_DATAMODEL_DATABASE_EXPORT EditRepository {
 public:
  /// @param database  one that has the tables, as a `DataModelDatabase`; must outlive the repository, which
  ///                  may be made before it is opened
  explicit EditRepository(Common::Databases::Sqlite::DatabaseSqlite& database);
  EditRepository(const EditRepository&) = delete;
  EditRepository& operator=(const EditRepository&) = delete;
  ~EditRepository();

  /// The edit with that identifier.
  std::optional<Edit> Find(const EditId& id);
  /// All edits, by name; those of one name in the order in which they were first stored.
  std::vector<Edit> All();

  /// Stores an edit as it is, whatever the file held of it. Sequences that it no longer holds go. One that is
  /// stored and belongs to no edit is taken up. A sequence that changes its place gets a new object id.
  /// @throws DataModel::MediaAssets::Database::NotStoredException for an empty identifier, also of a
  ///         sequence; for one sequence twice, a sequence of another edit, a metadata profile without a table
  ///         there, and an operator's profile that couldn't be read again: without a server, or with a
  ///         negative count of its time code
  void Put(Edit& edit);

  /// Removes an edit, with its sequences.
  /// @return false when there is none
  bool Remove(const EditId& id);

 private:
  void ReadParts(Edit& edit);
  void Write(Edit& edit);
  void PlaceSequences(Edit& edit, int64_t editKey);
  void RequireFree(const Edit& edit, int64_t editKey, const SequenceId& id);
  void SaveSequence(const Edit& edit, int64_t editKey, Sequence& sequence);

  Common::Databases::Sqlite::DatabaseSqlite& mDatabase;
  EditTable mEdits;
  Common::Databases::Sqlite::PreparedStatement mSequencesOfEdit;
  Common::Databases::Sqlite::PreparedStatement mEditOfSequence;
};

}  // namespace Oru::BusinessEntityModel::Edits::Database
