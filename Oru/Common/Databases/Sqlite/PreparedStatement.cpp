#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"

#include <climits>
#include <sqlite3.h>

namespace Oru::Common::Databases::Sqlite {

namespace {

// What a statement may hold on to for each parameter while it waits for its next use.
constexpr std::size_t LongestKeptText = 256;

}  // namespace

std::unique_ptr<PreparedStatement> PreparedStatement::Prepare(sqlite3* handle, const char* text,
                                                              std::size_t length, bool isKept) {
  sqlite3_stmt* statement = nullptr;
  const unsigned int flags = isKept ? SQLITE_PREPARE_PERSISTENT : 0;
  const int bytes = length > INT_MAX ? INT_MAX : static_cast<int>(length);
  if (Prepare(handle, text, bytes, flags, &statement, nullptr) != SQLITE_OK || !statement) return nullptr;
  return std::unique_ptr<PreparedStatement>(new PreparedStatement(statement));
}

int PreparedStatement::Prepare(sqlite3* handle, const char* text, int length, unsigned int flags,
                               sqlite3_stmt** statement, const char** behind) {
  const int code = sqlite3_prepare_v3(handle, text, length, flags, statement, behind);
  // A statement that needs the full-text index may be the first to find that another connection has changed
  // the schema. Taking up the index then reads the schema anew in the midst of the statement, which knows
  // none of its tables any more, and SQLite 3.40 gives up at the second such try. The next one finds them.
  return (code & 0xFF) == SQLITE_SCHEMA ? sqlite3_prepare_v3(handle, text, length, flags, statement, behind)
                                        : code;
}

PreparedStatement::PreparedStatement(sqlite3_stmt* statement)
    : mStatement(statement), mIsReadOnly(sqlite3_stmt_readonly(statement) != 0) {
  ReadColumns();
  const int count = sqlite3_bind_parameter_count(mStatement);
  for (int i = 1; i <= count; ++i) {
    const char* name = sqlite3_bind_parameter_name(mStatement, i);
    mParameters.Add(name ? name + 1 : "");
  }
}

PreparedStatement::~PreparedStatement() {
  sqlite3_finalize(mStatement);
}

void PreparedStatement::ReadColumns() {
  const int count = sqlite3_column_count(mStatement);
  mColumns.Clear();
  for (int i = 0; i < count; ++i) {
    const char* name = sqlite3_column_name(mStatement, i);
    mColumns.Add(name ? name : "");
  }
}

void PreparedStatement::NoticeNewPreparation() {
  if (mColumns.Size() == 0) return;
  // https://sqlite.org/c3ref/c_stmtstatus_counter.html
  const int preparations = sqlite3_stmt_status(mStatement, SQLITE_STMTSTATUS_REPREPARE, 0);
  if (preparations == mPreparations) return;
  mPreparations = preparations;
  ReadColumns();
}

int PreparedStatement::BindText(int number, const std::string& text) {
  const auto place = static_cast<std::size_t>(number) - 1;
  // A number that isn't one of the parameters is SQLite's to refuse.
  if (text.size() > LongestKeptText || place >= mParameters.Size()) {
    return sqlite3_bind_text64(mStatement, number, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  if (mTexts.empty()) mTexts.resize(mParameters.Size());
  std::string& kept = mTexts[place];
  kept = text;
  return sqlite3_bind_text64(mStatement, number, kept.data(), kept.size(), SQLITE_STATIC, SQLITE_UTF8);
}

void PreparedStatement::Rewind() {
  sqlite3_reset(mStatement);
  if (!hasLiftedLiterals) sqlite3_clear_bindings(mStatement);
}

void PreparedStatement::Clear() {
  sqlite3_reset(mStatement);
  if (mParameters.Size() > 0) sqlite3_clear_bindings(mStatement);
}

}  // namespace Oru::Common::Databases::Sqlite
