#pragma once

#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/ViewSqlite.h"

#include <string>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// Opens a cursor that the caller holds on the rows that a query selects from a view. As the view's own
/// opening, but without the statement that counts the rows.
template <class T>
void OpenUncounted(ViewSqlite<T>& view, Query& query, ObjectCursorSqlite<T, T>& cursor) {
  cursor.AttachToTable(view);
  cursor.Reset(static_cast<DatabaseSqlite&>(view.GetDatabase()),
               view.StatementGenerator().GenerateSelectStatement(query), std::string(), true);
}

/// Reads the first row that a query selects from a view.
/// @return false, with `object` as it was, when there is none
template <class T>
bool ReadFirst(ViewSqlite<T>& view, Query& query, T& object) {
  ObjectCursorSqlite<T, T> cursor;
  OpenUncounted(view, query, cursor);
  return cursor.Next(object);
}

/// Walks the rows that a query selects from a view, reading each into the same object.
/// @param use  called with the object behind each row; what it leaves in the object stays for the next row
template <class T, class Use>
void ReadEach(ViewSqlite<T>& view, Query& query, Use use) {
  ObjectCursorSqlite<T, T> cursor;
  OpenUncounted(view, query, cursor);
  for (T object{}; cursor.Next(object);)
    use(object);
}

/// Walks the rows that a query selects from a view, reading each into an object of its own.
/// @param make  gives an owning pointer to a new object
/// @param use   called with that pointer behind each row
template <class T, class Make, class Use>
void ReadEachNew(ViewSqlite<T>& view, Query& query, Make make, Use use) {
  ObjectCursorSqlite<T, T> cursor;
  OpenUncounted(view, query, cursor);
  for (auto object = make(); cursor.Next(*object); object = make())
    use(std::move(object));
}

}  // namespace Oru::Common::Databases::Sqlite
