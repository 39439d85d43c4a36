#include "Oru/Common/Databases/Sqlite/OwnedRows.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <exception>

namespace Oru::Common::Databases::Sqlite {

QuerySqlite OwnedBy(const std::string& column) {
  QuerySqlite query;
  query.EqualsParameter(column);
  return query;
}

OwnedRowsDeletion::OwnedRowsDeletion(const std::string& table, const std::string& column)
    : mStatement("DELETE FROM " + table + " WHERE " + OwnedBy(column).GetFilterSQL()) {}

bool OwnedRowsDeletion::Run(DatabaseSqlite& db, int64_t ownerKey) {
  if (!mCursor.IsOpened() || &mCursor.GetDatabase() != &db) mCursor.Reset(db, mStatement, std::string());
  if (!mCursor.Bind(1, ownerKey)) return false;
  bool isDone = true;
  try {
    mCursor.Run();
  } catch (const std::exception&) {
    // The cursor has logged why.
    isDone = false;
  }
  mCursor.Reset();
  return isDone;
}

}  // namespace Oru::Common::Databases::Sqlite
