#pragma once

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

namespace Oru::Common::Databases::Sqlite {

/// Calls `write` with each element of a collection in order, up to the first one that it gives false for.
/// @return false if it gave false for one; true for an empty collection
template <class Collection, class Write>
bool WriteEach(Collection& collection, Write write) {
  for (auto& element : collection) {
    if (!write(element)) return false;
  }
  return true;
}

/// Calls `write` with each object that the pointers of a collection point to, in order, up to the first one that
/// it gives false for.
/// @return the same; false, with a log entry, at a null pointer
template <class Pointers, class Write>
bool WriteEachObject(DatabaseSqlite& database, Pointers& pointers, Write write) {
  return WriteEach(pointers, [&](auto& pointer) {
    if (!pointer) database.LogFailure("there is a null pointer among what is to be stored");
    return pointer && write(*pointer);
  });
}

}  // namespace Oru::Common::Databases::Sqlite
