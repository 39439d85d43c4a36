#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

namespace Oru::Common::Databases::Sqlite {

TransactionGuard::TransactionGuard(DatabaseSqlite& database) : mDatabase(database), mNumber(0) {
  const ConnectionLock lock(mDatabase);
  mDatabase.BeginTransaction();
  mNumber = mDatabase.TransactionNumber();
}

TransactionGuard::~TransactionGuard() {
  try {
    Rollback();
  } catch (...) {
    // A rollback that SQLite refuses has been logged. Whatever else it was, the log's own failure or want of
    // memory, a destructor has nobody to tell.
  }
}

bool TransactionGuard::IsActive() const {
  return !mIsEnded && mDatabase.HasBegunTransaction() && mDatabase.TransactionNumber() == mNumber;
}

// What is asked and what is ended must be the same transaction, whatever other threads do on the connection.
int64_t TransactionGuard::Commit() {
  const ConnectionLock lock(mDatabase);
  if (!IsActive()) throw InvalidOperationException();
  const int64_t changes = mDatabase.EndTransaction(true);
  mIsEnded = true;
  return changes;
}

void TransactionGuard::Rollback() {
  const ConnectionLock lock(mDatabase);
  if (IsActive()) mDatabase.EndTransaction(false);
  mIsEnded = true;
}

}  // namespace Oru::Common::Databases::Sqlite
