#pragma once

#include "Oru/Common/Databases/Sqlite/Statements/Savepoints.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases::Sqlite {

class Connection;
class StatementHandle;

/// The state of the transactions of one connection: the one that `DatabaseSqlite` has begun, the readings of
/// `ReadGuard`, and the savepoints. It decides which statement may run.
///
/// What it refuses throws InvalidOperationException, with a log entry.
///
/// Threads: to be used with the connection locked.
class Transactions {
 public:
  /// @param connection  must outlive this
  explicit Transactions(Connection& connection) : mConnection(connection) {}
  Transactions(const Transactions&) = delete;
  Transactions& operator=(const Transactions&) = delete;

  void Begin();
  /// @return how many rows the transaction has changed; 0 for a rollback
  int64_t End(bool commit);
  /// @return a number for `EndReading`; 0 when a transaction or another reading is open
  uint64_t BeginReading();
  void EndReading(uint64_t number);

  /// @return the number of the savepoint
  uint64_t BeginSavepoint();
  bool HasSavepoint(uint64_t number) const;
  /// Commits a savepoint that is open, and those within it.
  void ReleaseSavepoint(uint64_t number);
  /// Goes back to the beginning of a savepoint that is open.
  void RollBackSavepoint(uint64_t number);

  /// Whether a transaction was begun here and not ended.
  bool IsBegun() const { return mIsBegun; }
  /// The number of the transaction that was begun last.
  uint64_t Number() const { return mNumber; }
  /// Whether SQLite rolled back the transaction that was begun here. Writing on would store one by one what
  /// was meant to be stored together.
  bool IsLost() const;

  /// Why a statement must not be stepped now, null if it may. To be asked before the first step of each run.
  /// @param canRepeat  as `SchemaWatch::IsTrue` has it
  const char* Refusal(bool isReadOnly, bool canRepeat = false);
  /// Why damage can't be looked for now, null if it can.
  const char* WhyNoCheck() const;
  /// Why a backup must not begin now, null if it may.
  const char* WhyNoBackup() const;
  /// Whether a statement that SQLite calls done was rolled back with its transaction. What writes ends none by itself, but
  /// SQLite 3.40 says so of a CREATE TABLE for whose end memory lacked.
  bool IsUndone(const StatementHandle& statement, bool wasInTransaction) const;
  /// To be called after each command that succeeded: it may have ended the transaction itself, or changed tables.
  void NoteCommand(const StatementHandle& command, bool wasInTransaction);
  /// Forgets a connection that is about to close.
  void Forget();

 private:
  bool IsSchemaTrue(bool isReadOnly, bool canRepeat = false);
  void NoteEnd();

  Connection& mConnection;
  Savepoints mSavepoints;
  bool mIsBegun = false;
  bool mIsReading = false;
  // Whether the open transaction has changed tables.
  bool mHasChangedTables = false;
  uint64_t mNumber = 0;
  uint64_t mReadingNumber = 0;
  int64_t mChangesAtBegin = 0;
};

}  // namespace Oru::Common::Databases::Sqlite
