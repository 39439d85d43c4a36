#include "Oru/Common/Databases/Sqlite/Statements/StatementCache.h"

#include <sqlite3.h>

#include <iterator>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

namespace {

constexpr std::string_view Blanks = " \t\r\n\f";

std::string_view WithoutLeading(std::string_view text, std::string_view characters) {
  const std::size_t begin = text.find_first_not_of(characters);
  return begin == std::string_view::npos ? std::string_view() : text.substr(begin);
}

// Whether a text may be prepared once and run many times. A PRAGMA may not: some do their work as they are
// prepared (https://sqlite.org/pragma.html).
bool IsWorthKeeping(std::string_view text) {
  if (text.size() > StatementCache::LongestText) return false;
  const std::string_view start = WithoutLeading(text, Blanks);
  for (const std::string_view word : {"SELECT", "INSERT", "UPDATE", "DELETE", "REPLACE", "WITH"}) {
    if (start.size() > word.size() &&
        sqlite3_strnicmp(start.data(), word.data(), static_cast<int>(word.size())) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace

StatementCache::StatementCache(std::size_t capacity) : mCapacity(capacity) {}

StatementCache::~StatementCache() = default;

std::unique_ptr<StatementHandle> StatementCache::Take(sqlite3* handle, std::string_view text,
                                                      std::string_view* rest) {
  std::string_view tail;
  std::unique_ptr<StatementHandle> statement = TakeCached(text);
  if (!statement) {
    const bool isWorthKeeping = IsWorthKeeping(text);
    statement = StatementHandle::Prepare(handle, text, isWorthKeeping, &tail);
    const bool isWhole = WithoutLeading(WithoutLeading(tail, Blanks), ";").empty();
    if (statement && isWorthKeeping && isWhole) Register(*statement, text);
  }
  if (rest) *rest = tail;
  return statement;
}

std::unique_ptr<StatementHandle> StatementCache::TakeCached(std::string_view text) {
  const std::lock_guard<std::mutex> lock(mMutex);
  const auto found = mByText.find(text);
  if (found == mByText.end()) return nullptr;
  const Slots::iterator slot = found->second;
  mSlots.splice(mSlots.begin(), mSlots, slot);
  if (slot->cached.empty()) return nullptr;
  std::unique_ptr<StatementHandle> statement = std::move(slot->cached.back());
  slot->cached.pop_back();
  ++slot->outCount;
  --mCount;
  return statement;
}

void StatementCache::Register(StatementHandle& statement, std::string_view text) {
  const std::lock_guard<std::mutex> lock(mMutex);
  auto found = mByText.find(text);
  if (found == mByText.end()) {
    mSlots.emplace_front();
    const Slots::iterator slot = mSlots.begin();
    slot->text = text;
    slot->self = slot;
    found = mByText.emplace(slot->text, slot).first;
  }
  ++found->second->outCount;
  statement.slot = &*found->second;
}

void StatementCache::Return(std::unique_ptr<StatementHandle> statement, bool isSound) {
  if (!statement->slot) return;
  if (isSound) statement->Clear();

  Statements dropped;
  const std::lock_guard<std::mutex> lock(mMutex);
  Slot& slot = *static_cast<Slot*>(statement->slot);
  --slot.outCount;
  if (isSound) {
    slot.cached.push_back(std::move(statement));
    ++mCount;
    while (mCount > mCapacity)
      dropped.push_back(TakeLeastRecentlyUsed());
  } else {
    dropped.push_back(std::move(statement));
    EraseIfUnused(slot.self);
  }
}

std::unique_ptr<StatementHandle> StatementCache::TakeLeastRecentlyUsed() {
  auto slot = std::prev(mSlots.end());
  while (slot->cached.empty())
    --slot;
  std::unique_ptr<StatementHandle> statement = std::move(slot->cached.back());
  slot->cached.pop_back();
  --mCount;
  EraseIfUnused(slot);
  return statement;
}

void StatementCache::EraseIfUnused(Slots::iterator slot) {
  if (!slot->cached.empty() || slot->outCount > 0) return;
  mByText.erase(slot->text);
  mSlots.erase(slot);
}

bool StatementCache::PrepareRollback(sqlite3* handle) {
  if (!mRollback) mRollback = StatementHandle::Prepare(handle, "ROLLBACK", true);
  return mRollback != nullptr;
}

bool StatementCache::Rollback(sqlite3* handle) {
  if (!PrepareRollback(handle)) return false;
  const bool isDone = sqlite3_step(mRollback->Handle()) == SQLITE_DONE;
  return sqlite3_reset(mRollback->Handle()) == SQLITE_OK && isDone;
}

void StatementCache::Clear() {
  std::vector<Statements> dropped;
  const std::lock_guard<std::mutex> lock(mMutex);
  for (auto slot = mSlots.begin(); slot != mSlots.end();) {
    const auto current = slot++;
    dropped.push_back(std::exchange(current->cached, {}));
    EraseIfUnused(current);
  }
  mCount = 0;
}

std::size_t StatementCache::Count() const {
  const std::lock_guard<std::mutex> lock(mMutex);
  return mCount;
}

}  // namespace Oru::Common::Databases::Sqlite
