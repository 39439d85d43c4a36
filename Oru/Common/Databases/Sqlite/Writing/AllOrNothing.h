#pragma once

#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include <type_traits>

namespace Oru::Common::Databases::Sqlite {

/// Runs one write operation, and stores all that it writes or nothing. The operation has the connection to
/// itself from beginning to end. It is a transaction of its own, or a savepoint if its caller has begun a
/// transaction:
///
///     return AllOrNothing(database, [&] { return WriteGroup(group); });
///
/// @param write  what it throws passes on, after what it wrote was rolled back
/// @return what `write` gives, once that is stored
/// @throws InvalidOperationException, with a log entry, within a `ReadGuard`, and when the file can't be
///         written
template <class Write>
auto AllOrNothing(DatabaseSqlite& database, Write write) {
  const auto runIn = [&write](auto& guard) {
    if constexpr (std::is_void_v<decltype(write())>) {
      write();
      guard.Commit();
    } else {
      auto result = write();
      guard.Commit();
      return result;
    }
  };
  const ConnectionLock lock(database.Parts());
  if (database.IsInTransaction()) {
    SavepointGuard savepoint(database);
    return runIn(savepoint);
  }
  TransactionGuard transaction(database);
  return runIn(transaction);
}

}  // namespace Oru::Common::Databases::Sqlite
