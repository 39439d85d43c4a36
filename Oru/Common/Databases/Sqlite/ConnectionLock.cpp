#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"

#include "Oru/Common/Databases/Sqlite/Connection/ConnectionParts.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <sqlite3.h>

#include <memory>

namespace Oru::Common::Databases::Sqlite {

ConnectionLock::ConnectionLock(const DatabaseSqlite& database)
    : mDatabase(database), mMutex(database.Handle() ? sqlite3_db_mutex(database.Handle()) : nullptr) {
  if (!mMutex) return;
  sqlite3_mutex_enter(mMutex);
  mDatabase.Parts().connection.Listeners().LockBegins();
}

ConnectionLock::~ConnectionLock() {
  if (!mMutex) return;
  const std::shared_ptr<ChangeNotifier> notifier = mDatabase.Parts().connection.Listeners().LockEnds();
  sqlite3_mutex_leave(mMutex);
  if (notifier) notifier->Notify();
}

}  // namespace Oru::Common::Databases::Sqlite
