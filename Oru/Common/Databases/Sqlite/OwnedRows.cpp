#include "Oru/Common/Databases/Sqlite/OwnedRows.h"

#include <exception>

namespace Oru::Common::Databases::Sqlite {

QuerySqlite OwnedBy(const std::string& column) {
  QuerySqlite query;
  query.Equals(column, int64_t{0});
  return query;
}

OwnedRowsDeletion::OwnedRowsDeletion(const std::string& table, const std::string& column)
    : mStatement("DELETE FROM " + table + " WHERE " + column + " = ?") {}

bool OwnedRowsDeletion::Run(DatabaseSqlite& db, int64_t ownerKey) {
  KeptStatement::Run run(mStatement, db);
  if (!run.Cursor().Bind(1, ownerKey)) return false;
  try {
    run.Cursor().Run();
    return true;
  } catch (const std::exception&) {
    // The cursor has logged why.
    return false;
  }
}

}  // namespace Oru::Common::Databases::Sqlite
