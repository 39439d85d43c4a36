#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// One consistent view of the file for the length of a scope: all reads in it see the state that the first of
/// them saw, whatever other connections commit meanwhile. It also spares taking and dropping the file lock
/// for each statement, most of what a small read on a file costs.
///
/// Other connections can't commit meanwhile unless the file is in WAL mode: hold a guard for a screen of
/// clips, not for a session. Inside an open transaction, or inside another guard, a guard has nothing to do
/// and does nothing.
///
/// Nothing is written on the connection meanwhile, whichever thread tries: a write gives false and the begin
/// of a transaction throws InvalidOperationException, each with a log entry that says why.
///
/// Threads: a guard belongs to one thread at a time, and covers all reads on its connection.
class ORU_COMMON_DATABASE_EXPORT ReadGuard {
 public:
  /// @param database  must be open and must outlive the guard
  /// @throws InvalidOperationException, with a log entry, on a closed database
  explicit ReadGuard(DatabaseSqlite& database);
  ReadGuard(const ReadGuard&) = delete;
  ReadGuard& operator=(const ReadGuard&) = delete;
  ~ReadGuard();

  /// Ends the view ahead of the scope and makes the guard inert.
  void End();

 private:
  DatabaseSqlite& mDatabase;
  // The reading that the guard began, 0 for none.
  uint64_t mNumber;
};

}  // namespace Oru::Common::Databases::Sqlite
