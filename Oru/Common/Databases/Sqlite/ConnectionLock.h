#pragma once

#include "Oru/Common/Databases/Export.h"

#include <memory>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;
class HandleLock;

/// Keeps other threads from an open connection for the length of a scope, so that the statements run in it
/// see one state and are all in the same transaction, if in any. They wait meanwhile, readers too.
///
/// Threads: a lock belongs to the thread that made it, which may hold several of one connection.
class ORU_COMMON_DATABASE_EXPORT ConnectionLock {
 public:
  /// @param database  must be open, and stay so for the scope
  explicit ConnectionLock(const DatabaseSqlite& database);
  ConnectionLock(const ConnectionLock&) = delete;
  ConnectionLock& operator=(const ConnectionLock&) = delete;
  ~ConnectionLock();

 private:
  std::unique_ptr<HandleLock> mLock;
};

}  // namespace Oru::Common::Databases::Sqlite
