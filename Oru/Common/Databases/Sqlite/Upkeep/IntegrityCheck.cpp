#include "Oru/Common/Databases/Sqlite/Upkeep/IntegrityCheck.h"

#include "Oru/Common/Databases/Sqlite/Statements/SqlText.h"
#include "Oru/Common/Databases/Sqlite/Statements/StatementHandle.h"

#include <sqlite3.h>

namespace Oru::Common::Databases::Sqlite {

namespace {

std::string Text(sqlite3_stmt* row, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  return text ? text : "";
}

std::string FirstColumn(sqlite3_stmt* row) {
  return Text(row, 0);
}

// https://sqlite.org/pragma.html#pragma_foreign_key_check
std::string ForeignKeyFinding(sqlite3_stmt* row) {
  return "row " + Text(row, 1) + " of " + Text(row, 0) + " refers to a missing row of " + Text(row, 2);
}

}  // namespace

int IntegrityCheck::Run() {
  int code = FindRows("PRAGMA main.integrity_check", FirstColumn, mFindings);
  // SQLite reports a sound file by one row.
  if (!mFindings.empty() && mFindings.front() == "ok") mFindings.clear();
  if (code == SQLITE_OK) code = FindRows("PRAGMA main.foreign_key_check", ForeignKeyFinding, mFindings);
  // SQLite checks a full-text index by a statement that counts as a write.
  if (code != SQLITE_OK || sqlite3_db_readonly(mHandle, "main") == 1) return code;
  std::vector<std::string> indexes;
  code = FindRows(
      "SELECT name FROM main.sqlite_schema WHERE type = 'table'"
      " AND sql LIKE 'CREATE VIRTUAL TABLE%USING fts5%' ORDER BY name",
      FirstColumn, indexes);
  for (std::size_t i = 0; i < indexes.size() && code == SQLITE_OK; ++i)
    code = CheckFullTextIndex(indexes[i]);
  return code;
}

int IntegrityCheck::FindRows(const std::string& select, Description describe,
                             std::vector<std::string>& rows) {
  const auto statement = StatementHandle::Prepare(mHandle, select, false);
  if (!statement) return Judge({});
  int code = SQLITE_OK;
  while ((code = sqlite3_step(statement->Handle())) == SQLITE_ROW)
    rows.push_back(describe(statement->Handle()));
  return code == SQLITE_DONE ? SQLITE_OK : Judge({});
}

// https://sqlite.org/fts5.html#the_integrity_check_command
int IntegrityCheck::CheckFullTextIndex(const std::string& table) {
  const std::string name = SqlText::QuotedName(table);
  const std::string text = "INSERT INTO main." + name + "(" + name + ", rank) VALUES('integrity-check', 1)";
  const int code = sqlite3_exec(mHandle, text.c_str(), nullptr, nullptr, nullptr);
  return code == SQLITE_OK ? SQLITE_OK : Judge("full-text index " + table + ": ");
}

// Damage is a finding; other failures have nothing to do with the content of the file.
int IntegrityCheck::Judge(const std::string& prefix) {
  const int code = sqlite3_extended_errcode(mHandle);
  const int plainCode = code & 0xFF;
  if (plainCode != SQLITE_CORRUPT && plainCode != SQLITE_NOTADB && plainCode != SQLITE_ERROR) return code;
  mFindings.push_back(prefix + sqlite3_errmsg(mHandle));
  return SQLITE_OK;
}

}  // namespace Oru::Common::Databases::Sqlite
