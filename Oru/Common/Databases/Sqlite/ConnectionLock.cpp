#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"

#include "Oru/Common/Databases/Sqlite/Connection/ConnectionParts.h"

#include <sqlite3.h>

#include <memory>

namespace Oru::Common::Databases::Sqlite {

ConnectionLock::ConnectionLock(ConnectionParts& database)
    : mDatabase(database),
      mMutex(database.connection.IsOpen() ? sqlite3_db_mutex(database.connection.Handle()) : nullptr) {
  if (!mMutex) return;
  sqlite3_mutex_enter(mMutex);
  mDatabase.connection.Listeners().LockBegins();
}

ConnectionLock::~ConnectionLock() {
  if (!mMutex) return;
  const std::shared_ptr<ChangeNotifier> notifier = mDatabase.connection.Listeners().LockEnds();
  sqlite3_mutex_leave(mMutex);
  if (notifier) notifier->Notify();
}

}  // namespace Oru::Common::Databases::Sqlite
