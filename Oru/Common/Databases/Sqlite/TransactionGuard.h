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
/// Threads: a guard belongs to one thread at a time. Its transaction is the connection's: what other threads
/// write on the same connection meanwhile belongs to it too.
class ORU_COMMON_DATABASE_EXPORT TransactionGuard {
 public:
  /// Begins a transaction.
  /// @param database  must be open and must outlive the guard
  /// @throws InvalidOperationException as `DatabaseSqlite::BeginTransaction`
  explicit TransactionGuard(DatabaseSqlite& database);
  TransactionGuard(const TransactionGuard&) = delete;
  TransactionGuard& operator=(const TransactionGuard&) = delete;
  /// Rolls back what has not been committed. A transaction that somebody else has ended, or begun since, is
  /// left alone. Throws nothing: a rollback that SQLite refuses leaves a log entry, and the transaction open
  /// for `DatabaseSqlite::EndTransaction`.
  ~TransactionGuard();

  /// Commits and makes the guard inert.
  /// @return the number of rows changed since the begin
  /// @throws InvalidOperationException as `DatabaseSqlite::EndTransaction`; the guard then still holds a
  ///         transaction that is open, so that the call may be tried again
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
