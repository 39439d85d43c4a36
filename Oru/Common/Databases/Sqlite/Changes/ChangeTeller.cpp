#include "Oru/Common/Databases/Sqlite/Changes/ChangeTeller.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/Connection/Savepoints.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"

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

// Without it, SQLite empties a table at once for a DELETE without a condition, and tells no row:
// https://sqlite.org/c3ref/set_authorizer.html
int DeleteRowByRow(void*, int action, const char*, const char*, const char*, const char*) {
  return action == SQLITE_DELETE ? SQLITE_IGNORE : SQLITE_OK;
}

// Whether a statement of the caller's goes back to a savepoint; also if it rolls back everything, which
// OnRollback hears of.
bool IsRollback(sqlite3_stmt* statement) {
  const char* text = sqlite3_sql(statement);
  return sqlite3_stmt_readonly(statement) != 0 && sqlite3_column_count(statement) == 0 &&
         sqlite3_strlike("%rollback%", text, 0) == 0 && !Savepoints::IsOwnRollback(text);
}

}  // namespace

ChangeTeller::ChangeTeller(DatabaseSqlite& database)
    : mDatabase(database),
      mShadowCount(
          "SELECT count(*) FROM pragma_table_list(:name) WHERE schema = 'main' AND type = 'shadow'") {}

void ChangeTeller::Attach(sqlite3* handle) {
  mHandle = handle;
  sqlite3_update_hook(handle, OnUpdate, this);
  sqlite3_rollback_hook(handle, OnRollback, this);
  sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, OnStatement, this);
  sqlite3_set_authorizer(handle, DeleteRowByRow, nullptr);
}

void ChangeTeller::Detach() {
  if (!mHandle) return;
  sqlite3_update_hook(mHandle, nullptr, nullptr);
  sqlite3_rollback_hook(mHandle, nullptr, nullptr);
  sqlite3_trace_v2(mHandle, 0, nullptr, nullptr);
  sqlite3_set_authorizer(mHandle, nullptr, nullptr);
  Forget();
}

void ChangeTeller::Forget() {
  mHandle = nullptr;
  ForgetOpen();
  mCommitted.Clear();
  mShadows.clear();
}

void ChangeTeller::ForgetOpen() {
  mAround.clear();
  mOpen.Clear();
}

bool ChangeTeller::Retire() {
  ForgetOpen();
  mCommitted.Clear();
  if (mIsTelling) return false;
  Detach();
  return true;
}

void ChangeTeller::OnUpdate(void* self, int operation, const char* schema, const char* table, long long key) {
  if (std::string_view(schema) != "main") return;
  static_cast<ChangeTeller*>(self)->mOpen.Add(table, key, KindOf(operation));
}

void ChangeTeller::OnRollback(void* self) {
  static_cast<ChangeTeller*>(self)->ForgetOpen();
}

int ChangeTeller::OnStatement(unsigned int, void* self, void* begun, void* text) {
  auto* statement = static_cast<sqlite3_stmt*>(begun);
  // Triggers and what SQLite runs for itself show as comments.
  if (text != sqlite3_sql(statement)) return 0;
  ChangeTeller& teller = *static_cast<ChangeTeller*>(self);
  if (IsRollback(statement)) teller.DoubtAll();
  teller.mAddsAtStatement = teller.mOpen.AddCount();
  return 0;
}

void ChangeTeller::NoteFailedStatement() {
  if (mOpen.AddCount() != mAddsAtStatement) mOpen.Doubt();
}

void ChangeTeller::DoubtAll() {
  for (ChangedRows& rows : mAround)
    rows.Doubt();
  mOpen.Doubt();
}

void ChangeTeller::BeginSavepoint(std::size_t depth) {
  ReleaseSavepoint(depth);
  mAround.reserve(depth + 1);
  mAround.resize(depth);
  mAround.push_back(std::exchange(mOpen, {}));
  mAddsAtStatement = 0;
}

void ChangeTeller::ReleaseSavepoint(std::size_t depth) noexcept {
  while (mAround.size() > depth) {
    ChangedRows inner = std::exchange(mOpen, std::move(mAround.back()));
    mAround.pop_back();
    mOpen.Add(std::move(inner));
  }
  mAddsAtStatement = mOpen.AddCount();
}

void ChangeTeller::RollBackSavepoint(std::size_t depth) noexcept {
  if (mAround.size() > depth) {
    mOpen = std::move(mAround[depth]);
    mAround.erase(mAround.begin() + static_cast<std::ptrdiff_t>(depth), mAround.end());
  } else {
    // It began before the first listener came.
    mOpen.Clear();
  }
  mAddsAtStatement = mOpen.AddCount();
}

void ChangeTeller::DoubtSavepoint(std::size_t depth) noexcept {
  ReleaseSavepoint(depth);
  mOpen.Doubt();
}

// A rollback of whatever kind has cleared what it undid; what is still there without a transaction that
// writes was committed.
void ChangeTeller::Settle() {
  if ((mOpen.IsEmpty() && mAround.empty()) || sqlite3_txn_state(mHandle, nullptr) == SQLITE_TXN_WRITE) return;
  ReleaseSavepoint(0);
  mCommitted.Add(std::exchange(mOpen, {}));
}

bool ChangeTeller::BeginTelling() {
  if (mIsTelling || mCommitted.IsEmpty()) return false;
  mIsTelling = true;
  return true;
}

ChangedRows ChangeTeller::TakeCommitted() {
  const ConnectionLock lock(mDatabase);
  return std::exchange(mCommitted, {});
}

bool ChangeTeller::EndTelling() {
  const ConnectionLock lock(mDatabase);
  mIsTelling = !mCommitted.IsEmpty();
  return !mIsTelling;
}

void ChangeTeller::Tell() noexcept {
  do {
    const ChangeNotice notice = NoticeOf(TakeCommitted());
    if (notice.areAllTables || !notice.tables.empty()) Call(notice);
  } while (!EndTelling());
}

ChangeNotice ChangeTeller::NoticeOf(const ChangedRows& rows) noexcept {
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

// Asked once of each table: what a virtual table keeps its content in is never anything else.
bool ChangeTeller::IsShadow(const std::string& table) {
  const auto found = mShadows.find(table);
  if (found != mShadows.end()) return found->second;
  try {
    return mShadows[table] = mShadowCount.FindKey(mDatabase, table) > 0;
  } catch (const InvalidOperationException&) {
    // The file is locked, say. Rather a table too many than one too few.
    return false;
  }
}

void ChangeTeller::Call(const ChangeNotice& notice) noexcept {
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

void ChangeTeller::CallOne(ChangeListener::Entry& entry, const ChangeNotice& notice) noexcept {
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

void ChangeTeller::LogThrow(const char* what) noexcept {
  try {
    mDatabase.LogFailure(std::string("a listener of changes threw: ") + what);
  } catch (...) {
    // Without the memory for an entry there is none.
  }
}

std::shared_ptr<ChangeListener::Entry> ChangeTeller::EntryAt(std::size_t index) const {
  const std::lock_guard<std::mutex> lock(mMutex);
  return mEntries[index];
}

void ChangeTeller::Add(std::shared_ptr<ChangeListener::Entry> entry) {
  const std::lock_guard<std::mutex> lock(mMutex);
  mEntries.push_back(std::move(entry));
}

void ChangeTeller::Remove(ChangeListener::Entry& entry) {
  {
    const std::lock_guard<std::recursive_mutex> lock(entry.mutex);
    entry.isActive = false;
  }
  const std::lock_guard<std::mutex> lock(mMutex);
  if (!mIsCalling) DropInactive();
}

bool ChangeTeller::HasListeners() const {
  const std::lock_guard<std::mutex> lock(mMutex);
  return std::any_of(mEntries.begin(), mEntries.end(),
                     [](const auto& entry) { return entry->isActive.load(); });
}

void ChangeTeller::DropInactive() {
  mEntries.erase(std::remove_if(mEntries.begin(), mEntries.end(),
                                [](const auto& entry) { return !entry->isActive.load(); }),
                 mEntries.end());
}

}  // namespace Oru::Common::Databases::Sqlite
