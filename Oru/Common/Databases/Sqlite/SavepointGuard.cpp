#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

namespace Oru::Common::Databases::Sqlite {

SavepointGuard::SavepointGuard(DatabaseSqlite& database)
    : mDatabase(database), mNumber(database.BeginSavepoint()) {}

SavepointGuard::~SavepointGuard() {
  try {
    Rollback();
  } catch (...) {
    // A rollback that fails has been logged, as far as there was memory and a log for it.
  }
}

bool SavepointGuard::IsActive() const {
  return mDatabase.HasSavepoint(mNumber);
}

// What is asked and what is ended must be the same savepoint, whatever other threads do on the connection.
void SavepointGuard::Commit() {
  const ConnectionLock lock(mDatabase);
  if (!IsActive()) throw InvalidOperationException();
  mDatabase.ReleaseSavepoint(mNumber);
}

void SavepointGuard::Rollback() {
  const ConnectionLock lock(mDatabase);
  if (IsActive()) mDatabase.RollBackSavepoint(mNumber);
}

}  // namespace Oru::Common::Databases::Sqlite
