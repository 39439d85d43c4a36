#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/Connection/ConnectionParts.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

namespace Oru::Common::Databases::Sqlite {

SavepointGuard::SavepointGuard(DatabaseSqlite& database) : mDatabase(database), mNumber(0) {
  const ConnectionLock lock(mDatabase.Parts());
  mNumber = mDatabase.Parts().transactions.BeginSavepoint();
}

SavepointGuard::~SavepointGuard() {
  try {
    Rollback();
  } catch (...) {
    // A destructor can't report a failure. A rollback that fails has been logged.
  }
}

bool SavepointGuard::IsActive() const {
  const ConnectionLock lock(mDatabase.Parts());
  return mDatabase.Parts().transactions.HasSavepoint(mNumber);
}

// The lock: no other thread may end the savepoint between the question and the end.
void SavepointGuard::Commit() {
  const ConnectionLock lock(mDatabase.Parts());
  if (!IsActive()) throw InvalidOperationException();
  mDatabase.Parts().transactions.ReleaseSavepoint(mNumber);
}

void SavepointGuard::Rollback() {
  const ConnectionLock lock(mDatabase.Parts());
  if (IsActive()) mDatabase.Parts().transactions.RollBackSavepoint(mNumber);
}

}  // namespace Oru::Common::Databases::Sqlite
