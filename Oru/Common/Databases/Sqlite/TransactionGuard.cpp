#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

namespace Oru::Common::Databases::Sqlite {

TransactionGuard::TransactionGuard(DatabaseSqlite& database) : mDatabase(database), mNumber(0) {
  mDatabase.BeginTransaction();
  mNumber = mDatabase.TransactionNumber();
}

TransactionGuard::~TransactionGuard() {
  try {
    Rollback();
  } catch (const InvalidOperationException&) {
    // Logged; a destructor has nobody to tell.
  }
}

bool TransactionGuard::IsActive() const {
  return !mIsEnded && mDatabase.HasBegunTransaction() && mDatabase.TransactionNumber() == mNumber;
}

int64_t TransactionGuard::Commit() {
  if (!IsActive()) throw InvalidOperationException();
  const int64_t changes = mDatabase.EndTransaction(true);
  mIsEnded = true;
  return changes;
}

void TransactionGuard::Rollback() {
  if (IsActive()) mDatabase.EndTransaction(false);
  mIsEnded = true;
}

}  // namespace Oru::Common::Databases::Sqlite
