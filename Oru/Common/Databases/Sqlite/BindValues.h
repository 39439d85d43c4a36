#pragma once

#include "Oru/Common/Databases/InvalidOperationException.h"

#include <cstdint>

namespace Oru::Common::Databases::Sqlite {

/// Binds the parameters of a statement in their order. A closed cursor is left to the step that follows,
/// which tells of it.
/// @param cursor  a `CursorSqlite` or an `ObjectCursorSqlite`
/// @throws InvalidOperationException, with a log entry, when SQLite refuses a value
template <class BoundCursor, class... Values>
void BindValues(BoundCursor& cursor, const Values&... values) {
  int32_t number = 0;
  const bool isBound = !cursor.IsOpened() || (cursor.Bind(++number, values) && ...);
  if (!isBound) throw InvalidOperationException();
}

}  // namespace Oru::Common::Databases::Sqlite
