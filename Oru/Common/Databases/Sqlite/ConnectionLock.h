#pragma once

#include "Oru/Common/Databases/Export.h"

struct sqlite3_mutex;

namespace Oru::Common::Databases::Sqlite {

struct ConnectionParts;

/// Keeps other threads from a connection for the length of a scope. They wait, readers too.
///
/// Take it when several calls of SQLite belong together: a step and the row, the key or the error text that
/// it leaves; a question about the transaction and what follows from the answer; statements that must see one
/// state. A thread may take it again while it holds it, which costs little. Never hold it during a call of a
/// listener's function.
///
/// Listeners are notified of changes when the last lock of the thread ends: see `ChangeListener`.
///
/// Threads: a lock belongs to the thread that made it, which may hold several of one connection.
class ORU_COMMON_DATABASE_EXPORT ConnectionLock {
 public:
  /// @param database  `Parts()` of a database that stays open for the scope; if it is closed, nothing is locked
  explicit ConnectionLock(ConnectionParts& database);
  ConnectionLock(const ConnectionLock&) = delete;
  ConnectionLock& operator=(const ConnectionLock&) = delete;
  ~ConnectionLock();

 private:
  ConnectionParts& mDatabase;
  sqlite3_mutex* mMutex;
};

}  // namespace Oru::Common::Databases::Sqlite
