#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/Changes/ChangeNotifier.h"
#include "Oru/Common/Databases/Sqlite/Connection/ConnectionText.h"
#include "Oru/Common/Databases/Sqlite/Connection/LogEntry.h"
#include "Oru/Common/Databases/Sqlite/Connection/OpenCursors.h"
#include "Oru/Common/Databases/Sqlite/Connection/Savepoints.h"
#include "Oru/Common/Databases/Sqlite/Connection/SchemaWatch.h"
#include "Oru/Common/Databases/Sqlite/Connection/StatementDeadline.h"
#include "Oru/Common/Databases/Sqlite/Connection/VfsLibrary.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/Statements/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/Statements/SqlText.h"
#include "Oru/Common/Databases/Sqlite/Statements/StatementCache.h"
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

namespace {

constexpr const char* LostTransactionText =
    "the transaction was rolled back at an earlier failure and must be ended first";
constexpr const char* ReadingText =
    "a reading (ReadGuard) is under way on this connection and must end before anything is written";

}  // namespace

DatabaseSqlite::DatabaseSqlite(const std::string& connection, const std::shared_ptr<std::ostream>& log)
    : Database(connection),
      mLogSource("Oru.Common.Database"),
      mLog(log),
      mHasConnection(!connection.empty()),
      mStatements(std::make_unique<StatementCache>()),
      mCursors(std::make_unique<OpenCursors>()),
      mSavepoints(std::make_unique<Savepoints>()),
      mDeadline(std::make_unique<StatementDeadline>()) {}

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
  // Without the memory for a handle there is none that could tell the reason.
  if (!mHandle) Fail(sqlite3_errstr(code));
  if (code != SQLITE_OK) Fail(ErrorText());
  sqlite3_extended_result_codes(mHandle, 1);

  mBusyTimeout = connection.busyTimeout;
  mDeadline->Attach(mHandle, connection.statementTimeout, mBusyTimeout);
  // Not by the pragma, which a transaction of another process could keep from running.
  sqlite3_db_config(mHandle, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
  // The same text has the same plan whatever its values: SQLite would prepare a statement with a LIKE again
  // for each of them. https://sqlite.org/queryplanner-ng.html#qpstab
  sqlite3_db_config(mHandle, SQLITE_DBCONFIG_ENABLE_QPSG, 1, nullptr);
  KeepTemporaryFilesLocal();
  // The first reads tell whether the file is a database at all.
  if (!BeginWatch() || !RunPlain("SELECT 1 FROM sqlite_master LIMIT 1") ||
      !Configure("journal_mode", connection.journalMode) ||
      !Configure("synchronous", connection.synchronous)) {
    Fail(ErrorText());
  }
  const std::optional<int64_t> version = mSchemaWatch->DataVersion();
  if (!version) Fail(ErrorText());
  mReportedVersion = *version;
  if (mNotifier) mNotifier->Attach(mHandle);
}

// SQLite opens temporary files, as savepoints within a transaction need them, through the VFS of the file itself. One
// for a distant place may have none, as that of Ceph; memory serves any: https://sqlite.org/tempfiles.html
void DatabaseSqlite::KeepTemporaryFilesLocal() {
  sqlite3_vfs* vfs = nullptr;
  sqlite3_file_control(mHandle, "main", SQLITE_FCNTL_VFS_POINTER, &vfs);
  if (vfs != sqlite3_vfs_find(nullptr)) RunPlain("PRAGMA temp_store = memory");
}

bool DatabaseSqlite::BeginWatch() {
  const StatementDeadline::Scope scope(*mDeadline);
  mSchemaWatch = std::make_unique<SchemaWatch>(mHandle);
  return mSchemaWatch->Begin();
}

bool DatabaseSqlite::Configure(const char* pragma, const std::string& value) {
  if (value.empty()) return true;
  const std::string statement = "PRAGMA " + std::string(pragma) + " = " + value;
  // SQLite doesn't wait for the locks that a change to or from a write-ahead log takes:
  // https://sqlite.org/wal.html
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(mBusyTimeout);
  while (!RunPlain(statement.c_str())) {
    if ((sqlite3_errcode(mHandle) & 0xFF) != SQLITE_BUSY || std::chrono::steady_clock::now() >= end)
      return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

void DatabaseSqlite::Close() {
  if (!IsOpen()) return;
  while (CursorSqlite* cursor = mCursors->Any())
    cursor->Close();
  mStatements = std::make_unique<StatementCache>();
  mSavepoints->Clear();
  mSchemaWatch.reset();
  if (mNotifier) mNotifier->Forget();
  mInTransaction = false;
  mIsReading = false;
  mHasLackedMemory = false;
  mDeadline->Detach();
  // What is left are statements that somebody made on the handle itself. The connection goes for good once
  // they are finalised; until then the file stays in use, and that must not go unnoticed.
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
  std::string error = "the database is not open";
  if (IsOpen()) {
    const ConnectionLock lock(*this);
    RecoverFromShortMemory();
    if (HasLostTransaction()) {
      error = LostTransactionText;
    } else if (mIsReading && IsInTransaction()) {
      error = ReadingText;
    } else if (IsReadOnly()) {
      // SQLite would begin one all the same, and refuse what it is for.
      error = sqlite3_errstr(SQLITE_READONLY);
    } else if (mStatements->KeepRollback(mHandle) && RunPlain("BEGIN IMMEDIATE")) {
      // A transaction that only reads at first could be refused its first write at once, whatever the
      // timeout, when another connection has written since: https://sqlite.org/lang_transaction.html
      mHasLooked = false;
      if (IsSchemaTrue(false)) {
        mInTransaction = true;
        mIsReading = false;
        mSavepoints->Forget();
        ++mTransactionNumber;
        mChangesAtBegin = sqlite3_total_changes64(mHandle);
        return;
      }
      error = sqlite3_errmsg(mHandle);
      mStatements->Rollback(mHandle);
    } else {
      error = sqlite3_errmsg(mHandle);
    }
  }
  LogFailure("begin of a transaction refused: " + error);
  throw InvalidOperationException();
}

int64_t DatabaseSqlite::EndTransaction(bool commit) {
  std::string error = "none was begun";
  if (IsOpen()) {
    const ConnectionLock lock(*this);
    if (HasLostTransaction()) {
      mInTransaction = false;
      if (!commit) return 0;
      error = "it was rolled back at an earlier failure";
    } else if (mInTransaction) {
      const int64_t changes = sqlite3_total_changes64(mHandle) - mChangesAtBegin;
      const bool isEnded = commit ? RunPlain("COMMIT") : mStatements->Rollback(mHandle);
      if (!isEnded) error = sqlite3_errmsg(mHandle);
      if (!IsInTransaction()) ForgetTransaction();
      if (isEnded) return commit ? changes : 0;
    }
  }
  LogFailure("end of the transaction refused: " + error);
  throw InvalidOperationException();
}

uint64_t DatabaseSqlite::BeginReading() {
  std::string error = "the database is not open";
  if (IsOpen()) {
    const ConnectionLock lock(*this);
    // A view begun behind a lost transaction would pass for that transaction.
    if (IsInTransaction() || HasLostTransaction()) return 0;
    if (RunPlain("BEGIN")) {
      mIsReading = true;
      mHasLooked = false;
      return ++mReadingNumber;
    }
    error = sqlite3_errmsg(mHandle);
  }
  LogFailure("begin of a reading refused: " + error);
  throw InvalidOperationException();
}

void DatabaseSqlite::EndReading(uint64_t number) {
  if (!IsOpen()) return;
  const ConnectionLock lock(*this);
  if (!mIsReading || number != mReadingNumber) return;
  mIsReading = false;
  // Only by a statement on the handle itself can it have been written in.
  if (IsInTransaction() && !RunPlain("COMMIT")) {
    LogFailure("end of a reading refused: " + ErrorText());
    RunPlain("ROLLBACK");
  }
}

uint64_t DatabaseSqlite::BeginSavepoint() {
  std::string error = "the database is not open";
  if (IsOpen()) {
    const ConnectionLock lock(*this);
    if (HasLostTransaction()) {
      error = LostTransactionText;
    } else if (!IsInTransaction() || mIsReading) {
      error = "no transaction was begun";
    } else {
      const std::size_t depth = mSavepoints->Depth();
      if (mNotifier) mNotifier->BeginSavepoint(depth);
      const int code = mSavepoints->Begin(mHandle);
      if (code == SQLITE_OK) return mSavepoints->LastNumber();
      error = sqlite3_errmsg(mHandle);
      NoteFailure(code);
      if (mNotifier) mNotifier->ReleaseSavepoint(depth);
    }
  }
  LogFailure("begin of a savepoint refused: " + error);
  throw InvalidOperationException();
}

bool DatabaseSqlite::HasSavepoint(uint64_t number) const {
  if (!IsOpen()) return false;
  const ConnectionLock lock(*this);
  return IsInTransaction() && mSavepoints->DepthOf(number) < mSavepoints->Depth();
}

void DatabaseSqlite::ReleaseSavepoint(uint64_t number) {
  const std::size_t depth = mSavepoints->DepthOf(number);
  const int code = mSavepoints->Release(depth);
  if (code == SQLITE_OK) {
    if (mNotifier) mNotifier->ReleaseSavepoint(depth);
    return;
  }
  const std::string error = sqlite3_errmsg(mHandle);
  NoteFailure(code);
  LogFailure("commit of a savepoint refused: " + error);
  throw InvalidOperationException();
}

void DatabaseSqlite::RollBackSavepoint(uint64_t number) {
  const std::size_t depth = mSavepoints->DepthOf(number);
  int64_t undone = 0;
  const int code = mSavepoints->Rollback(mHandle, depth, undone);
  if (code == SQLITE_OK) {
    mChangesAtBegin += undone;
    if (mNotifier) mNotifier->RollBackSavepoint(depth);
    return;
  }
  const std::string error = sqlite3_errmsg(mHandle);
  NoteFailure(code);
  if (mNotifier) mNotifier->MarkSavepointUncertain(depth);
  // SQLite doesn't know the savepoint any more: a statement of the caller's has ended one around it.
  if ((code & 0xFF) == SQLITE_ERROR) return;
  if (IsInTransaction()) mStatements->Rollback(mHandle);
  LogFailure("rollback to a savepoint failed, so that the whole transaction was rolled back: " + error);
  throw InvalidOperationException();
}

bool DatabaseSqlite::IsInTransaction() const {
  return IsOpen() && sqlite3_get_autocommit(mHandle) == 0;
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
  if (!IsOpen()) return false;
  const ConnectionLock lock(*this);
  return mInTransaction;
}

uint64_t DatabaseSqlite::TransactionNumber() const {
  if (!IsOpen()) return 0;
  const ConnectionLock lock(*this);
  return mTransactionNumber;
}

bool DatabaseSqlite::HasLostTransaction() const {
  // https://sqlite.org/lang_transaction.html tells which failures roll back by themselves.
  return mInTransaction && sqlite3_get_autocommit(mHandle) != 0;
}

void DatabaseSqlite::NoteFailure(int code) {
  if ((code & 0xFF) == SQLITE_NOMEM) mHasLackedMemory = true;
  if (code != SQLITE_OK && mNotifier) mNotifier->NoteFailedStatement();
}

// The full-text index keeps the sums of its texts in memory. SQLite 3.40 leaves them wrong when it lacks
// memory while it reads them, and stores them wrong with the next text. Reading the schema anew makes it drop
// them.
void DatabaseSqlite::RecoverFromShortMemory() {
  if (!mHasLackedMemory || IsInTransaction()) return;
  if (RunPlain("PRAGMA writable_schema = RESET")) mHasLackedMemory = false;
}

const char* DatabaseSqlite::Refusal(bool isReadOnly) {
  RecoverFromShortMemory();
  // A statement of the caller's may have ended the reading.
  if (!IsInTransaction()) mIsReading = false;
  if (!isReadOnly) {
    if (HasLostTransaction()) return LostTransactionText;
    // What a reading writes would be lost, after it was reported, where its end can't commit.
    if (mIsReading) return ReadingText;
  }
  return IsSchemaTrue(isReadOnly) ? nullptr : sqlite3_errmsg(mHandle);
}

// Whether what SQLite knows of the tables may be trusted for a statement, after a look at it where a
// transaction begins to read and before each write outside one. A read that couldn't look shows by itself
// what was wrong, and the end of a transaction must not be refused for it.
bool DatabaseSqlite::IsSchemaTrue(bool isReadOnly) {
  const bool isInTransaction = sqlite3_get_autocommit(mHandle) == 0;
  if (!isInTransaction) mHasLooked = false;
  if (mHasLooked || (isReadOnly && !isInTransaction)) return true;
  if (!mSchemaWatch->Look()) {
    NoteFailure(sqlite3_extended_errcode(mHandle));
    return isReadOnly;
  }
  mHasLooked = isInTransaction;
  return true;
}

bool DatabaseSqlite::ExecuteStatement(const std::string& text) {
  if (!IsOpen()) {
    LogFailure("statement on a closed database");
    return false;
  }
  const bool wasInTransaction = IsInTransaction();
  const bool isDone = RunAll(text.c_str());
  if (!isDone && !wasInTransaction && IsInTransaction()) RunPlain("ROLLBACK");
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
  std::unique_ptr<PreparedStatement> statement;
  {
    const ConnectionLock lock(*this);
    statement = mStatements->Take(mHandle, text, &text);
    const int code = statement ? statement->BindAll(values) : sqlite3_errcode(mHandle);
    if (code != SQLITE_OK) error = sqlite3_errmsg(mHandle);
  }
  if (statement) {
    if (error.empty()) error = RunToEnd(*statement);
    mStatements->Return(std::move(statement), error.empty());
  }
  if (!error.empty()) LogFailure(error);
  return error.empty();
}

// Runs a statement to its end; gives why that failed, empty for success.
std::string DatabaseSqlite::RunToEnd(PreparedStatement& statement) {
  const ConnectionLock lock(*this);
  const StatementDeadline::Scope scope(*mDeadline);
  if (const char* refusal = Refusal(statement.IsReadOnly())) return refusal;
  const bool wasInTransaction = IsInTransaction();
  int code = SQLITE_OK;
  do
    code = sqlite3_step(statement.Handle());
  while (code == SQLITE_ROW);
  if (code != SQLITE_DONE) {
    NoteFailure(code);
    return sqlite3_errmsg(mHandle);
  }
  if (statement.IsCommand()) NoteCommand(statement, wasInTransaction);
  return {};
}

void DatabaseSqlite::NoteCommand(const PreparedStatement& command, bool wasInTransaction) {
  const bool isInTransaction = IsInTransaction();
  // A command that succeeds and leaves no transaction behind is itself the end of the one there was.
  if (wasInTransaction && !isInTransaction) ForgetTransaction();
  // What writes, and isn't the begin of a transaction, may have changed the columns of idle statements.
  if (!command.IsReadOnly() && wasInTransaction == isInTransaction) {
    mHasChangedTables = isInTransaction;
    mStatements->Clear();
  }
}

// Where it ends with a rollback, columns of idle statements may be those of tables that it had changed.
void DatabaseSqlite::ForgetTransaction() {
  mInTransaction = mIsReading = false;
  mSavepoints->Forget();
  if (std::exchange(mHasChangedTables, false)) mStatements->Clear();
}

bool DatabaseSqlite::RunPlain(const char* statement) {
  const StatementDeadline::Scope scope(*mDeadline);
  const int code = sqlite3_exec(mHandle, statement, nullptr, nullptr, nullptr);
  NoteFailure(code);
  return code == SQLITE_OK;
}

// Why a backup must not begin now, empty if it may.
std::string DatabaseSqlite::WhyNoBackup() {
  if (!IsOpen()) return "the database is not open";
  const ConnectionLock lock(*this);
  // It would copy what may yet be rolled back; SQLite refuses it too.
  const bool isWriting = sqlite3_txn_state(mHandle, "main") == SQLITE_TXN_WRITE;
  return isWriting ? "a transaction is open" : HasLostTransaction() ? LostTransactionText : "";
}

bool DatabaseSqlite::Backup(const std::string& file, const BackupProgress& progress) {
  if (const std::string reason = WhyNoBackup(); !reason.empty()) {
    LogFailure("backup refused: " + reason);
    throw InvalidOperationException();
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
    const ConnectionLock lock(*this);
    NoteFailure(failure.Code());
    throw NotSupportedException(failure.what(), __FILE__, __LINE__);
  }
}

std::vector<std::string> DatabaseSqlite::CheckIntegrity() {
  std::string error = "the database is not open";
  if (IsOpen()) {
    const ConnectionLock lock(*this);
    RecoverFromShortMemory();
    const char* refusal = HasLostTransaction() ? LostTransactionText : nullptr;
    IntegrityCheck check(mHandle);
    const int code = refusal ? SQLITE_ERROR : check.Run();
    if (code == SQLITE_OK) return check.Findings();
    NoteFailure(code);
    error = refusal ? refusal : sqlite3_errmsg(mHandle);
  }
  LogFailure("integrity check failed: " + error);
  throw InvalidOperationException();
}

bool DatabaseSqlite::RebuildFullTextIndex(const std::string& table) {
  const std::string name = SqlText::QuotedName(table);
  return ExecuteStatement("INSERT INTO main." + name + "(" + name + ") VALUES('rebuild')");
}

std::shared_ptr<ChangeNotifier> DatabaseSqlite::AddListener(const std::shared_ptr<ListenerEntry>& entry) {
  const ConnectionLock connection(*this);
  // On a closed database there is no lock of the connection.
  const std::lock_guard<std::mutex> lock(mMutex);
  const bool isFirst = !mNotifier;
  if (isFirst)
    mNotifier = std::make_shared<ChangeNotifier>([this](const std::string& message) { LogFailure(message); });
  mNotifier->Add(entry);
  if (isFirst && IsOpen()) mNotifier->Attach(mHandle);
  return mNotifier;
}

std::shared_ptr<ChangeNotifier> DatabaseSqlite::NotifierWithNews() const noexcept {
  if (!mNotifier->HasListeners()) {
    if (mNotifier->Retire()) mNotifier.reset();
    return nullptr;
  }
  mNotifier->CollectCommitted();
  return mLockDepth == 0 && mNotifier->BeginNotifying() ? mNotifier : nullptr;
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
  std::string error = "the database is not open";
  if (IsOpen()) {
    const ConnectionLock lock(*this);
    const StatementDeadline::Scope scope(*mDeadline);
    if (const std::optional<int64_t> version = mSchemaWatch->DataVersion())
      return std::exchange(mReportedVersion, *version) != *version;
    error = sqlite3_errmsg(mHandle);
  }
  LogFailure("look for changes refused: " + error);
  throw InvalidOperationException();
}

// https://sqlite.org/c3ref/c_config_covering_index_scan.html#sqliteconfigmemstatus
bool DatabaseSqlite::TuneForThreads() {
  static bool isTuned = false;
  if (!isTuned) isTuned = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0) == SQLITE_OK;
  return isTuned;
}

void DatabaseSqlite::Interrupt() {
  mDeadline->Interrupt();
}

void DatabaseSqlite::LoadVfs(const std::string& library) {
  const std::string fault = VfsLibrary::Load(library);
  if (!fault.empty()) throw NotSupportedException(fault.c_str(), __FILE__, __LINE__);
}

std::string DatabaseSqlite::ErrorText() const {
  if (!IsOpen()) return "the database is not open";
  const ConnectionLock lock(*this);
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
