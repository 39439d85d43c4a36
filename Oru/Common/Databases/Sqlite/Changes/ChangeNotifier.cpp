#include "Oru/Common/Databases/Sqlite/Changes/ChangeNotifier.h"

#include "Oru/Common/Databases/Sqlite/Statements/Savepoints.h"
#include "Oru/Common/Databases/Sqlite/Statements/StatementHandle.h"

#include <sqlite3.h>

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

namespace {

ChangeNotice::Kind KindOf(int operation) {
  if (operation == SQLITE_INSERT) return ChangeNotice::Kind::Inserted;
  return operation == SQLITE_DELETE ? ChangeNotice::Kind::Deleted : ChangeNotice::Kind::Updated;
}

// Without it, SQLite empties a table at once for a DELETE without a condition, and reports no row:
// https://sqlite.org/c3ref/set_authorizer.html
int DeleteRowByRow(void*, int action, const char*, const char*, const char*, const char*) {
  return action == SQLITE_DELETE ? SQLITE_IGNORE : SQLITE_OK;
}

// Whether a statement of the caller's rolls back to a savepoint, or everything (then OnRollback is called too).
bool IsRollback(sqlite3_stmt* statement) {
  const char* text = sqlite3_sql(statement);
  return sqlite3_stmt_readonly(statement) != 0 && sqlite3_column_count(statement) == 0 &&
         sqlite3_strlike("%rollback%", text, 0) == 0 && !Savepoints::IsOwnRollback(text);
}

using HeldMutex = std::unique_ptr<sqlite3_mutex, void (*)(sqlite3_mutex*)>;

// Keeps other threads from a connection. Not a ConnectionLock, whose end would notify in its turn.
HeldMutex Hold(sqlite3* handle) {
  HeldMutex mutex(handle ? sqlite3_db_mutex(handle) : nullptr, sqlite3_mutex_leave);
  sqlite3_mutex_enter(mutex.get());
  return mutex;
}

}  // namespace

ChangeNotifier::ChangeNotifier(LogFailure logFailure) : mLogFailure(std::move(logFailure)) {}

ChangeNotifier::~ChangeNotifier() = default;

void ChangeNotifier::Attach(sqlite3* handle) {
  mHandle = handle;
  sqlite3_update_hook(handle, OnUpdate, this);
  sqlite3_rollback_hook(handle, OnRollback, this);
  // Not at the begin of statements: for those within others SQLite makes a text then, and SQLite 3.40 crashes when memory
  // lacks for it as a full-text index begins to write.
  sqlite3_trace_v2(handle, SQLITE_TRACE_PROFILE, OnStatementEnd, this);
  sqlite3_set_authorizer(handle, DeleteRowByRow, nullptr);
}

void ChangeNotifier::Detach() {
  if (!mHandle) return;
  sqlite3_update_hook(mHandle, nullptr, nullptr);
  sqlite3_rollback_hook(mHandle, nullptr, nullptr);
  sqlite3_trace_v2(mHandle, 0, nullptr, nullptr);
  sqlite3_set_authorizer(mHandle, nullptr, nullptr);
  Forget();
}

void ChangeNotifier::Forget() {
  mHandle = nullptr;
  ForgetOpen();
  mCommitted.Clear();
  mShadowSelect.reset();
  mShadows.clear();
}

void ChangeNotifier::ForgetOpen() {
  mAround.clear();
  mOpen.Clear();
}

bool ChangeNotifier::Retire() {
  ForgetOpen();
  mCommitted.Clear();
  if (mIsNotifying) return false;
  Detach();
  return true;
}

void ChangeNotifier::OnUpdate(void* self, int operation, const char* schema, const char* table,
                              long long key) {
  if (std::string_view(schema) != "main") return;
  static_cast<ChangeNotifier*>(self)->mOpen.Add(table, key, KindOf(operation));
}

void ChangeNotifier::OnRollback(void* self) {
  static_cast<ChangeNotifier*>(self)->ForgetOpen();
}

int ChangeNotifier::OnStatementEnd(unsigned int, void* self, void* statement, void*) {
  if (IsRollback(static_cast<sqlite3_stmt*>(statement)))
    static_cast<ChangeNotifier*>(self)->MarkAllUncertain();
  return 0;
}

void ChangeNotifier::NoteFailedStatement() {
  if (mOpen.AddCount() != mAddsAtStatement) mOpen.MarkUncertain();
}

void ChangeNotifier::MarkAllUncertain() {
  for (ChangedRows& rows : mAround)
    rows.MarkUncertain();
  mOpen.MarkUncertain();
}

void ChangeNotifier::BeginSavepoint(std::size_t depth) {
  ReleaseSavepoint(depth);
  mAround.reserve(depth + 1);
  mAround.resize(depth);
  mAround.push_back(std::exchange(mOpen, {}));
  mAddsAtStatement = 0;
}

void ChangeNotifier::ReleaseSavepoint(std::size_t depth) noexcept {
  while (mAround.size() > depth) {
    ChangedRows inner = std::exchange(mOpen, std::move(mAround.back()));
    mAround.pop_back();
    mOpen.Add(std::move(inner));
  }
  mAddsAtStatement = mOpen.AddCount();
}

void ChangeNotifier::RollBackSavepoint(std::size_t depth) noexcept {
  if (mAround.size() > depth) {
    mOpen = std::move(mAround[depth]);
    mAround.erase(mAround.begin() + static_cast<std::ptrdiff_t>(depth), mAround.end());
  } else {
    // It began before the first listener came.
    mOpen.Clear();
  }
  mAddsAtStatement = mOpen.AddCount();
}

void ChangeNotifier::MarkSavepointUncertain(std::size_t depth) noexcept {
  ReleaseSavepoint(depth);
  mOpen.MarkUncertain();
}

// Every kind of rollback has cleared what it undid. So what is left, if no transaction is writing, was committed.
void ChangeNotifier::CollectCommitted() {
  if ((mOpen.IsEmpty() && mAround.empty()) || sqlite3_txn_state(mHandle, nullptr) == SQLITE_TXN_WRITE) return;
  ReleaseSavepoint(0);
  mCommitted.Add(std::exchange(mOpen, {}));
}

bool ChangeNotifier::BeginNotifying() {
  if (mIsNotifying || mCommitted.IsEmpty()) return false;
  mIsNotifying = true;
  return true;
}

ChangedRows ChangeNotifier::TakeCommitted() {
  const HeldMutex mutex = Hold(mHandle);
  return std::exchange(mCommitted, {});
}

bool ChangeNotifier::EndNotifying() {
  const HeldMutex mutex = Hold(mHandle);
  mIsNotifying = !mCommitted.IsEmpty();
  return !mIsNotifying;
}

void ChangeNotifier::Notify() noexcept {
  do {
    const ChangeNotice notice = NoticeOf(TakeCommitted());
    if (notice.areAllTables || !notice.tables.empty()) Call(notice);
  } while (!EndNotifying());
}

ChangeNotice ChangeNotifier::NoticeOf(const ChangedRows& rows) noexcept {
  try {
    ChangeNotice notice = rows.Notice();
    const auto isShadow = [this](const ChangeNotice::Table& table) { return IsShadow(table.name); };
    notice.tables.erase(std::remove_if(notice.tables.begin(), notice.tables.end(), isShadow),
                        notice.tables.end());
    return notice;
  } catch (...) {
    ChangeNotice everything;
    everything.areAllTables = true;
    return everything;
  }
}

// Asked once for each table: a table in which a virtual table keeps its content is never anything else.
bool ChangeNotifier::IsShadow(const std::string& table) {
  const auto found = mShadows.find(table);
  if (found != mShadows.end()) return found->second;
  const HeldMutex mutex = Hold(mHandle);
  if (!mHandle) return false;
  if (!mShadowSelect) {
    mShadowSelect = StatementHandle::Prepare(
        mHandle, "SELECT 1 FROM pragma_table_list(?) WHERE schema = 'main' AND type = 'shadow'", true);
  }
  // If SQLite fails (the file is locked, say), a table too many is better than one too few.
  if (!mShadowSelect || mShadowSelect->BindText(1, table) != SQLITE_OK) return false;
  const int code = sqlite3_step(mShadowSelect->Handle());
  mShadowSelect->Rewind();
  if (code != SQLITE_ROW && code != SQLITE_DONE) return false;
  return mShadows[table] = code == SQLITE_ROW;
}

void ChangeNotifier::Call(const ChangeNotice& notice) noexcept {
  std::size_t count = 0;
  {
    const std::lock_guard<std::mutex> lock(mMutex);
    mIsCalling = true;
    count = mEntries.size();
  }
  for (std::size_t i = 0; i < count; ++i)
    CallOne(*EntryAt(i), notice);
  const std::lock_guard<std::mutex> lock(mMutex);
  mIsCalling = false;
  DropInactive();
}

void ChangeNotifier::CallOne(ListenerEntry& entry, const ChangeNotice& notice) noexcept {
  const std::lock_guard<std::recursive_mutex> lock(entry.mutex);
  if (!entry.isActive) return;
  try {
    entry.function(notice);
  } catch (const std::exception& exception) {
    LogThrow(exception.what());
  } catch (...) {
    LogThrow("something that is no exception");
  }
}

void ChangeNotifier::LogThrow(const char* what) noexcept {
  try {
    mLogFailure(std::string("a listener of changes threw: ") + what);
  } catch (...) {
    // There is no memory for an entry.
  }
}

std::shared_ptr<ListenerEntry> ChangeNotifier::EntryAt(std::size_t index) const {
  const std::lock_guard<std::mutex> lock(mMutex);
  return mEntries[index];
}

void ChangeNotifier::Add(std::shared_ptr<ListenerEntry> entry) {
  const std::lock_guard<std::mutex> lock(mMutex);
  mEntries.push_back(std::move(entry));
}

void ChangeNotifier::Remove(ListenerEntry& entry) {
  {
    const std::lock_guard<std::recursive_mutex> lock(entry.mutex);
    entry.isActive = false;
  }
  const std::lock_guard<std::mutex> lock(mMutex);
  if (!mIsCalling) DropInactive();
}

bool ChangeNotifier::HasListeners() const {
  const std::lock_guard<std::mutex> lock(mMutex);
  return std::any_of(mEntries.begin(), mEntries.end(),
                     [](const auto& entry) { return entry->isActive.load(); });
}

void ChangeNotifier::DropInactive() {
  mEntries.erase(std::remove_if(mEntries.begin(), mEntries.end(),
                                [](const auto& entry) { return !entry->isActive.load(); }),
                 mEntries.end());
}

}  // namespace Oru::Common::Databases::Sqlite
