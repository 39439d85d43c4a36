#pragma once

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

}  // namespace Oru::Common::Databases::Sqlite
