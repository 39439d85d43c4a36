#include "Oru/Common/Databases/Sqlite/Changes/ChangedRows.h"

#include <algorithm>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

using Kind = ChangeNotice::Kind;

ChangedRows::NetChange ChangedRows::Combined(NetChange before, NetChange now) {
  if (!before) return now;
  if (before == Kind::Unknown || now == Kind::Unknown) return Kind::Unknown;
  if (before == Kind::Inserted) return now == Kind::Deleted ? NetChange() : before;
  // The row existed at the beginning.
  return now == Kind::Deleted || !now ? Kind::Deleted : Kind::Updated;
}

ChangedRows::NetChange ChangedRows::ChangeOf(const Row& row) const {
  return row.marks == mMarks ? row.change : Kind::Unknown;
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

void ChangedRows::Merge(Table& table, int64_t key, NetChange change) {
  if (table.areAllRows) return;
  const auto [found, isNew] = table.rows.try_emplace(key, Row{change, mMarks});
  if (!isNew) found->second = {Combined(ChangeOf(found->second), change), mMarks};
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
        Merge(own, key, later.ChangeOf(row));
    }
  } catch (...) {
    mAreAllTables = true;
  }
}

void ChangedRows::Clear() noexcept {
  mTables.clear();
  mLastName = {};
  mLastTable = nullptr;
  mMarks = 0;
  mAddCount = 0;
  mAreAllTables = false;
}

ChangeNotice ChangedRows::Notice() const {
  ChangeNotice notice;
  notice.areAllTables = mAreAllTables;
  for (const auto& [name, table] : mTables) {
    ChangeNotice::Table changed{name, {}, table.areAllRows};
    for (const auto& [key, row] : table.rows) {
      if (const NetChange change = ChangeOf(row)) changed.rows.push_back({key, *change});
    }
    if (changed.rows.empty() && !changed.areAllRows) continue;
    std::sort(changed.rows.begin(), changed.rows.end(),
              [](const auto& a, const auto& b) { return a.key < b.key; });
    notice.tables.push_back(std::move(changed));
  }
  return notice;
}

}  // namespace Oru::Common::Databases::Sqlite
