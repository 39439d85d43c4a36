#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// A part of a transaction for the length of a scope, which can be taken back without the rest of it.
///
///     TransactionGuard transaction(database);
///     for (MediaAsset& clip : clips) {
///       SavepointGuard savepoint(database);
///       if (assets.Save(clip)) savepoint.Commit();
///     }
///     transaction.Commit();
///
/// What a guard commits is stored when the transaction commits, and only then. Guards nest: the end of one
/// also ends those that were made within it, and the end of the transaction ends all. A guard that was ended
/// so does nothing more. What a guard has rolled back isn't reported to a `ChangeListener` or counted by
/// `EndTransaction`.
///
/// Threads: the savepoint belongs to the connection, with all that other threads write on it meanwhile,
/// unless a `ConnectionLock` keeps them away.
class ORU_COMMON_DATABASE_EXPORT SavepointGuard {
 public:
  /// Begins a savepoint.
  /// @param database  must be open and must outlive the guard
  /// @throws InvalidOperationException, with a log entry, when no transaction is open, or only a `ReadGuard`;
  ///         when the transaction was rolled back at an earlier failure; or when SQLite refuses, for example
  ///         while a statement that writes is left on a row
  explicit SavepointGuard(DatabaseSqlite& database);
  SavepointGuard(const SavepointGuard&) = delete;
  SavepointGuard& operator=(const SavepointGuard&) = delete;
  /// Rolls back what has not been committed. Throws nothing.
  ~SavepointGuard();

  /// Makes what was written since the guard began a part of the transaction, or of the guard around, and
  /// makes the guard inert.
  /// @throws InvalidOperationException when the guard is no longer active, or, with a log entry, when SQLite
  ///         refuses. Then the guard still holds its savepoint, and the call may be tried again
  void Commit();
  /// Rolls back what was written since the guard began, and makes the guard inert.
  /// @throws InvalidOperationException, with a log entry, when SQLite fails at it. Then the whole transaction
  ///         is rolled back, so that no part remains, and must be ended
  void Rollback();
  /// Whether the guard still holds its savepoint.
  bool IsActive() const;

 private:
  DatabaseSqlite& mDatabase;
  uint64_t mNumber;
};

}  // namespace Oru::Common::Databases::Sqlite
