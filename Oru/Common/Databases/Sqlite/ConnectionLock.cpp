#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <sqlite3.h>

namespace Oru::Common::Databases::Sqlite {

ConnectionLock::ConnectionLock(const DatabaseSqlite& database)
    : mMutex(database.IsOpen() ? sqlite3_db_mutex(database.Handle()) : nullptr) {
  sqlite3_mutex_enter(mMutex);
}

ConnectionLock::~ConnectionLock() {
  sqlite3_mutex_leave(mMutex);
}

}  // namespace Oru::Common::Databases::Sqlite
