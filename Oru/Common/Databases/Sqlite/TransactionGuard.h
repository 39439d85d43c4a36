#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// A transaction for the length of a scope: all that is written in it is stored together by `Commit`, or not
/// at all.
///
///     TransactionGuard transaction(database);
///     if (assets.Save(clip) && groups.Save(group)) transaction.Commit();
///
/// Threads: the transaction belongs to the connection, with all that other threads write on it meanwhile.
class ORU_COMMON_DATABASE_EXPORT TransactionGuard {
 public:
  /// Begins a transaction.
  /// @param database  must be open and must outlive the guard
  /// @throws InvalidOperationException as `DatabaseSqlite::BeginTransaction`
  explicit TransactionGuard(DatabaseSqlite& database);
  TransactionGuard(const TransactionGuard&) = delete;
  TransactionGuard& operator=(const TransactionGuard&) = delete;
  /// Rolls back what has not been committed. Does nothing if the transaction was ended by other means. Throws
  /// nothing: if SQLite refuses the rollback, it is logged, and the transaction stays open for
  /// `DatabaseSqlite::EndTransaction`.
  ~TransactionGuard();

  /// Commits and makes the guard inert.
  /// @return the number of rows changed since the beginning
  /// @throws InvalidOperationException as `DatabaseSqlite::EndTransaction`; then the guard still holds an
  ///         open transaction, and the call may be tried again
  int64_t Commit();
  /// Rolls back and makes the guard inert.
  void Rollback();
  /// Whether the guard still holds its transaction.
  bool IsActive() const;

 private:
  DatabaseSqlite& mDatabase;
  uint64_t mNumber;
  bool mIsEnded = false;
};

}  // namespace Oru::Common::Databases::Sqlite
