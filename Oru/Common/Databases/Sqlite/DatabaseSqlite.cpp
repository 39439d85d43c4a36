#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/Connection/ConnectionParts.h"
#include "Oru/Common/Databases/Sqlite/Connection/ConnectionText.h"
#include "Oru/Common/Databases/Sqlite/Connection/LogEntry.h"
#include "Oru/Common/Databases/Sqlite/Connection/VfsLibrary.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/Statements/SqlText.h"
#include "Oru/Common/Databases/Sqlite/Statements/StatementHandle.h"
#include "Oru/Common/Databases/Sqlite/Upkeep/IntegrityCheck.h"
#include "Oru/Common/Databases/Sqlite/Upkeep/OnlineCopy.h"

#include <sqlite3.h>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <optional>
#include <thread>
#include <unistd.h>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

DatabaseSqlite::DatabaseSqlite(const std::string& connection, const std::shared_ptr<std::ostream>& log)
    : Database(connection),
      mLogSource("Oru.Common.Database"),
      mLog(log),
      mHasConnection(!connection.empty()),
      mParts(std::make_unique<ConnectionParts>([this](const std::string& message) { LogFailure(message); })) {
}

DatabaseSqlite::DatabaseSqlite(const std::shared_ptr<std::ostream>& log)
    : DatabaseSqlite(std::string(), log) {}

DatabaseSqlite::~DatabaseSqlite() {
  DatabaseSqlite::Close();
}

void DatabaseSqlite::Fail(const std::string& message) {
  LogFailure(message);
  DatabaseSqlite::Close();
  throw NotSupportedException(message.c_str(), __FILE__, __LINE__);
}

void DatabaseSqlite::Open() {
  if (IsOpen()) throw InvalidOperationException();
  const ConnectionText connection = ConnectionText::Parse(mConnection);
  if (!mHasConnection || !connection.fault.empty()) {
    LogFailure(mHasConnection ? connection.fault : "no connection text was given");
    throw ArgumentException();
  }

  // Without the full mutex SQLite leaves the order of calls from several threads to the caller:
  // https://sqlite.org/threadsafe.html
  constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI | SQLITE_OPEN_FULLMUTEX;
  const int code = sqlite3_open_v2(mConnection.c_str(), &mHandle, flags, nullptr);
  // When there is no memory for a handle, none holds the reason.
  if (!mHandle) Fail(sqlite3_errstr(code));
  if (code != SQLITE_OK) Fail(ErrorText());
  sqlite3_extended_result_codes(mHandle, 1);

  mBusyTimeout = connection.busyTimeout;
  mParts->connection.Deadline().Attach(mHandle, connection.statementTimeout, mBusyTimeout);
  // Not by the pragma, which a transaction of another process could keep from running.
  sqlite3_db_config(mHandle, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
  // The same text has the same plan whatever its values: SQLite would prepare a statement with a LIKE again
  // for each of them. https://sqlite.org/queryplanner-ng.html#qpstab
  sqlite3_db_config(mHandle, SQLITE_DBCONFIG_ENABLE_QPSG, 1, nullptr);
  Connection& parts = mParts->connection;
  parts.Open(mHandle);
  KeepTemporaryFilesLocal();
  // The first read fails if the file isn't a database.
  if (!BeginWatch() || !parts.Run("SELECT 1 FROM sqlite_master LIMIT 1") ||
      !Configure("journal_mode", connection.journalMode) ||
      !Configure("synchronous", connection.synchronous) || !Configure("cache_size", connection.cacheSize) ||
      !Configure("mmap_size", connection.mmapSize) || !parts.Schema().HasChanged()) {
    Fail(ErrorText());
  }
  if (ChangeNotifier* notifier = parts.Listeners().Notifier()) notifier->Attach(mHandle);
}

// SQLite opens temporary files, as savepoints within a transaction need them, through the VFS of the file itself. One
// for a distant place may have none, as that of Ceph; memory serves any: https://sqlite.org/tempfiles.html
void DatabaseSqlite::KeepTemporaryFilesLocal() {
  sqlite3_vfs* vfs = nullptr;
  sqlite3_file_control(mHandle, "main", SQLITE_FCNTL_VFS_POINTER, &vfs);
  if (vfs != sqlite3_vfs_find(nullptr)) mParts->connection.Run("PRAGMA temp_store = memory");
}

bool DatabaseSqlite::BeginWatch() {
  const StatementDeadline::Scope scope(mParts->connection.Deadline());
  return mParts->connection.Schema().Begin();
}

bool DatabaseSqlite::Configure(const char* pragma, const std::string& value) {
  if (value.empty()) return true;
  const std::string statement = "PRAGMA " + std::string(pragma) + " = " + value;
  // SQLite doesn't wait for the locks that a change to or from a write-ahead log takes:
  // https://sqlite.org/wal.html
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(mBusyTimeout);
  while (!mParts->connection.Run(statement.c_str())) {
    if ((sqlite3_errcode(mHandle) & 0xFF) != SQLITE_BUSY || std::chrono::steady_clock::now() >= end)
      return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

void DatabaseSqlite::Close() {
  if (!IsOpen()) return;
  mParts->transactions.Forget();
  mParts->connection.Close();
  // What is left are statements that a caller made on the handle itself. The connection closes completely when
  // they are finalised. Until then the file stays in use, and the log must say so.
  if (sqlite3_close(mHandle) != SQLITE_OK) {
    for (sqlite3_stmt* left = sqlite3_next_stmt(mHandle, nullptr); left;
         left = sqlite3_next_stmt(mHandle, left)) {
      LogFailure("closed with a statement left over: " + std::string(sqlite3_sql(left)));
    }
    sqlite3_close_v2(mHandle);
  }
  mHandle = nullptr;
}

std::unique_ptr<Query> DatabaseSqlite::NewQuery() const {
  return std::make_unique<QuerySqlite>();
}

void DatabaseSqlite::BeginTransaction() {
  const ConnectionLock lock(*mParts);
  mParts->transactions.Begin();
}

int64_t DatabaseSqlite::EndTransaction(bool commit) {
  const ConnectionLock lock(*mParts);
  return mParts->transactions.End(commit);
}

uint64_t DatabaseSqlite::BeginReading() {
  const ConnectionLock lock(*mParts);
  return mParts->transactions.BeginReading();
}

void DatabaseSqlite::EndReading(uint64_t number) {
  const ConnectionLock lock(*mParts);
  mParts->transactions.EndReading(number);
}

bool DatabaseSqlite::IsInTransaction() const {
  return IsOpen() && sqlite3_get_autocommit(mHandle) == 0;
}

bool DatabaseSqlite::IsWriting() const {
  return mParts->connection.IsWriting();
}

bool DatabaseSqlite::IsReadOnly() const {
  return IsOpen() && sqlite3_db_readonly(mHandle, "main") == 1;
}

bool DatabaseSqlite::IsInReadOnlyFolder() const {
  const char* file = IsOpen() ? sqlite3_db_filename(mHandle, "main") : nullptr;
  if (!file || *file == '\0') return false;
  const std::string folder = std::filesystem::path(file).parent_path();
  return faccessat(AT_FDCWD, folder.c_str(), W_OK, AT_EACCESS) != 0 && (errno == EACCES || errno == EROFS);
}

bool DatabaseSqlite::HasBegunTransaction() const {
  const ConnectionLock lock(*mParts);
  return mParts->transactions.IsBegun();
}

uint64_t DatabaseSqlite::TransactionNumber() const {
  const ConnectionLock lock(*mParts);
  return mParts->transactions.Number();
}

bool DatabaseSqlite::ExecuteStatement(const std::string& text) {
  if (!IsOpen()) {
    LogFailure("statement on a closed database");
    return false;
  }
  const bool wasInTransaction = IsInTransaction();
  const bool isDone = RunAll(text.c_str());
  const ConnectionLock lock(*mParts);
  if (!isDone && !wasInTransaction && IsInTransaction()) mParts->connection.RollBackNowOrLater();
  return isDone;
}

bool DatabaseSqlite::ExecuteStatement(const StatementText& statement) {
  if (!IsOpen()) {
    LogFailure("statement on a closed database");
    return false;
  }
  std::string_view text = statement.text;
  return RunFirst(text, statement.values);
}

bool DatabaseSqlite::RunAll(std::string_view text) {
  while (!text.empty()) {
    if (!RunFirst(text, {})) return false;
  }
  return true;
}

// Runs the first statement of a text, which is then what follows it. A text of blanks and comments holds
// none.
bool DatabaseSqlite::RunFirst(std::string_view& text, const std::vector<StatementValue>& values) {
  std::string error;
  std::unique_ptr<StatementHandle> statement;
  {
    const ConnectionLock lock(*mParts);
    statement = mParts->connection.Statements().Take(mHandle, text, &text);
    const int code = statement ? statement->BindAll(values) : sqlite3_errcode(mHandle);
    if (code != SQLITE_OK) error = sqlite3_errmsg(mHandle);
  }
  if (statement) {
    if (error.empty()) error = RunToEnd(*statement);
    mParts->connection.Statements().Return(std::move(statement), error.empty());
  }
  if (!error.empty()) LogFailure(error);
  return error.empty();
}

// Runs a statement to its end; gives why that failed, empty for success.
std::string DatabaseSqlite::RunToEnd(StatementHandle& statement) {
  const ConnectionLock lock(*mParts);
  const StatementDeadline::Scope scope(mParts->connection.Deadline());
  if (const char* refusal = mParts->transactions.Refusal(statement.IsReadOnly())) return refusal;
  const bool wasInTransaction = IsInTransaction();
  mParts->connection.NoteBegin();
  int code = SQLITE_OK;
  do
    code = sqlite3_step(statement.Handle());
  while (code == SQLITE_ROW);
  if (code == SQLITE_DONE && mParts->transactions.IsUndone(statement, wasInTransaction)) code = SQLITE_NOMEM;
  if (code != SQLITE_DONE) {
    mParts->connection.NoteFailure(code);
    return code == SQLITE_NOMEM ? sqlite3_errstr(code) : sqlite3_errmsg(mHandle);
  }
  if (statement.IsCommand()) mParts->transactions.NoteCommand(statement, wasInTransaction);
  return {};
}

bool DatabaseSqlite::Backup(const std::string& file, const BackupProgress& progress) {
  {
    constexpr const char* operation = "backup";
    const ConnectionLock lock(*mParts);
    mParts->connection.RefuseIfClosed(operation);
    if (const char* reason = mParts->transactions.WhyNoBackup()) mParts->connection.Refuse(operation, reason);
  }
  if (const std::string reason = OnlineCopy::WhyNoTarget(file); !reason.empty()) {
    LogFailure("backup refused: " + reason);
    throw ArgumentException();
  }
  try {
    OnlineCopy copy(mHandle, file);
    if (!copy.CopyPages(mBusyTimeout, progress)) return false;
    copy.TakeName();
    return true;
  } catch (const OnlineCopy::Failure& failure) {
    LogFailure(std::string("backup failed: ") + failure.what());
    const ConnectionLock lock(*mParts);
    mParts->connection.NoteFailure(failure.Code());
    throw NotSupportedException(failure.what(), __FILE__, __LINE__);
  }
}

std::vector<std::string> DatabaseSqlite::CheckIntegrity() {
  constexpr const char* operation = "integrity check";
  Connection& connection = mParts->connection;
  const ConnectionLock lock(*mParts);
  connection.RefuseIfClosed(operation);
  connection.Recovery().Recover(mHandle);
  if (const char* reason = mParts->transactions.WhyNoCheck()) connection.Refuse(operation, reason);
  IntegrityCheck check(mHandle);
  const int code = check.Run();
  if (code == SQLITE_OK) return check.Findings();
  const std::string error = sqlite3_errmsg(mHandle);
  connection.NoteFailure(code);
  connection.Refuse(operation, error);
}

bool DatabaseSqlite::RebuildFullTextIndex(const std::string& table) {
  const std::string name = SqlText::QuotedName(table);
  return ExecuteStatement("INSERT INTO main." + name + "(" + name + ") VALUES('rebuild')");
}

void DatabaseSqlite::Log(const std::string& source, int32_t code, const std::string& message) {
  KeepLastFailure(message);
  if (mLog) WriteLogEntry(*mLog, source, code, message);
}

void DatabaseSqlite::KeepLastFailure(const std::string& message) noexcept {
  const std::lock_guard<std::mutex> lock(mLastFailureMutex);
  try {
    mLastFailure = OneLine(message);
  } catch (const std::bad_alloc&) {
    // Rather no message than one of an earlier failure.
    mLastFailure.clear();
  }
}

std::string DatabaseSqlite::LastFailure() const {
  const std::lock_guard<std::mutex> lock(mLastFailureMutex);
  return mLastFailure;
}

void DatabaseSqlite::LogFailure(const std::string& message) {
  Log(mLogSource, FailureCode, message);
}

bool DatabaseSqlite::HasChanged() {
  constexpr const char* operation = "look for changes";
  const ConnectionLock lock(*mParts);
  mParts->connection.RefuseIfClosed(operation);
  const StatementDeadline::Scope scope(mParts->connection.Deadline());
  const std::optional<bool> hasChanged = mParts->connection.Schema().HasChanged();
  if (!hasChanged) mParts->connection.Refuse(operation, sqlite3_errmsg(mHandle));
  return *hasChanged;
}

// https://sqlite.org/c3ref/c_config_covering_index_scan.html#sqliteconfigmemstatus
bool DatabaseSqlite::TuneForThreads() {
  static bool isTuned = false;
  if (!isTuned) isTuned = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0) == SQLITE_OK;
  return isTuned;
}

void DatabaseSqlite::Interrupt() {
  mParts->connection.Deadline().Interrupt();
}

void DatabaseSqlite::LoadVfs(const std::string& library) {
  const std::string fault = VfsLibrary::Load(library);
  if (!fault.empty()) throw NotSupportedException(fault.c_str(), __FILE__, __LINE__);
}

std::string DatabaseSqlite::ErrorText() const {
  if (!IsOpen()) return "the database is not open";
  const ConnectionLock lock(*mParts);
  return sqlite3_errmsg(mHandle);
}

int DatabaseSqlite::ErrorCode() const {
  return IsOpen() ? sqlite3_errcode(mHandle) : SQLITE_MISUSE;
}

bool DatabaseSqlite::HasRefusedValue() const {
  const int code = ErrorCode() & 0xFF;
  return code == SQLITE_CONSTRAINT || code == SQLITE_TOOBIG;
}

int64_t DatabaseSqlite::WrittenRows() const {
  return IsOpen() ? sqlite3_total_changes64(mHandle) : 0;
}

int64_t DatabaseSqlite::LastInsertRowId() const {
  return IsOpen() ? sqlite3_last_insert_rowid(mHandle) : 0;
}

}  // namespace Oru::Common::Databases::Sqlite
