#pragma once

#include "Oru/Common/Databases/Sqlite/KeptSelect.h"
#include "Oru/Common/Databases/Sqlite/ViewSqlite.h"

#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// Reads the first of the rows of a view that a select finds for a value, its one parameter.
/// @return false, with `object` as it was, when there is none
/// @throws InvalidOperationException, with a log entry, when SQLite refuses the value or fails; so do the
///         other operations here
template <class T, class Value>
bool ReadFirst(ViewSqlite<T>& view, KeptSelect<T>& select, const Value& value, T& object) {
  typename KeptSelect<T>::Run run(select, view, value);
  return run.Cursor().Next(object);
}

/// Walks those rows, reading each into the same object.
/// @param use  called with the object behind each row; what it leaves in the object stays for the next row
template <class T, class Value, class Use>
void ReadEach(ViewSqlite<T>& view, KeptSelect<T>& select, const Value& value, Use use) {
  typename KeptSelect<T>::Run run(select, view, value);
  for (T object{}; run.Cursor().Next(object);)
    use(object);
}

/// Walks those rows, reading each into an object of its own.
/// @param make  gives an owning pointer to a new object
/// @param use   called with that pointer behind each row
template <class T, class Value, class Make, class Use>
void ReadEachNew(ViewSqlite<T>& view, KeptSelect<T>& select, const Value& value, Make make, Use use) {
  typename KeptSelect<T>::Run run(select, view, value);
  for (auto object = make(); run.Cursor().Next(*object); object = make())
    use(std::move(object));
}

}  // namespace Oru::Common::Databases::Sqlite
