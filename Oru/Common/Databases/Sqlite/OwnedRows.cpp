#include "Oru/Common/Databases/Sqlite/OwnedRows.h"

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

namespace Oru::Common::Databases::Sqlite {

QuerySqlite OwnedBy(const std::string& column, int64_t key) {
  QuerySqlite query;
  query.Equals(column, key);
  return query;
}

bool DeleteOwnedRows(DatabaseSqlite& database, const std::string& table, const std::string& column,
                     int64_t key) {
  std::string text("DELETE FROM ");
  text.append(table).append(" WHERE ").append(column).append(" = ").append(std::to_string(key));
  return database.ExecuteStatement(text);
}

}  // namespace Oru::Common::Databases::Sqlite
