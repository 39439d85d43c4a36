#include "Oru/Common/Databases/Sqlite/Statements/Savepoints.h"

#include <sqlite3.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

namespace {

constexpr std::string_view RollbackText = "ROLLBACK TO OruSavepoint";

}  // namespace

bool Savepoints::IsOwnRollback(const char* text) {
  return std::string_view(text).substr(0, RollbackText.size()) == RollbackText;
}

int Savepoints::Run(const StatementHandle& statement) {
  const int code = sqlite3_step(statement.Handle());
  sqlite3_reset(statement.Handle());
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

int Savepoints::Begin(sqlite3* handle) {
  const std::size_t depth = Depth();
  mOpen.reserve(depth + 1);
  if (mStatements.size() == depth) {
    // Names by depth: a statement serves every savepoint of its depth, and names none of another.
    const std::string number = std::to_string(depth);
    const auto prepare = [&](std::unique_ptr<StatementHandle>& statement, std::string_view text) {
      statement = StatementHandle::Prepare(handle, std::string(text) + number, true);
      return statement != nullptr;
    };
    Statements made;
    // Not one after a failure: the handle has the code of the last.
    if (!prepare(made.begin, "SAVEPOINT OruSavepoint") || !prepare(made.rollback, RollbackText) ||
        !prepare(made.release, "RELEASE OruSavepoint")) {
      return sqlite3_errcode(handle);
    }
    mStatements.push_back(std::move(made));
  }
  const int64_t changes = sqlite3_total_changes64(handle);
  const int code = Run(*mStatements[depth].begin);
  if (code == SQLITE_OK) mOpen.push_back({++mLastNumber, changes});
  return code;
}

int Savepoints::Release(std::size_t depth) {
  const int code = Run(*mStatements[depth].release);
  if (code == SQLITE_OK) mOpen.resize(depth);
  return code;
}

int Savepoints::Rollback(sqlite3* handle, std::size_t depth, int64_t& undone) {
  undone = sqlite3_total_changes64(handle) - mOpen[depth].changesAtBegin;
  const int code = Run(*mStatements[depth].rollback);
  // Going back leaves a savepoint open, with nothing in it.
  if (code == SQLITE_OK) Run(*mStatements[depth].release);
  mOpen.resize(depth);
  for (Savepoint& around : mOpen)
    around.changesAtBegin += undone;
  return code;
}

void Savepoints::Clear() {
  mStatements.clear();
  mOpen.clear();
}

std::size_t Savepoints::DepthOf(uint64_t number) const {
  const auto found = std::find_if(mOpen.begin(), mOpen.end(),
                                  [number](const Savepoint& open) { return open.number == number; });
  return static_cast<std::size_t>(found - mOpen.begin());
}

}  // namespace Oru::Common::Databases::Sqlite
