#pragma once

#include "Oru/Common/Databases/Sqlite/BindValues.h"
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/ViewSqlite.h"

#include <string>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// Opens a cursor that the caller holds on the rows of a view that a select text of it finds for a value, the
/// one parameter of the text. As the view's own opening, but without the statement that counts the rows.
/// @throws InvalidOperationException, with a log entry, when SQLite refuses the value
template <class T, class Value>
void OpenRows(ViewSqlite<T>& view, const std::string& select, const Value& value,
              ObjectCursorSqlite<T, T>& cursor) {
  cursor.AttachToTable(view);
  cursor.Reset(static_cast<DatabaseSqlite&>(view.GetDatabase()), select, std::string(), true);
  BindValues(cursor, value);
}

/// Reads the first of the rows that `OpenRows` opens.
/// @return false, with `object` as it was, when there is none
template <class T, class Value>
bool ReadFirst(ViewSqlite<T>& view, const std::string& select, const Value& value, T& object) {
  ObjectCursorSqlite<T, T> cursor;
  OpenRows(view, select, value, cursor);
  return cursor.Next(object);
}

/// Walks the rows that `OpenRows` opens, reading each into the same object.
/// @param use  called with the object behind each row; what it leaves in the object stays for the next row
template <class T, class Value, class Use>
void ReadEach(ViewSqlite<T>& view, const std::string& select, const Value& value, Use use) {
  ObjectCursorSqlite<T, T> cursor;
  OpenRows(view, select, value, cursor);
  for (T object{}; cursor.Next(object);)
    use(object);
}

/// Walks the rows that `OpenRows` opens, reading each into an object of its own.
/// @param make  gives an owning pointer to a new object
/// @param use   called with that pointer behind each row
template <class T, class Value, class Make, class Use>
void ReadEachNew(ViewSqlite<T>& view, const std::string& select, const Value& value, Make make, Use use) {
  ObjectCursorSqlite<T, T> cursor;
  OpenRows(view, select, value, cursor);
  for (auto object = make(); cursor.Next(*object); object = make())
    use(std::move(object));
}

}  // namespace Oru::Common::Databases::Sqlite
