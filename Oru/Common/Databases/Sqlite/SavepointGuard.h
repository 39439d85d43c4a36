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
/// also ends those that were made within it, which do nothing more then. So does the end of the transaction.
/// A `ChangeListener` hears nothing of what a guard has taken back, and `EndTransaction` doesn't count it.
///
/// Threads: a guard belongs to one thread at a time. Its savepoint is the connection's: what other threads
/// write on the same connection meanwhile belongs to it too, unless a `ConnectionLock` keeps them away.
class ORU_COMMON_DATABASE_EXPORT SavepointGuard {
 public:
  /// Begins a savepoint.
  /// @param database  must be open and must outlive the guard
  /// @throws InvalidOperationException, with a log entry, when no transaction is open, or a `ReadGuard` only;
  ///         when the transaction was lost at an earlier failure, or SQLite refuses: while a statement that
  ///         writes is left on a row, say
  explicit SavepointGuard(DatabaseSqlite& database);
  SavepointGuard(const SavepointGuard&) = delete;
  SavepointGuard& operator=(const SavepointGuard&) = delete;
  /// Rolls back to its begin what has not been committed. Throws nothing.
  ~SavepointGuard();

  /// Makes what was written since the begin a part of the transaction, or of the guard around, and makes the
  /// guard inert.
  /// @throws InvalidOperationException when the guard is no longer active, or, with a log entry, when SQLite
  ///         refuses; the guard then still holds its savepoint, so that the call may be tried again
  void Commit();
  /// Takes back what was written since the begin, and makes the guard inert.
  /// @throws InvalidOperationException, with a log entry, when SQLite fails at it. Rather than leave a part
  ///         of what was to be taken back, the whole transaction is rolled back then, and must be ended
  void Rollback();
  /// Whether the guard still holds its savepoint.
  bool IsActive() const;

 private:
  DatabaseSqlite& mDatabase;
  uint64_t mNumber;
};

}  // namespace Oru::Common::Databases::Sqlite
