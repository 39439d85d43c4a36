#include "Oru/Common/Databases/Sqlite/StatementCache.h"

#include "Oru/Common/Databases/Sqlite/HandleLock.h"
#include "Oru/Common/Databases/Sqlite/StatementShape.h"

#include <sqlite3.h>

#include <iterator>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

namespace {

// A text literal as the database stores it: two quotes stand for one.
std::string Unquoted(std::string_view text) {
  std::string value;
  value.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    value += text[i];
    if (text[i] == '\'') ++i;
  }
  return value;
}

int BindText(sqlite3_stmt* statement, int number, std::string_view text) {
  return sqlite3_bind_text64(statement, number, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

bool BindLiterals(sqlite3_stmt* statement, const std::vector<StatementShape::Literal>& literals) {
  int number = 0;
  for (const StatementShape::Literal& literal : literals) {
    ++number;
    int code = SQLITE_OK;
    if (!literal.isText) {
      code = sqlite3_bind_int64(statement, number, literal.integer);
    } else if (literal.text.find('\'') == std::string_view::npos) {
      code = BindText(statement, number, literal.text);
    } else {
      code = BindText(statement, number, Unquoted(literal.text));
    }
    if (code != SQLITE_OK) return false;
  }
  return true;
}

}  // namespace

StatementCache::StatementCache(std::size_t capacity) : mCapacity(capacity) {}

StatementCache::~StatementCache() = default;

std::unique_ptr<PreparedStatement> StatementCache::Take(sqlite3* handle, const std::string& text,
                                                        std::string* error) {
  // One analysis a thread, kept for its memory.
  thread_local StatementShape shape;
  shape.Guess(text);
  std::unique_ptr<PreparedStatement> statement = TakeIdle(shape);
  if (!statement) {
    if (shape.Analyse(text) == StatementShape::Kind::Uncacheable) return nullptr;
    statement = TakeIdle(shape);
  }
  if (!statement) {
    const HandleLock lock(handle);
    statement = PreparedStatement::Prepare(handle, shape.Text().data(), shape.Text().size(), true);
    if (!statement) {
      const bool isMisunderstood = (sqlite3_errcode(handle) & 0xFF) == SQLITE_ERROR;
      if (!isMisunderstood && error) *error = sqlite3_errmsg(handle);
      return nullptr;
    }
    Register(*statement, shape);
  }
  statement->hasLiftedLiterals = !shape.Literals().empty();
  if (!BindLiterals(statement->Handle(), shape.Literals())) {
    Return(std::move(statement), false);
    return nullptr;
  }
  return statement;
}

std::unique_ptr<PreparedStatement> StatementCache::TakeIdle(const StatementShape& shape) {
  const std::lock_guard<std::mutex> lock(mMutex);
  const auto found = mByShape.find(shape.Text());
  if (found == mByShape.end()) return nullptr;
  const Slots::iterator slot = found->second;
  if (slot->literalCount != shape.Literals().size()) return nullptr;
  mSlots.splice(mSlots.begin(), mSlots, slot);
  if (slot->idle.empty()) return nullptr;
  std::unique_ptr<PreparedStatement> statement = std::move(slot->idle.back());
  slot->idle.pop_back();
  ++slot->outCount;
  --mIdleCount;
  return statement;
}

void StatementCache::Register(PreparedStatement& statement, const StatementShape& shape) {
  const std::lock_guard<std::mutex> lock(mMutex);
  auto found = mByShape.find(shape.Text());
  if (found == mByShape.end()) {
    mSlots.emplace_front();
    const Slots::iterator slot = mSlots.begin();
    slot->shape = shape.Text();
    slot->literalCount = shape.Literals().size();
    slot->self = slot;
    found = mByShape.emplace(slot->shape, slot).first;
  }
  Slot& slot = *found->second;
  // A text whose own parameters make it look like the shape of another isn't kept beside that.
  if (slot.literalCount != shape.Literals().size()) return;
  ++slot.outCount;
  statement.slot = &slot;
}

void StatementCache::Return(std::unique_ptr<PreparedStatement> statement, bool isSound) {
  if (!statement->slot) return;
  if (isSound) statement->Clear();

  Statements dropped;
  const std::lock_guard<std::mutex> lock(mMutex);
  Slot& slot = *static_cast<Slot*>(statement->slot);
  --slot.outCount;
  if (isSound) {
    slot.idle.push_back(std::move(statement));
    ++mIdleCount;
    while (mIdleCount > mCapacity)
      dropped.push_back(TakeLeastRecentlyUsed());
  } else {
    dropped.push_back(std::move(statement));
    EraseIfUnused(slot.self);
  }
}

std::unique_ptr<PreparedStatement> StatementCache::TakeLeastRecentlyUsed() {
  auto slot = std::prev(mSlots.end());
  while (slot->idle.empty())
    --slot;
  std::unique_ptr<PreparedStatement> statement = std::move(slot->idle.back());
  slot->idle.pop_back();
  --mIdleCount;
  EraseIfUnused(slot);
  return statement;
}

void StatementCache::EraseIfUnused(Slots::iterator slot) {
  if (!slot->idle.empty() || slot->outCount > 0) return;
  mByShape.erase(slot->shape);
  mSlots.erase(slot);
}

bool StatementCache::KeepRollback(sqlite3* handle) {
  const HandleLock lock(handle);
  constexpr std::string_view text = "ROLLBACK";
  if (!mRollback) mRollback = PreparedStatement::Prepare(handle, text.data(), text.size(), true);
  return mRollback != nullptr;
}

bool StatementCache::Rollback(sqlite3* handle) {
  const HandleLock lock(handle);
  if (!KeepRollback(handle)) return false;
  const bool isDone = sqlite3_step(mRollback->Handle()) == SQLITE_DONE;
  return sqlite3_reset(mRollback->Handle()) == SQLITE_OK && isDone;
}

void StatementCache::Clear() {
  std::vector<Statements> dropped;
  const std::lock_guard<std::mutex> lock(mMutex);
  for (auto slot = mSlots.begin(); slot != mSlots.end();) {
    const auto current = slot++;
    dropped.push_back(std::exchange(current->idle, {}));
    EraseIfUnused(current);
  }
  mIdleCount = 0;
}

std::size_t StatementCache::IdleCount() const {
  const std::lock_guard<std::mutex> lock(mMutex);
  return mIdleCount;
}

}  // namespace Oru::Common::Databases::Sqlite
