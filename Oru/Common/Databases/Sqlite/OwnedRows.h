#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include <cstdint>
#include <string>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// The rows that refer to an owner: those whose `column` holds its key.
ORU_COMMON_DATABASE_EXPORT QuerySqlite OwnedBy(const std::string& column, int64_t key);

/// Deletes the rows of a table that refer to an owner. That there are none is no failure.
/// @return false, with a log entry, when the database refuses
ORU_COMMON_DATABASE_EXPORT bool DeleteOwnedRows(DatabaseSqlite& database, const std::string& table,
                                                const std::string& column, int64_t key);

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
