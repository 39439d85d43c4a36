#pragma once

#include "Oru/Common/Databases/Sqlite/BindValues.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/KeptStatement.h"

#include <cstdint>

namespace Oru::Common::Databases::Sqlite {

/// Finds a row's key: runs a select and gives the first column of its first row, -1 without a row.
/// @param select  a statement whose parameters take `values` in order. Values are bound and never become part
///                of the text, so that an identifier may hold any character and is never read as anything
///                else.
/// @throws ObjectClosedException when SQLite refuses the statement, InvalidOperationException when it fails;
///         both with a log entry
template <class... Values>
int64_t FindKey(DatabaseSqlite& db, KeptStatement& select, const Values&... values) {
  KeptStatement::Run run(select, db);
  BindValues(run.Cursor(), values...);
  return run.Step() ? run.Cursor().GetInt64(0) : -1;
}

}  // namespace Oru::Common::Databases::Sqlite
