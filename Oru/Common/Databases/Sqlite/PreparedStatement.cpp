#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"

#include <climits>
#include <sqlite3.h>

#include <algorithm>
#include <string_view>

namespace Oru::Common::Databases::Sqlite {

namespace {

// Searches names from `*next` on and around; the position found or -1.
int Find(const std::vector<std::string>& names, const std::string& name, std::size_t* next) {
  const std::size_t count = names.size();
  std::size_t at = *next < count ? *next : 0;
  for (std::size_t tries = 0; tries < count; ++tries) {
    const std::size_t found = at;
    if (++at == count) at = 0;
    if (names[found] == name) {
      *next = at;
      return static_cast<int>(found);
    }
  }
  return -1;
}

}  // namespace

std::unique_ptr<PreparedStatement> PreparedStatement::Prepare(sqlite3* handle, const char* text,
                                                              std::size_t length, bool isKept) {
  sqlite3_stmt* statement = nullptr;
  const unsigned int flags = isKept ? SQLITE_PREPARE_PERSISTENT : 0;
  const int bytes = length > INT_MAX ? INT_MAX : static_cast<int>(length);
  if (sqlite3_prepare_v3(handle, text, bytes, flags, &statement, nullptr) != SQLITE_OK || !statement) {
    return nullptr;
  }
  return std::unique_ptr<PreparedStatement>(new PreparedStatement(statement));
}

PreparedStatement::PreparedStatement(sqlite3_stmt* statement)
    : mStatement(statement), mIsReadOnly(sqlite3_stmt_readonly(statement) != 0) {
  ReadColumns();
  const int count = sqlite3_bind_parameter_count(mStatement);
  mParameterNames.reserve(static_cast<std::size_t>(count));
  for (int i = 1; i <= count; ++i) {
    const char* name = sqlite3_bind_parameter_name(mStatement, i);
    mParameterNames.emplace_back(name ? name + 1 : "");
  }
}

PreparedStatement::~PreparedStatement() {
  sqlite3_finalize(mStatement);
}

void PreparedStatement::ReadColumns() {
  const int count = sqlite3_column_count(mStatement);
  mColumnNames.clear();
  mColumnNames.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const char* name = sqlite3_column_name(mStatement, i);
    mColumnNames.emplace_back(name ? name : "");
  }
  std::vector<std::string_view> sorted(mColumnNames.begin(), mColumnNames.end());
  std::sort(sorted.begin(), sorted.end());
  mHasRepeatedNames = std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end();
}

int PreparedStatement::ColumnIndex(const std::string& name, std::size_t* next) const {
  if (mHasRepeatedNames) *next = 0;
  return Find(mColumnNames, name, next);
}

int PreparedStatement::ParameterIndex(const std::string& name, std::size_t* next) const {
  // Parameters without a name are nobody's to bind by name.
  return name.empty() ? 0 : Find(mParameterNames, name, next) + 1;
}

void PreparedStatement::NoticeNewPreparation() {
  // https://sqlite.org/c3ref/c_stmtstatus_counter.html
  const int preparations = sqlite3_stmt_status(mStatement, SQLITE_STMTSTATUS_REPREPARE, 0);
  if (preparations == mPreparations) return;
  mPreparations = preparations;
  ReadColumns();
}

void PreparedStatement::Rewind() {
  sqlite3_reset(mStatement);
  if (!hasLiftedLiterals) sqlite3_clear_bindings(mStatement);
}

void PreparedStatement::Clear() {
  sqlite3_reset(mStatement);
  if (!mParameterNames.empty()) sqlite3_clear_bindings(mStatement);
}

}  // namespace Oru::Common::Databases::Sqlite
