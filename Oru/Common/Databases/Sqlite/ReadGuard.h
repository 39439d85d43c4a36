#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// One consistent view of the file for the length of a scope: all reads in it see the state that the first of
/// them saw, whatever other connections commit meanwhile. It also takes the file lock once instead of once
/// for each statement, which is most of the cost of a small read on a file.
///
/// Other connections can't commit meanwhile unless the file is in WAL mode. So hold a guard for a screen of
/// clips, not for a session. Inside an open transaction, or inside another guard, a guard does nothing.
///
/// No thread can write on the connection meanwhile: a write gives false and the begin of a transaction throws
/// InvalidOperationException, each with a log entry that says why.
///
/// Threads: a guard covers the reads of all threads on its connection.
class ORU_COMMON_DATABASE_EXPORT ReadGuard {
 public:
  /// @param database  must be open and must outlive the guard
  /// @throws InvalidOperationException, with a log entry, on a closed database
  explicit ReadGuard(DatabaseSqlite& database);
  ReadGuard(const ReadGuard&) = delete;
  ReadGuard& operator=(const ReadGuard&) = delete;
  ~ReadGuard();

  /// Ends the view before the scope ends, and makes the guard inert.
  void End();

 private:
  DatabaseSqlite& mDatabase;
  // The reading that the guard began, 0 for none.
  uint64_t mNumber;
};

}  // namespace Oru::Common::Databases::Sqlite
