#include "Oru/Common/Databases/Sqlite/Upkeep/MemoryRecovery.h"

#include <sqlite3.h>

namespace Oru::Common::Databases::Sqlite {

void MemoryRecovery::NoteFailure(int code) {
  if ((code & 0xFF) == SQLITE_NOMEM) mHasLackedMemory = true;
}

void MemoryRecovery::RollBack(sqlite3* handle) {
  sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
  mHasLeftTransaction = sqlite3_get_autocommit(handle) == 0;
}

// SQLite drops the sums when it reads the schema again.
void MemoryRecovery::DropSums(sqlite3* handle) {
  if (sqlite3_get_autocommit(handle) == 0) return;
  const int code = sqlite3_exec(handle, "PRAGMA writable_schema = RESET", nullptr, nullptr, nullptr);
  if (code == SQLITE_OK) mHasLackedMemory = false;
}

}  // namespace Oru::Common::Databases::Sqlite
