#pragma once

#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace Oru::TestSupport {

/// The first column of each row that a select gives, as text.
inline std::vector<std::string> Column(Common::Databases::Sqlite::DatabaseSqlite& db,
                                       const std::string& select) {
  std::vector<std::string> values;
  for (Common::Databases::Sqlite::CursorSqlite cursor(db, select); cursor.Step();)
    values.push_back(cursor.GetString(0));
  return values;
}

/// The first column of the first row, as text; "(no row)" without one.
inline std::string Value(Common::Databases::Sqlite::DatabaseSqlite& db, const std::string& select) {
  Common::Databases::Sqlite::CursorSqlite cursor(db, select);
  return cursor.Step() ? cursor.GetString(0) : "(no row)";
}

inline std::string FileContent(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace Oru::TestSupport
