#pragma once

#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/View.h"

namespace Oru::Common::Databases::Sqlite {

/// Walks the rows that a query selects from a view, reading each into the same object.
/// @param use  called with the object behind each row; what it leaves in the object stays for the next row
template <class T, class Use>
void ReadEach(View<T>& view, Query& query, Use use) {
  ObjectCursorSqlite<T, T> cursor;
  view.OpenObjectCursor(cursor, query);
  for (T object{}; cursor.Next(object);)
    use(object);
}

/// Walks the rows that a query selects from a view, reading each into an object of its own.
/// @param make  gives an owning pointer to a new object
/// @param use   called with that pointer behind each row
template <class T, class Make, class Use>
void ReadEachNew(View<T>& view, Query& query, Make make, Use use) {
  ObjectCursorSqlite<T, T> cursor;
  view.OpenObjectCursor(cursor, query);
  for (auto object = make(); cursor.Next(*object); object = make())
    use(std::move(object));
}

}  // namespace Oru::Common::Databases::Sqlite
