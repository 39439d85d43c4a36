#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/KeptStatement.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// The rows that refer to an owner: those whose `column` holds its key, the parameter of the text that runs.
ORU_COMMON_DATABASE_EXPORT QuerySqlite OwnedBy(const std::string& column);

/// Deletes the rows of a table that refer to an owner, by a statement that it keeps.
///
/// Threads: may be run from several threads at once; each waits for the other's run.
class ORU_COMMON_DATABASE_EXPORT OwnedRowsDeletion {
 public:
  /// @param table   the stored table
  /// @param column  its column that holds the key of the owner
  OwnedRowsDeletion(const std::string& table, const std::string& column);

  /// Deletes the rows of the owner with that key. That there are none is no failure.
  /// @return false, with a log entry, when the database refuses
  bool Run(DatabaseSqlite& db, int64_t ownerKey);

 private:
  KeptStatement mStatement;
};

/// Calls `write` with each element of a collection in order, up to the first one that it gives false for.
/// @return false if it gave false for one; true for an empty collection
template <class Collection, class Write>
bool WriteEach(Collection& collection, Write write) {
  for (auto& element : collection) {
    if (!write(element)) return false;
  }
  return true;
}

}  // namespace Oru::Common::Databases::Sqlite
