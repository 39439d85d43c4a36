#pragma once

#include <sqlite3.h>

namespace Oru::Common::Databases::Sqlite {

/// Holds the connection's own recursive mutex, so that a step and the error text that it leaves belong
/// together while other threads use the connection too (https://sqlite.org/c3ref/errcode.html). Internal to
/// the access layer.
class HandleLock {
 public:
  explicit HandleLock(sqlite3* handle) : mMutex(sqlite3_db_mutex(handle)) { sqlite3_mutex_enter(mMutex); }
  HandleLock(const HandleLock&) = delete;
  HandleLock& operator=(const HandleLock&) = delete;
  ~HandleLock() { sqlite3_mutex_leave(mMutex); }

 private:
  sqlite3_mutex* mMutex;
};

}  // namespace Oru::Common::Databases::Sqlite
