#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/Common/Databases/Sqlite/Connection/ConnectionParts.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

CursorSqlite::CursorSqlite() = default;

CursorSqlite::CursorSqlite(DatabaseSqlite& db, const std::string& select) : Cursor(db) {
  Prepare(select);
}

CursorSqlite::CursorSqlite(DatabaseSqlite& db, const std::string& select, const std::string& count)
    : Cursor(db), mCountStatement(count) {
  Prepare(select);
}

CursorSqlite::CursorSqlite(DatabaseSqlite& db, StatementText select, StatementText count)
    : Cursor(db),
      mCountStatement(std::move(count.text)),
      mValues(std::move(select.values)),
      mCountValues(std::move(count.values)) {
  Prepare(select.text);
}

CursorSqlite::~CursorSqlite() {
  CursorSqlite::Close();
}

DatabaseSqlite& CursorSqlite::GetDatabase() const {
  if (!database) throw ArgumentException();
  return static_cast<DatabaseSqlite&>(*database);
}

void CursorSqlite::Prepare(const std::string& select) {
  DatabaseSqlite& db = GetDatabase();
  if (!db.IsOpen()) {
    db.LogFailure("statement on a closed database");
    return;
  }
  {
    const ConnectionLock lock(db.Parts());
    std::unique_ptr<StatementHandle> prepared = db.Parts().connection.Statements().Take(db.Handle(), select);
    const int code = prepared ? prepared->BindAll(mValues) : sqlite3_errcode(db.Handle());
    if (!prepared || code != SQLITE_OK) {
      db.LogFailure(code == SQLITE_OK ? "the text holds no statement" : sqlite3_errmsg(db.Handle()));
      if (prepared) db.Parts().connection.Statements().Return(std::move(prepared), false);
      return;
    }
    mPrepared = std::move(prepared);
  }
  mStatement = mPrepared->Handle();
  mPosition = Position::BeforeRows;
  mHasFailed = false;
  mLastColumn = 0;
  mLastParameter = 0;
  db.Parts().connection.Cursors().Add(mPrepared->openCursor, *this);
}

void CursorSqlite::Close() {
  if (!mPrepared) return;
  LeaveRow();
  // While the cursor is among the open ones, its database is alive.
  Connection& connection = GetDatabase().Parts().connection;
  connection.Cursors().Remove(mPrepared->openCursor);
  mStatement = nullptr;
  mNumbers.assign(mNumbers.size(), 0);
  connection.Statements().Return(std::move(mPrepared), !mHasFailed);
}

// A writing statement that was left on a row ends, and may commit, when it is rewound.
void CursorSqlite::LeaveRow() {
  if (mPosition != Position::OnRow || mPrepared->IsReadOnly()) return;
  const ConnectionLock lock(GetDatabase().Parts());
  mPrepared->Rewind();
}

void CursorSqlite::Reset() {
  Rewind(false);
}

void CursorSqlite::ResetForSameValues() {
  Rewind(true);
}

void CursorSqlite::Rewind(bool isForSameParameters) {
  if (!mPrepared) return;
  LeaveRow();
  // The values that the statement came with stay.
  if (!mValues.empty()) {
    mPrepared->Rewind();
  } else if (isForSameParameters) {
    mPrepared->Release();
  } else {
    mPrepared->Clear();
  }
  mPosition = Position::BeforeRows;
  mLastParameter = 0;
}

void CursorSqlite::Reset(DatabaseSqlite& db, const std::string& select, const std::string& count) {
  CursorSqlite::Close();
  AttachToDatabase(db);
  mCountStatement = count;
  mValues.clear();
  mCountValues.clear();
  Prepare(select);
}

void CursorSqlite::Reset(DatabaseSqlite& db, StatementText select, StatementText count) {
  CursorSqlite::Close();
  AttachToDatabase(db);
  mCountStatement = std::move(count.text);
  mValues = std::move(select.values);
  mCountValues = std::move(count.values);
  Prepare(select.text);
}

int CursorSqlite::StepOnce() {
  DatabaseSqlite& db = GetDatabase();
  const bool isCommand = mPrepared->IsCommand();
  const bool wasInTransaction = isCommand && db.IsInTransaction();
  if (mPosition != Position::OnRow) {
    mPrepared->ClearUnbound();
    db.Parts().connection.NoteBegin();
  }
  int code = sqlite3_step(mStatement);
  if (CanRepeat() && db.Parts().connection.Schema().MustRepeat(code)) {
    mPrepared->Rewind();
    code = sqlite3_step(mStatement);
  }
  if (code == SQLITE_DONE && db.Parts().transactions.IsUndone(*mPrepared, wasInTransaction))
    code = SQLITE_NOMEM;
  if (mPosition != Position::OnRow) {
    mPrepared->NoticeNewPreparation();
    mLastColumn = 0;
  }
  if (code == SQLITE_ROW) {
    mPosition = Position::OnRow;
  } else if (code == SQLITE_DONE) {
    mPosition = Position::AfterRows;
    if (isCommand) db.Parts().transactions.NoteCommand(*mPrepared, wasInTransaction);
  } else {
    db.Parts().connection.NoteFailure(code);
    mPosition = Position::Failed;
    mHasFailed = true;
  }
  return code;
}

// A statement that gives rows may have given some already, and listeners would miss what was noted before.
bool CursorSqlite::CanRepeat() const {
  return !mPrepared->IsReadOnly() && !mPrepared->IsCommand() && mPrepared->Columns().Size() == 0 &&
         !GetDatabase().Parts().connection.Listeners().Notifier();
}

void CursorSqlite::ThrowStepFailure(const std::string& message) {
  GetDatabase().LogFailure(message);
  throw InvalidOperationException();
}

bool CursorSqlite::Step() {
  if (!mPrepared) throw ObjectClosedException();
  return Step(ConnectionLock(GetDatabase().Parts()));
}

bool CursorSqlite::Step(const ConnectionLock&) {
  if (!mPrepared) throw ObjectClosedException();
  // SQLite would start over: https://sqlite.org/c3ref/step.html
  if (mPosition == Position::AfterRows) return false;
  DatabaseSqlite& db = GetDatabase();
  const StatementDeadline::Scope scope(db.Parts().connection.Deadline());
  const char* refusal = mPosition == Position::OnRow
                            ? nullptr
                            : db.Parts().transactions.Refusal(mPrepared->IsReadOnly(), CanRepeat());
  const int code = refusal ? SQLITE_ERROR : StepOnce();
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  if (!refusal) refusal = code == SQLITE_NOMEM ? sqlite3_errstr(code) : sqlite3_errmsg(db.Handle());
  ThrowStepFailure(refusal);
}

void CursorSqlite::Run() {
  if (!mPrepared) throw ObjectClosedException();
  Run(ConnectionLock(GetDatabase().Parts()));
}

void CursorSqlite::Run(const ConnectionLock& held) {
  if (Step(held)) ThrowStepFailure("a statement that should give no rows gave one");
}

int32_t CursorSqlite::GetColumnsCount() {
  return mPrepared ? static_cast<int32_t>(mPrepared->Columns().Size()) : 0;
}

std::string CursorSqlite::GetColumnName(int32_t index) const {
  const bool isKnown =
      mPrepared && index >= 0 && static_cast<std::size_t>(index) < mPrepared->Columns().Size();
  return isKnown ? mPrepared->Columns()[static_cast<std::size_t>(index)] : std::string();
}

int32_t CursorSqlite::GetColumnIndex(const std::string& name) const {
  return mPrepared ? mPrepared->Columns().Find(name, mLastColumn) : -1;
}

bool CursorSqlite::IsOnRow() const {
  if (mPosition == Position::OnRow) return true;
  if (sqlite3_data_count(mStatement) == 0) return false;
  // A step that was made on the statement itself.
  mPrepared->NoticeNewPreparation();
  return true;
}

int CursorSqlite::ColumnOnRow(const std::string& name) const {
  return mPrepared && IsOnRow() ? mPrepared->Columns().Find(name, mLastColumn) : -1;
}

bool CursorSqlite::IsColumnOnRow(int32_t index) const {
  return mStatement && IsOnRow() && index >= 0 &&
         static_cast<std::size_t>(index) < mPrepared->Columns().Size();
}

bool CursorSqlite::IsNull(const std::string& name) const {
  return IsNull(ColumnOnRow(name));
}

bool CursorSqlite::IsNull(int32_t index) const {
  return !IsColumnOnRow(index) || sqlite3_column_type(mStatement, index) == SQLITE_NULL;
}

// The reads of all types are one: a column is found by its name or its position, and then read unchecked.
template <class T>
bool CursorSqlite::Read(int32_t column, T& out) const {
  if (column < 0) return false;
  if constexpr (std::is_same_v<T, std::string>) return ReadText(column, out);
  if constexpr (std::is_same_v<T, double>) out = sqlite3_column_double(mStatement, column);
  if constexpr (std::is_same_v<T, bool>) out = sqlite3_column_int64(mStatement, column) != 0;
  if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
    out = static_cast<T>(sqlite3_column_int64(mStatement, column));
  }
  return true;
}

bool CursorSqlite::Get(const std::string& name, int64_t& out) const {
  return Read(ColumnOnRow(name), out);
}

bool CursorSqlite::Get(int32_t index, int64_t& out) const {
  return Read(IsColumnOnRow(index) ? index : -1, out);
}

bool CursorSqlite::Get(const std::string& name, uint64_t& out) const {
  return Read(ColumnOnRow(name), out);
}

bool CursorSqlite::Get(int32_t index, uint64_t& out) const {
  return Read(IsColumnOnRow(index) ? index : -1, out);
}

bool CursorSqlite::Get(const std::string& name, int32_t& out) const {
  return Read(ColumnOnRow(name), out);
}

bool CursorSqlite::Get(int32_t index, int32_t& out) const {
  return Read(IsColumnOnRow(index) ? index : -1, out);
}

bool CursorSqlite::Get(const std::string& name, uint32_t& out) const {
  return Read(ColumnOnRow(name), out);
}

bool CursorSqlite::Get(int32_t index, uint32_t& out) const {
  return Read(IsColumnOnRow(index) ? index : -1, out);
}

bool CursorSqlite::Get(const std::string& name, double& out) const {
  return Read(ColumnOnRow(name), out);
}

bool CursorSqlite::Get(int32_t index, double& out) const {
  return Read(IsColumnOnRow(index) ? index : -1, out);
}

bool CursorSqlite::Get(const std::string& name, bool& out) const {
  return Read(ColumnOnRow(name), out);
}

bool CursorSqlite::Get(int32_t index, bool& out) const {
  return Read(IsColumnOnRow(index) ? index : -1, out);
}

bool CursorSqlite::Get(const std::string& name, std::string& out) const {
  return Read(ColumnOnRow(name), out);
}

bool CursorSqlite::Get(int32_t index, std::string& out) const {
  return Read(IsColumnOnRow(index) ? index : -1, out);
}

bool CursorSqlite::ReadText(int32_t index, std::string& out) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(mStatement, index));
  if (text) {
    out.assign(text, static_cast<std::size_t>(sqlite3_column_bytes(mStatement, index)));
    return true;
  }
  if (!IsTextNull()) return false;
  out.clear();
  return true;
}

// Made at once, where it is, from the text of the row.
std::string CursorSqlite::TextOrThrow(int32_t column) const {
  if (column < 0) throw ArgumentException();
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(mStatement, column));
  if (text) return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(mStatement, column)));
  if (!IsTextNull()) throw ArgumentException();
  return std::string();
}

// No text is NULL, or the want of memory to make it.
bool CursorSqlite::IsTextNull() const {
  if (GetDatabase().ErrorCode() != SQLITE_NOMEM) return true;
  GetDatabase().LogFailure(GetDatabase().ErrorText());
  return false;
}

int32_t CursorSqlite::Get(const std::string& name, uint8_t** out) const {
  return Get(ColumnOnRow(name), out);
}

int32_t CursorSqlite::Get(int32_t index, uint8_t** out) const {
  if (!IsColumnOnRow(index)) return -1;
  *out = nullptr;
  const auto* bytes = static_cast<const uint8_t*>(sqlite3_column_blob(mStatement, index));
  const int32_t length = sqlite3_column_bytes(mStatement, index);
  if (bytes && length > 0) {
    auto copy = std::make_unique<uint8_t[]>(static_cast<std::size_t>(length));
    std::copy_n(bytes, length, copy.get());
    *out = copy.release();
    return length;
  }
  return GetDatabase().ErrorCode() == SQLITE_NOMEM ? -1 : 0;
}

template <class T>
T CursorSqlite::ReadOrThrow(int32_t column) const {
  T value{};
  if (!Read(column, value)) throw ArgumentException();
  return value;
}

int64_t CursorSqlite::GetInt64(const std::string& name) const {
  return ReadOrThrow<int64_t>(ColumnOnRow(name));
}

int32_t CursorSqlite::GetInt32(const std::string& name) const {
  return ReadOrThrow<int32_t>(ColumnOnRow(name));
}

bool CursorSqlite::GetBoolean(const std::string& name) const {
  return ReadOrThrow<bool>(ColumnOnRow(name));
}

std::string CursorSqlite::GetString(const std::string& name) const {
  return TextOrThrow(ColumnOnRow(name));
}

int64_t CursorSqlite::GetInt64(int32_t index) const {
  return ReadOrThrow<int64_t>(IsColumnOnRow(index) ? index : -1);
}

uint64_t CursorSqlite::GetUInt64(int32_t index) const {
  return ReadOrThrow<uint64_t>(IsColumnOnRow(index) ? index : -1);
}

int32_t CursorSqlite::GetInt32(int32_t index) const {
  return ReadOrThrow<int32_t>(IsColumnOnRow(index) ? index : -1);
}

uint32_t CursorSqlite::GetUInt32(int32_t index) const {
  return ReadOrThrow<uint32_t>(IsColumnOnRow(index) ? index : -1);
}

double CursorSqlite::GetDouble(int32_t index) const {
  return ReadOrThrow<double>(IsColumnOnRow(index) ? index : -1);
}

bool CursorSqlite::GetBoolean(int32_t index) const {
  return ReadOrThrow<bool>(IsColumnOnRow(index) ? index : -1);
}

std::string CursorSqlite::GetString(int32_t index) const {
  return TextOrThrow(IsColumnOnRow(index) ? index : -1);
}

int32_t CursorSqlite::GetBytes(int32_t index, uint8_t** out) const {
  const int32_t length = Get(index, out);
  if (length == -1) throw ArgumentException();
  return length;
}

void CursorSqlite::UseConstantNames(const std::string* names, std::size_t count) {
  mNames = names;
  mNumbers.assign(count, 0);
}

int CursorSqlite::ParameterNumber(const std::string& name) {
  // A name elsewhere gives a place above all others.
  const std::size_t distance = reinterpret_cast<uintptr_t>(&name) - reinterpret_cast<uintptr_t>(mNames);
  const std::size_t place = distance / sizeof(std::string);
  if (place >= mNumbers.size()) return FindParameter(name);
  int& number = mNumbers[place];
  if (number == 0) number = FindParameter(name);
  return number;
}

int CursorSqlite::FindParameter(const std::string& name) {
  // A parameter without a name can't be bound by name.
  const bool isSought = mPrepared && !name.empty();
  const int number = isSought ? mPrepared->Parameters().Find(name, mLastParameter) + 1 : 0;
  if (number == 0 && mPrepared) GetDatabase().LogFailure("the statement has no parameter named " + name);
  return number;
}

// The values that the statement came with stay.
bool CursorSqlite::MayBind(int32_t number) {
  if (number <= 0) return false;
  return mValues.empty() || IsRefused(SQLITE_RANGE);
}

bool CursorSqlite::IsBound(int code, int32_t number, std::size_t length) {
  if (code != SQLITE_OK) return IsRefused(code);
  mPrepared->NoteBound(number, length);
  return true;
}

bool CursorSqlite::IsRefused(int code) {
  // A closed cursor may have no database for the log.
  if (mPrepared) GetDatabase().LogFailure(sqlite3_errstr(code));
  return false;
}

bool CursorSqlite::Bind(const std::string& name, int64_t value) {
  return Bind(ParameterNumber(name), value);
}

bool CursorSqlite::Bind(const std::string& name, uint64_t value) {
  return Bind(ParameterNumber(name), value);
}

bool CursorSqlite::Bind(const std::string& name, int32_t value) {
  return Bind(ParameterNumber(name), value);
}

bool CursorSqlite::Bind(const std::string& name, uint32_t value) {
  return Bind(ParameterNumber(name), value);
}

bool CursorSqlite::Bind(const std::string& name, double value) {
  return Bind(ParameterNumber(name), value);
}

bool CursorSqlite::Bind(const std::string& name, bool value) {
  return Bind(ParameterNumber(name), value);
}

bool CursorSqlite::Bind(const std::string& name, const std::string& value) {
  return Bind(ParameterNumber(name), value);
}

bool CursorSqlite::Bind(const std::string& name, const uint8_t* bytes, int32_t length) {
  return Bind(ParameterNumber(name), bytes, length);
}

bool CursorSqlite::Bind(const std::string& name) {
  return Bind(ParameterNumber(name));
}

bool CursorSqlite::Bind(int32_t number, int64_t value) {
  return MayBind(number) && IsBound(sqlite3_bind_int64(mStatement, number, value), number);
}

bool CursorSqlite::Bind(int32_t number, uint64_t value) {
  return Bind(number, static_cast<int64_t>(value));
}

bool CursorSqlite::Bind(int32_t number, int32_t value) {
  return Bind(number, int64_t{value});
}

bool CursorSqlite::Bind(int32_t number, uint32_t value) {
  return Bind(number, int64_t{value});
}

bool CursorSqlite::Bind(int32_t number, double value) {
  return MayBind(number) && IsBound(sqlite3_bind_double(mStatement, number, value), number);
}

bool CursorSqlite::Bind(int32_t number, bool value) {
  return Bind(number, int64_t{value ? 1 : 0});
}

bool CursorSqlite::Bind(int32_t number, const std::string& value) {
  if (!MayBind(number)) return false;
  // A statement that has been stepped still looks at the values that it has, and takes no other.
  if (!mPrepared || mPosition != Position::BeforeRows) return IsRefused(SQLITE_MISUSE);
  return IsBound(mPrepared->BindText(number, value), number, value.size());
}

bool CursorSqlite::Bind(int32_t number, const uint8_t* bytes, int32_t length) {
  if (!MayBind(number)) return false;
  if (length < 0 || (!bytes && length > 0)) return IsRefused(SQLITE_MISUSE);
  // SQLite takes a null pointer for NULL; no bytes are not nothing.
  const void* data = bytes ? static_cast<const void*>(bytes) : "";
  return IsBound(sqlite3_bind_blob(mStatement, number, data, length, SQLITE_TRANSIENT), number,
                 static_cast<std::size_t>(length));
}

bool CursorSqlite::Bind(int32_t number) {
  return MayBind(number) && IsBound(sqlite3_bind_null(mStatement, number), number);
}

int32_t CursorSqlite::GetTotalItemsCount() const {
  if (mCountStatement.empty() || !mPrepared) return -1;
  CursorSqlite counting(GetDatabase(), {mCountStatement, mCountValues});
  if (!counting.IsOpened() || !counting.Step()) return -1;
  return static_cast<int32_t>(std::min<int64_t>(counting.GetInt64(0), std::numeric_limits<int32_t>::max()));
}

}  // namespace Oru::Common::Databases::Sqlite
