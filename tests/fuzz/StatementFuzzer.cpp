// A query's literals against the same value bound as a parameter, and the shape of a statement against the
// statement as it stands: both must find the same rows.
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/StatementCache.h"
#include "Oru/Common/Databases/Sqlite/StatementShape.h"

#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

using namespace Oru::Common::Databases::Sqlite;

namespace {

sqlite3* Database() {
  static sqlite3* handle = [] {
    sqlite3* made = nullptr;
    sqlite3_open(":memory:", &made);
    sqlite3_limit(made, SQLITE_LIMIT_VDBE_OP, 25000);
    sqlite3_exec(made,
                 "CREATE TABLE T (i integer, r real, t text, b blob);"
                 "INSERT INTO T VALUES (0, 0.5, '', x''), (1, -1e300, 'a''b', x'00ff'), (-1, 3, 'A%_', NULL),"
                 "(9223372036854775807, NULL, char(0), 'text');",
                 nullptr, nullptr, nullptr);
    return made;
  }();
  return handle;
}

// The rows of a statement and how it ended. Time and chance would differ from one run to the next.
std::string Rows(sqlite3_stmt* statement) {
  std::string rows;
  int code = SQLITE_OK;
  for (int count = 0; count < 20 && (code = sqlite3_step(statement)) == SQLITE_ROW; ++count) {
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
      rows += std::to_string(sqlite3_column_type(statement, i)) +
              std::string(text ? text : "", static_cast<std::size_t>(sqlite3_column_bytes(statement, i))) +
              '|';
    }
    rows += '\n';
  }
  sqlite3_reset(statement);
  return rows + std::to_string(code);
}

void Require(bool holds) {
  if (!holds) abort();
}

std::string RowsOfText(const std::string& sql) {
  const auto statement = PreparedStatement::Prepare(Database(), sql.data(), sql.size(), false);
  Require(statement != nullptr);
  return Rows(statement->Handle());
}

void CompareLiteral(const std::string& column, const std::string& value) {
  QuerySqlite query;
  query.Equals(column, value);
  const std::string select = "SELECT rowid FROM T WHERE ";
  const std::string bound = select + column + " = ?";
  const auto statement = PreparedStatement::Prepare(Database(), bound.data(), bound.size(), false);
  sqlite3_bind_text64(statement->Handle(), 1, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  Require(RowsOfText(select + query.GetFilterSQL()) == Rows(statement->Handle()));

  int64_t number = 0;
  std::memcpy(&number, value.data(), std::min(value.size(), sizeof number));
  double real = 0;
  std::memcpy(&real, &number, sizeof real);
  QuerySqlite integerQuery, realQuery;
  integerQuery.LessThan(column, number);
  realQuery.GreaterThanOrEquals(column, real);
  const std::string ranges = select + column + " < ?1 UNION ALL " + select + column + " >= ?2";
  const auto twin = PreparedStatement::Prepare(Database(), ranges.data(), ranges.size(), false);
  sqlite3_bind_int64(twin->Handle(), 1, number);
  sqlite3_bind_double(twin->Handle(), 2, real);
  Require(RowsOfText(select + integerQuery.GetFilterSQL() + " UNION ALL " + select +
                     realQuery.GetFilterSQL()) == Rows(twin->Handle()));
}

void CompareShape(const std::string& text) {
  // Only what reads, and reads the same twice.
  const auto plain = PreparedStatement::Prepare(Database(), text.data(), text.size(), false);
  if (!plain || !plain->IsReadOnly() || sqlite3_bind_parameter_count(plain->Handle()) > 0) return;
  for (const char* changing : {"random", "now", "date", "time", "changes", "sqlite_"}) {
    if (sqlite3_strlike(("%" + std::string(changing) + "%").c_str(), text.c_str(), 0) == 0) return;
  }
  StatementCache cache;
  for (int use = 0; use < 2; ++use) {
    std::unique_ptr<PreparedStatement> lifted = cache.Take(Database(), text);
    if (!lifted) return;
    Require(Rows(plain->Handle()) == Rows(lifted->Handle()));
    cache.Return(std::move(lifted), true);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  sqlite3_progress_handler(
      Database(), 1000000, [](void*) { return 1; }, nullptr);
  for (const char* column : {"i", "r", "t", "b"})
    CompareLiteral(column, text);
  if (text.find('\0') == std::string::npos) {
    CompareShape(text);
    CompareShape("SELECT t FROM T WHERE " + text);
  }
  return 0;
}
