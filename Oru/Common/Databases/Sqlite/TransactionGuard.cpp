#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

namespace Oru::Common::Databases::Sqlite {

TransactionGuard::TransactionGuard(DatabaseSqlite& database) : mDatabase(database), mNumber(0) {
  const ConnectionLock lock(mDatabase.Parts());
  mDatabase.BeginTransaction();
  mNumber = mDatabase.TransactionNumber();
}

TransactionGuard::~TransactionGuard() {
  try {
    Rollback();
  } catch (...) {
    // A destructor can't report a failure. A rollback that fails has been logged.
  }
}

bool TransactionGuard::IsActive() const {
  return !mIsEnded && mDatabase.HasBegunTransaction() && mDatabase.TransactionNumber() == mNumber;
}

// The lock: no other thread may end the transaction between the question and the end.
int64_t TransactionGuard::Commit() {
  const ConnectionLock lock(mDatabase.Parts());
  if (!IsActive()) throw InvalidOperationException();
  const int64_t changes = mDatabase.EndTransaction(true);
  mIsEnded = true;
  return changes;
}

void TransactionGuard::Rollback() {
  const ConnectionLock lock(mDatabase.Parts());
  if (IsActive()) mDatabase.EndTransaction(false);
  mIsEnded = true;
}

}  // namespace Oru::Common::Databases::Sqlite
