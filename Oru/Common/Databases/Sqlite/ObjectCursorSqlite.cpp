#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"

#include "Oru/Common/Databases/Sqlite/RawCursorSqlite.h"

namespace Oru::Common::Databases::Sqlite {

template <>
bool ObjectCursorSqlite<RawReadSqlite, RawReadSqlite>::Next(RawReadSqlite& row) {
  if (!cursorSqlite.IsOpened()) throw ObjectClosedException();
  row.InitFromToCursor(cursorSqlite);
  if (!cursorSqlite.Step()) return false;
  ReadRow(cursorSqlite, row);
  return true;
}

template class ObjectCursorSqlite<RawReadSqlite, RawReadSqlite>;

}  // namespace Oru::Common::Databases::Sqlite
