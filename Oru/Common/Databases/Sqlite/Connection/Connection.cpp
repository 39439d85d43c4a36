#include "Oru/Common/Databases/Sqlite/Connection/Connection.h"

#include "Oru/Common/Databases/Cursor.h"
#include "Oru/Common/Databases/InvalidOperationException.h"

#include <sqlite3.h>

#include <utility>

namespace Oru::Common::Databases::Sqlite {

Connection::Connection(LogFailure logFailure)
    : mLogFailure(std::move(logFailure)),
      mStatements(std::make_unique<StatementCache>()),
      mListeners(mLogFailure) {}

Connection::~Connection() = default;

void Connection::Open(sqlite3* handle) {
  mHandle = handle;
  mSchema = std::make_unique<SchemaWatch>(handle);
}

void Connection::Close() {
  while (Cursor* cursor = mCursors.Any())
    cursor->Close();
  mStatements = std::make_unique<StatementCache>();
  mSchema.reset();
  if (ChangeNotifier* notifier = mListeners.Notifier()) notifier->Forget();
  mRecovery.Forget();
  mDeadline.Detach();
  mHandle = nullptr;
}

bool Connection::IsInTransaction() const {
  return mHandle && sqlite3_get_autocommit(mHandle) == 0;
}

bool Connection::IsWriting() const {
  return mHandle && sqlite3_txn_state(mHandle, "main") == SQLITE_TXN_WRITE;
}

bool Connection::Run(const char* statements) {
  const StatementDeadline::Scope scope(mDeadline);
  NoteBegin();
  const int code = sqlite3_exec(mHandle, statements, nullptr, nullptr, nullptr);
  NoteFailure(code);
  return code == SQLITE_OK;
}

void Connection::RollBackNowOrLater() {
  if (!Run("ROLLBACK")) mRecovery.NoteLeftTransaction();
}

void Connection::NoteBegin() {
  if (ChangeNotifier* notifier = mListeners.Notifier()) notifier->NoteStatement();
}

void Connection::NoteFailure(int code) {
  if (code == SQLITE_OK) return;
  mRecovery.NoteFailure(code);
  if (ChangeNotifier* notifier = mListeners.Notifier()) notifier->NoteFailedStatement();
}

void Connection::Refuse(const char* operation, const std::string& reason) const {
  mLogFailure(std::string(operation) + " refused: " + reason);
  throw InvalidOperationException();
}

void Connection::RefuseIfClosed(const char* operation) const {
  if (!IsOpen()) Refuse(operation, "the database is not open");
}

}  // namespace Oru::Common::Databases::Sqlite
