#pragma once

#include "Oru/Common/Databases/Sqlite/ChangeNotice.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Oru::Common::Databases::Sqlite {

/// The rows that have changed so far, each with its net change. If a table has too many changed rows, only
/// that fact is recorded, so that the memory is bounded.
///
/// Threads: to be used with the connection locked.
class ChangedRows {
 public:
  static constexpr std::size_t MostRowsOfATable = 100000;

  /// Adds what a statement did to a row. If there is no memory for it, all tables count as changed.
  void Add(std::string_view table, int64_t key, ChangeNotice::Kind kind) noexcept;
  /// Adds what changed later.
  void Add(ChangedRows later) noexcept;
  /// What has been added so far may have been undone: the changes of these rows become `Unknown`.
  void MarkUncertain() { ++mMarks; }
  void Clear() noexcept;

  bool IsEmpty() const { return mTables.empty() && !mAreAllTables; }
  /// How often a row was added.
  uint64_t AddCount() const { return mAddCount; }
  ChangeNotice Notice() const;

 private:
  // The difference between the beginning and now; none for a row that was inserted and deleted again.
  using NetChange = std::optional<ChangeNotice::Kind>;
  struct Row {
    NetChange change;
    // The value of mMarks when the row was last added.
    uint32_t marks;
  };
  struct Table {
    std::unordered_map<int64_t, Row> rows;
    bool areAllRows = false;
  };

  static NetChange Combined(NetChange before, NetChange now);
  NetChange ChangeOf(const Row& row) const;
  void Merge(Table& table, int64_t key, NetChange change);

  std::map<std::string, Table, std::less<>> mTables;
  // The table of the last row: changes of one table come in a row.
  std::string_view mLastName;
  Table* mLastTable = nullptr;
  // How often the rows were marked as uncertain.
  uint32_t mMarks = 0;
  uint64_t mAddCount = 0;
  bool mAreAllTables = false;
};

}  // namespace Oru::Common::Databases::Sqlite
