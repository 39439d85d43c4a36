#pragma once

#include "Oru/Common/Databases/Export.h"

struct sqlite3_mutex;

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// Keeps other threads from a connection for the length of a scope. They wait meanwhile, readers too.
///
/// Take it wherever several calls of SQLite belong together: a step and the row, the key or the error text
/// that it leaves; a question about the transaction and what is done about the answer; statements that must
/// see one state. It may be taken again within itself, which costs little. Never take it around a call of a
/// listener's function.
///
/// Listeners are told of changes when the last lock of the thread ends: see `ChangeListener`.
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
