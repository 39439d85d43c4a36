#include "Oru/Common/Databases/Sqlite/Changes/ChangedRows.h"

#include <algorithm>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

using Kind = ChangeNotice::Kind;

// What two changes of one row come to.
ChangedRows::Fate ChangedRows::Then(Fate before, Fate now) {
  if (!before) return now;
  if (before == Kind::Unknown || now == Kind::Unknown) return Kind::Unknown;
  if (before == Kind::Inserted) return now == Kind::Deleted ? Fate() : before;
  // The row was there at the begin.
  return now == Kind::Deleted || !now ? Kind::Deleted : Kind::Updated;
}

ChangedRows::Fate ChangedRows::FateOf(const Row& row) const {
  return row.doubts == mDoubts ? row.fate : Kind::Unknown;
}

void ChangedRows::Add(std::string_view table, int64_t key, Kind kind) noexcept {
  ++mAddCount;
  try {
    if (!mLastTable || mLastName != table) {
      auto found = mTables.find(table);
      if (found == mTables.end()) found = mTables.try_emplace(std::string(table)).first;
      mLastName = found->first;
      mLastTable = &found->second;
    }
    Merge(*mLastTable, key, kind);
  } catch (...) {
    mAreAllTables = true;
  }
}

void ChangedRows::Merge(Table& table, int64_t key, Fate fate) {
  if (table.areAllRows) return;
  const auto [found, isNew] = table.rows.try_emplace(key, Row{fate, mDoubts});
  if (!isNew) found->second = {Then(FateOf(found->second), fate), mDoubts};
  if (table.rows.size() <= MostRowsOfATable) return;
  table.rows = {};
  table.areAllRows = true;
}

void ChangedRows::Add(ChangedRows later) noexcept {
  if (IsEmpty()) {
    *this = std::move(later);
    return;
  }
  mAreAllTables = mAreAllTables || later.mAreAllTables;
  mAddCount += later.mAddCount;
  try {
    for (const auto& [name, table] : later.mTables) {
      Table& own = mTables[name];
      if (table.areAllRows) own = {{}, true};
      for (const auto& [key, row] : table.rows)
        Merge(own, key, later.FateOf(row));
    }
  } catch (...) {
    mAreAllTables = true;
  }
}

void ChangedRows::Clear() noexcept {
  mTables.clear();
  mLastName = {};
  mLastTable = nullptr;
  mDoubts = 0;
  mAddCount = 0;
  mAreAllTables = false;
}

ChangeNotice ChangedRows::Notice() const {
  ChangeNotice notice;
  notice.areAllTables = mAreAllTables;
  for (const auto& [name, table] : mTables) {
    ChangeNotice::Table told{name, {}, table.areAllRows};
    for (const auto& [key, row] : table.rows) {
      if (const Fate fate = FateOf(row)) told.rows.push_back({key, *fate});
    }
    if (told.rows.empty() && !told.areAllRows) continue;
    std::sort(told.rows.begin(), told.rows.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
    notice.tables.push_back(std::move(told));
  }
  return notice;
}

}  // namespace Oru::Common::Databases::Sqlite
