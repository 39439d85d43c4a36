#pragma once

#include "Oru/Common/Databases/Export.h"

struct sqlite3_mutex;

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// Keeps other threads from a connection for the length of a scope, so that the statements run in it see one
/// state and are all in the same transaction, if in any. They wait meanwhile, readers too. What SQLite locks
/// for each call within costs little then, since the lock is held already.
///
/// Who listens to changes is told of them when the last lock of the thread ends: see `ChangeListener`.
///
/// Threads: a lock belongs to the thread that made it, which may hold several of one connection.
class ORU_COMMON_DATABASE_EXPORT ConnectionLock {
 public:
  /// @param database  must stay open for the scope if it is; on a closed one there is nothing to lock
  explicit ConnectionLock(const DatabaseSqlite& database);
  ConnectionLock(const ConnectionLock&) = delete;
  ConnectionLock& operator=(const ConnectionLock&) = delete;
  ~ConnectionLock();

 private:
  const DatabaseSqlite& mDatabase;
  sqlite3_mutex* mMutex;
};

}  // namespace Oru::Common::Databases::Sqlite
