#include "Oru/Common/Databases/Sqlite/RawCursorSqlite.h"

#include "Oru/Common/Databases/RawRead.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <sqlite3.h>

#include <memory>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

void ReadRow(CursorSqlite& cursor, RawRead& row) {
  sqlite3_stmt* statement = cursor.Statement();
  const int count = sqlite3_column_count(statement);
  for (int i = 0; i < count; ++i) {
    const std::string name = cursor.GetColumnName(i);
    switch (sqlite3_column_type(statement, i)) {
      case SQLITE_INTEGER:
        row.Set(name, cursor.GetInt64(i));
        break;
      case SQLITE_FLOAT:
        row.Set(name, cursor.GetDouble(i));
        break;
      case SQLITE_TEXT:
        row.Set(name, cursor.GetString(i));
        break;
      case SQLITE_BLOB: {
        uint8_t* bytes = nullptr;
        const int32_t length = cursor.GetBytes(i, &bytes);
        const std::unique_ptr<uint8_t[]> owner(bytes);
        row.Set(name, bytes, length);
        break;
      }
      case SQLITE_NULL:
        row.SetNull(name);
        break;
      default:
        break;
    }
  }
}

RawCursorSqlite::RawCursorSqlite() = default;

RawCursorSqlite::RawCursorSqlite(DatabaseSqlite& db, const std::string& select)
    : RawCursorSqlite(db, select, std::string()) {}

RawCursorSqlite::RawCursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count)
    : ForwardingCursor(db) {
  cursorSqlite.Reset(db, select, count);
}

RawCursorSqlite::RawCursorSqlite(DatabaseSqlite& db, StatementText select, StatementText count)
    : ForwardingCursor(db) {
  cursorSqlite.Reset(db, std::move(select), std::move(count));
}

RawCursorSqlite::~RawCursorSqlite() = default;

void RawCursorSqlite::Reset(DatabaseSqlite& db, const std::string& select, const std::string& count) {
  AttachToDatabase(db);
  cursorSqlite.Reset(db, select, count);
}

void RawCursorSqlite::Reset(DatabaseSqlite& db, StatementText select, StatementText count) {
  AttachToDatabase(db);
  cursorSqlite.Reset(db, std::move(select), std::move(count));
}

bool RawCursorSqlite::Next(RawRead& row) {
  if (!cursorSqlite.Step()) return false;
  ReadRow(cursorSqlite, row);
  return true;
}

}  // namespace Oru::Common::Databases::Sqlite
