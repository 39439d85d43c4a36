#include "Oru/Common/Databases/Sqlite/Connection/Transactions.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/Connection/Connection.h"

#include <sqlite3.h>

#include <cstddef>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

namespace {

constexpr const char* LostTransactionText =
    "the transaction was rolled back at an earlier failure and must be ended first";
constexpr const char* ReadingText =
    "a reading (ReadGuard) is under way on this connection and must end before anything is written";

}  // namespace

void Transactions::Begin() {
  constexpr const char* operation = "begin of a transaction";
  mConnection.RefuseIfClosed(operation);
  sqlite3* handle = mConnection.Handle();
  mConnection.Recovery().Recover(handle);
  if (IsLost()) mConnection.Refuse(operation, LostTransactionText);
  if (mIsReading && mConnection.IsInTransaction()) mConnection.Refuse(operation, ReadingText);
  // SQLite would begin a transaction on a read-only file all the same, and refuse its first write.
  if (sqlite3_db_readonly(handle, "main") == 1) {
    mConnection.Refuse(operation, sqlite3_errstr(SQLITE_READONLY));
  }
  // A transaction that only reads at first could be refused its first write at once, whatever the timeout,
  // when another connection has written since: https://sqlite.org/lang_transaction.html
  if (!mConnection.Statements().PrepareRollback(handle) || !mConnection.Run("BEGIN IMMEDIATE")) {
    mConnection.Refuse(operation, sqlite3_errmsg(handle));
  }
  mConnection.Schema().TransactionBegins();
  if (!IsSchemaTrue(false)) {
    const std::string error = sqlite3_errmsg(handle);
    mConnection.Statements().Rollback(handle);
    mConnection.Refuse(operation, error);
  }
  mIsBegun = true;
  mIsReading = false;
  mSavepoints.Forget();
  ++mNumber;
  mChangesAtBegin = sqlite3_total_changes64(handle);
}

int64_t Transactions::End(bool commit) {
  constexpr const char* operation = "end of the transaction";
  mConnection.RefuseIfClosed(operation);
  if (IsLost()) {
    mIsBegun = false;
    if (!commit) return 0;
    mConnection.Refuse(operation, "it was rolled back at an earlier failure");
  }
  if (!mIsBegun) mConnection.Refuse(operation, "none was begun");
  sqlite3* handle = mConnection.Handle();
  const int64_t changes = sqlite3_total_changes64(handle) - mChangesAtBegin;
  const bool isEnded = commit ? mConnection.Run("COMMIT") : mConnection.Statements().Rollback(handle);
  const std::string error = isEnded ? std::string() : sqlite3_errmsg(handle);
  if (!mConnection.IsInTransaction()) NoteEnd();
  if (!isEnded) mConnection.Refuse(operation, error);
  return commit ? changes : 0;
}

uint64_t Transactions::BeginReading() {
  constexpr const char* operation = "begin of a reading";
  mConnection.RefuseIfClosed(operation);
  // A view that begins after a lost transaction would pass for that transaction.
  if (mConnection.IsInTransaction() || IsLost()) return 0;
  if (!mConnection.Run("BEGIN")) mConnection.Refuse(operation, sqlite3_errmsg(mConnection.Handle()));
  mIsReading = true;
  mSavepoints.Forget();
  mConnection.Schema().TransactionBegins();
  return ++mReadingNumber;
}

void Transactions::EndReading(uint64_t number) {
  if (!mConnection.IsOpen() || !mIsReading || number != mReadingNumber) return;
  mIsReading = false;
  if (!mConnection.IsInTransaction() || mConnection.Run("COMMIT")) return;
  // Memory lacks, or a statement on the handle itself has written in it.
  mConnection.Log("end of a reading refused: " + std::string(sqlite3_errmsg(mConnection.Handle())));
  mConnection.RollBackNowOrLater();
}

uint64_t Transactions::BeginSavepoint() {
  constexpr const char* operation = "begin of a savepoint";
  mConnection.RefuseIfClosed(operation);
  if (IsLost()) mConnection.Refuse(operation, LostTransactionText);
  if (!mConnection.IsInTransaction() || mIsReading) {
    mConnection.Refuse(operation, "no transaction was begun");
  }
  sqlite3* handle = mConnection.Handle();
  ChangeNotifier* notifier = mConnection.Listeners().Notifier();
  const std::size_t depth = mSavepoints.Depth();
  if (notifier) notifier->BeginSavepoint(depth);
  const int code = mSavepoints.Begin(handle);
  if (code == SQLITE_OK) return mSavepoints.LastNumber();
  const std::string error = sqlite3_errmsg(handle);
  mConnection.NoteFailure(code);
  if (notifier) notifier->ReleaseSavepoint(depth);
  mConnection.Refuse(operation, error);
}

bool Transactions::HasSavepoint(uint64_t number) const {
  return mConnection.IsInTransaction() && mSavepoints.DepthOf(number) < mSavepoints.Depth();
}

void Transactions::ReleaseSavepoint(uint64_t number) {
  const std::size_t depth = mSavepoints.DepthOf(number);
  const int code = mSavepoints.Release(depth);
  if (code != SQLITE_OK) {
    const std::string error = sqlite3_errmsg(mConnection.Handle());
    mConnection.NoteFailure(code);
    mConnection.Refuse("commit of a savepoint", error);
  }
  if (ChangeNotifier* notifier = mConnection.Listeners().Notifier()) notifier->ReleaseSavepoint(depth);
}

void Transactions::RollBackSavepoint(uint64_t number) {
  sqlite3* handle = mConnection.Handle();
  ChangeNotifier* notifier = mConnection.Listeners().Notifier();
  const std::size_t depth = mSavepoints.DepthOf(number);
  int64_t undone = 0;
  const int code = mSavepoints.Rollback(handle, depth, undone);
  if (code == SQLITE_OK) {
    mChangesAtBegin += undone;
    if (notifier) notifier->RollBackSavepoint(depth);
    return;
  }
  const std::string error = sqlite3_errmsg(handle);
  mConnection.NoteFailure(code);
  if (notifier) notifier->MarkSavepointUncertain(depth);
  // SQLite doesn't know the savepoint any more: a statement of the caller's has ended one around it.
  if ((code & 0xFF) == SQLITE_ERROR) return;
  if (mConnection.IsInTransaction()) mConnection.Statements().Rollback(handle);
  mConnection.Log("rollback to a savepoint failed, so that the whole transaction was rolled back: " + error);
  throw InvalidOperationException();
}

bool Transactions::IsLost() const {
  // https://sqlite.org/lang_transaction.html says which failures roll back by themselves.
  return mIsBegun && sqlite3_get_autocommit(mConnection.Handle()) != 0;
}

const char* Transactions::Refusal(bool isReadOnly, bool canRepeat) {
  mConnection.Recovery().Recover(mConnection.Handle());
  if (!mConnection.IsInTransaction()) {
    if (mIsBegun && !isReadOnly) return LostTransactionText;
    // A statement of the caller's may have ended the reading, or failed and so ended a transaction with its savepoints.
    mIsReading = false;
    mSavepoints.Forget();
  }
  // What a reading writes would be lost, after it was reported, if its end can't commit.
  if (mIsReading && !isReadOnly) return ReadingText;
  return IsSchemaTrue(isReadOnly, canRepeat) ? nullptr : sqlite3_errmsg(mConnection.Handle());
}

// A read that couldn't look shows by itself what was wrong, and the end of a transaction must not be refused
// for it.
bool Transactions::IsSchemaTrue(bool isReadOnly, bool canRepeat) {
  if (mConnection.Schema().IsTrue(isReadOnly, canRepeat)) return true;
  mConnection.NoteFailure(sqlite3_extended_errcode(mConnection.Handle()));
  return isReadOnly;
}

const char* Transactions::WhyNoCheck() const {
  return IsLost() ? LostTransactionText : nullptr;
}

const char* Transactions::WhyNoBackup() const {
  // A backup would copy what may yet be rolled back; SQLite refuses it too.
  return mConnection.IsWriting() ? "a transaction is open" : WhyNoCheck();
}

bool Transactions::IsUndone(const StatementHandle& statement, bool wasInTransaction) const {
  return wasInTransaction && !mConnection.IsInTransaction() && !statement.IsReadOnly();
}

void Transactions::NoteCommand(const StatementHandle& command, bool wasInTransaction) {
  const bool isInTransaction = mConnection.IsInTransaction();
  // A command that succeeds and leaves no transaction open is itself the end of the one there was.
  if (wasInTransaction && !isInTransaction) NoteEnd();
  // A command that writes, and isn't the begin of a transaction, may have changed the columns of cached statements.
  if (!command.IsReadOnly() && wasInTransaction == isInTransaction) {
    mHasChangedTables = isInTransaction;
    mConnection.Statements().Clear();
  }
}

// After a rollback, columns of cached statements may be those of tables that the transaction had changed.
void Transactions::NoteEnd() {
  mIsBegun = mIsReading = false;
  mSavepoints.Forget();
  if (std::exchange(mHasChangedTables, false)) mConnection.Statements().Clear();
}

void Transactions::Forget() {
  mSavepoints.Clear();
  mIsBegun = mIsReading = mHasChangedTables = false;
}

}  // namespace Oru::Common::Databases::Sqlite
