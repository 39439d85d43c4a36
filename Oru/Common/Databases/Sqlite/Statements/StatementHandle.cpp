#include "Oru/Common/Databases/Sqlite/Statements/StatementHandle.h"

#include <climits>
#include <sqlite3.h>

#include <cstring>
#include <type_traits>
#include <variant>

namespace Oru::Common::Databases::Sqlite {

std::unique_ptr<StatementHandle> StatementHandle::Prepare(sqlite3* handle, std::string_view text,
                                                          bool isCached, std::string_view* rest) {
  sqlite3_stmt* statement = nullptr;
  const char* end = nullptr;
  const unsigned int flags = isCached ? SQLITE_PREPARE_PERSISTENT : 0;
  const int bytes = text.size() > INT_MAX ? INT_MAX : static_cast<int>(text.size());
  const auto prepare = [&] {
    return sqlite3_prepare_v3(handle, text.data(), bytes, flags, &statement, &end);
  };
  // A statement that needs the full-text index may be the first to find that another connection has changed
  // the schema. Then SQLite 3.40 reads the schema again while it prepares the statement, which thereby loses
  // its tables, and it gives up after the second try. The next call finds them.
  if ((prepare() & 0xFF) == SQLITE_SCHEMA) prepare();
  if (rest) *rest = end ? text.substr(static_cast<std::size_t>(end - text.data())) : std::string_view();
  if (!statement) return nullptr;
  return std::unique_ptr<StatementHandle>(new StatementHandle(statement));
}

StatementHandle::StatementHandle(sqlite3_stmt* statement)
    : mStatement(statement), mIsReadOnly(sqlite3_stmt_readonly(statement) != 0) {
  ReadColumns();
  const int count = sqlite3_bind_parameter_count(mStatement);
  for (int i = 1; i <= count; ++i) {
    const char* name = sqlite3_bind_parameter_name(mStatement, i);
    mParameters.Add(name ? name + 1 : "");
  }
}

StatementHandle::~StatementHandle() {
  sqlite3_finalize(mStatement);
}

void StatementHandle::ReadColumns() {
  const int count = sqlite3_column_count(mStatement);
  mColumns.Clear();
  for (int i = 0; i < count; ++i) {
    const char* name = sqlite3_column_name(mStatement, i);
    mColumns.Add(name ? name : "");
  }
}

void StatementHandle::NoticeNewPreparation() {
  if (mColumns.Size() == 0) return;
  // https://sqlite.org/c3ref/c_stmtstatus_counter.html
  const int preparations = sqlite3_stmt_status(mStatement, SQLITE_STMTSTATUS_REPREPARE, 0);
  if (preparations == mPreparations) return;
  mPreparations = preparations;
  ReadColumns();
}

int StatementHandle::BindText(int number, const std::string& text) {
  const auto place = static_cast<std::size_t>(number) - 1;
  // SQLite refuses a number that isn't one of the parameters.
  if (text.size() > LongestKeptText || place >= mParameters.Size()) {
    return sqlite3_bind_text64(mStatement, number, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  if (mTexts.empty()) mTexts.resize(mParameters.Size());
  std::string& copy = mTexts[place];
  if (copy.empty()) copy.resize(LongestKeptText);
  std::memcpy(copy.data(), text.data(), text.size());
  return sqlite3_bind_text64(mStatement, number, copy.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
}

int StatementHandle::BindAll(const std::vector<StatementValue>& values) {
  int code = SQLITE_OK;
  int number = 0;
  const auto bind = [&](const auto& value) {
    using Value = std::decay_t<decltype(value)>;
    ++number;
    if constexpr (std::is_same_v<Value, int64_t>) return sqlite3_bind_int64(mStatement, number, value);
    if constexpr (std::is_same_v<Value, double>) return sqlite3_bind_double(mStatement, number, value);
    if constexpr (std::is_same_v<Value, std::string>) {
      return sqlite3_bind_text64(mStatement, number, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    if constexpr (std::is_same_v<Value, std::vector<uint8_t>>) {
      // A null pointer would bind NULL.
      const void* data = value.empty() ? static_cast<const void*>("") : value.data();
      return sqlite3_bind_blob64(mStatement, number, data, value.size(), SQLITE_STATIC);
    }
  };
  for (const StatementValue& value : values) {
    code = std::visit(bind, value);
    if (code != SQLITE_OK) break;
  }
  return code;
}

void StatementHandle::Rewind() {
  sqlite3_reset(mStatement);
}

void StatementHandle::Release() {
  if (mHoldsMuch || mParameters.Size() > MostNoted) {
    Clear();
    return;
  }
  sqlite3_reset(mStatement);
  mStale |= mBound;
  mBound = 0;
}

void StatementHandle::ClearStale() {
  const int count = static_cast<int>(mParameters.Size());
  for (int number = 1; number <= count; ++number) {
    if ((mStale & ~mBound & BitOf(number)) != 0) sqlite3_bind_null(mStatement, number);
  }
}

void StatementHandle::Clear() {
  sqlite3_reset(mStatement);
  if (mParameters.Size() > 0) sqlite3_clear_bindings(mStatement);
  mBound = 0;
  mStale = 0;
  mHoldsMuch = false;
}

}  // namespace Oru::Common::Databases::Sqlite
