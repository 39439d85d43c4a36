#include "Oru/Common/Databases/Sqlite/Connection/SchemaWatch.h"

#include "Oru/Common/Databases/Sqlite/Statements/StatementHandle.h"

#include <sqlite3.h>

#include <functional>
#include <string_view>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

namespace {

bool HasFile(sqlite3* handle) {
  const char* file = sqlite3_db_filename(handle, "main");
  return file && *file != '\0';
}

std::string_view TextOf(sqlite3_stmt* row, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  return text ? std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(row, column)))
              : std::string_view();
}

// After a write had to be repeated.
constexpr int WritesWithLook = 16;

// Whether a failure may come of old definitions of the tables.
bool MayBeOfOldTables(int code) {
  const int kind = code & 0xFF;
  return kind == SQLITE_CONSTRAINT || kind == SQLITE_CORRUPT || kind == SQLITE_ERROR;
}

bool Prepare(sqlite3* handle, std::unique_ptr<StatementHandle>& statement, std::string_view text) {
  if (!statement) statement = StatementHandle::Prepare(handle, text, true);
  return statement != nullptr;
}

/// Rewinds a statement at the end of the scope.
class Rewinding {
 public:
  explicit Rewinding(sqlite3_stmt* statement) : mStatement(statement) {}
  Rewinding(const Rewinding&) = delete;
  Rewinding& operator=(const Rewinding&) = delete;
  // A failure's text stays in the handle.
  ~Rewinding() { sqlite3_reset(mStatement); }

 private:
  sqlite3_stmt* mStatement;
};

}  // namespace

SchemaWatch::SchemaWatch(sqlite3* handle) : mHandle(handle), mIsFile(HasFile(handle)) {}

SchemaWatch::~SchemaWatch() {
  if (mIsFile) sqlite3_commit_hook(mHandle, nullptr, nullptr);
}

// https://sqlite.org/pragma.html#pragma_data_version
std::optional<int64_t> SchemaWatch::DataVersion() {
  if (!Prepare(mHandle, mVersionSelect, "PRAGMA main.data_version")) return std::nullopt;
  const Rewinding rewinding(mVersionSelect->Handle());
  if (sqlite3_step(mVersionSelect->Handle()) != SQLITE_ROW) return std::nullopt;
  return sqlite3_column_int64(mVersionSelect->Handle(), 0);
}

std::optional<std::size_t> SchemaWatch::Fingerprint() {
  if (!Prepare(mHandle, mSchemaSelect, "SELECT name, sql, rootpage FROM main.sqlite_schema")) {
    return std::nullopt;
  }
  const Rewinding rewinding(mSchemaSelect->Handle());
  std::size_t fingerprint = 0;
  const auto add = [&fingerprint](std::size_t hash) { fingerprint = fingerprint * 1099511628211U + hash; };
  int code = SQLITE_OK;
  while ((code = sqlite3_step(mSchemaSelect->Handle())) == SQLITE_ROW) {
    add(std::hash<std::string_view>()(TextOf(mSchemaSelect->Handle(), 0)));
    add(std::hash<std::string_view>()(TextOf(mSchemaSelect->Handle(), 1)));
    add(static_cast<std::size_t>(sqlite3_column_int64(mSchemaSelect->Handle(), 2)));
  }
  return code == SQLITE_DONE ? std::optional<std::size_t>(fingerprint) : std::nullopt;
}

// https://sqlite.org/c3ref/c_fcntl_begin_atomic_write.html#sqlitefcntldataversion
std::optional<unsigned> SchemaWatch::FileState() {
  unsigned state = 0;
  const int code = sqlite3_file_control(mHandle, nullptr, SQLITE_FCNTL_DATA_VERSION, &state);
  return code == SQLITE_OK ? std::optional<unsigned>(state) : std::nullopt;
}

// SQLite holds the lock for writing here, so that the state is the file's.
int SchemaWatch::OnCommit(void* self) {
  SchemaWatch& watch = *static_cast<SchemaWatch*>(self);
  watch.mHasCommitted = true;
  watch.mWasTrusted = watch.mTrusted && watch.mTrusted == watch.FileState();
  return watch.mMayRefuse && !watch.mWasTrusted;
}

bool SchemaWatch::Begin() {
  if (mIsFile) sqlite3_commit_hook(mHandle, OnCommit, this);
  mVersion = DataVersion();
  return mVersion.has_value();
}

bool SchemaWatch::IsTrue(bool isReadOnly, bool canRepeat) {
  const bool isInTransaction = sqlite3_get_autocommit(mHandle) == 0;
  if (!isInTransaction) mHasLooked = false;
  if (mHasLooked || (isReadOnly && !isInTransaction)) return true;
  // A commit that wasn't of one statement alone.
  if (std::exchange(mHasCommitted, false)) mTrusted.reset();
  mMayRefuse = canRepeat && !isInTransaction && mTrusted && mLooksLeft == 0;
  if (mMayRefuse) return true;
  if (!Look()) return false;
  if (mLooksLeft > 0) --mLooksLeft;
  mHasLooked = isInTransaction;
  return true;
}

bool SchemaWatch::MustRepeat(int code) {
  if (!mIsFile || mHasLooked) return false;
  const bool mayRefuse = std::exchange(mMayRefuse, false);
  const std::optional<unsigned> state = FileState();
  const bool isOld = mTrusted != state;
  if (code == SQLITE_DONE) {
    const bool isTrusted = (mHasCommitted && mWasTrusted) || !isOld;
    mTrusted = isTrusted ? state : std::nullopt;
    mHasCommitted = false;
    return false;
  }
  mTrusted.reset();
  if (!mayRefuse || !isOld || !MayBeOfOldTables(code)) return false;
  mLooksLeft = WritesWithLook;
  return Look();
}

std::optional<bool> SchemaWatch::HasChanged() {
  const std::optional<int64_t> version = DataVersion();
  if (!version) return std::nullopt;
  return std::exchange(mReportedVersion, version) != version;
}

bool SchemaWatch::Look() {
  if (!mIsFile) return true;
  // In this order: what is committed meanwhile shows at the next look.
  const std::optional<int64_t> version = DataVersion();
  mTrusted = version ? FileState() : std::nullopt;
  if (!version) return false;
  if (version == mVersion) return true;
  const std::optional<std::size_t> fingerprint = Fingerprint();
  if (!fingerprint || (fingerprint != mFingerprint && sqlite3_exec(mHandle, "PRAGMA writable_schema = RESET",
                                                                   nullptr, nullptr, nullptr) != SQLITE_OK)) {
    mTrusted.reset();
    return false;
  }
  mVersion = version;
  mFingerprint = fingerprint;
  return true;
}

}  // namespace Oru::Common::Databases::Sqlite
