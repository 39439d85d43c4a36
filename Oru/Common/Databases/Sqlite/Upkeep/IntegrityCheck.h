#pragma once

#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace Oru::Common::Databases::Sqlite {

/// Looks for damage in the main file of a connection: its pages and indexes, its foreign keys, and each
/// full-text index against the texts that it indexes.
///
/// Threads: to be used with the connection locked.
class IntegrityCheck {
 public:
  /// @param handle  an open connection, which must outlive the check
  explicit IntegrityCheck(sqlite3* handle) : mHandle(handle) {}

  /// Runs the check.
  /// @return SQLite's result code: 0, or what kept the check from running to its end
  int Run();
  /// What was found, a text each.
  const std::vector<std::string>& Findings() const { return mFindings; }

 private:
  using Description = std::string (*)(sqlite3_stmt*);

  int FindRows(const std::string& select, Description describe, std::vector<std::string>& rows);
  int CheckFullTextIndex(const std::string& table);
  int Judge(const std::string& prefix);

  sqlite3* mHandle;
  std::vector<std::string> mFindings;
};

}  // namespace Oru::Common::Databases::Sqlite
