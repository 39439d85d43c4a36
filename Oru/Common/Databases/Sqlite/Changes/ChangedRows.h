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

/// The rows that have changed so far, each with what has become of it. Of a table with too many only that is
/// kept, so that the memory is bounded. Internal to the access layer.
///
/// Threads: to be used with the connection locked.
class ChangedRows {
 public:
  static constexpr std::size_t MostRowsOfATable = 100000;

  /// Adds what a statement did to a row. Lacking the memory, it takes all tables for changed.
  void Add(std::string_view table, int64_t key, ChangeNotice::Kind kind) noexcept;
  /// Adds what changed later.
  void Add(ChangedRows later) noexcept;
  /// What has been added so far may have been undone: of these rows nothing is known for sure any more.
  void Doubt() { ++mDoubts; }
  void Clear() noexcept;

  bool IsEmpty() const { return mTables.empty() && !mAreAllTables; }
  /// How often a row was added.
  uint64_t AddCount() const { return mAddCount; }
  ChangeNotice Notice() const;

 private:
  // The kind from the begin on; none when the row came and went.
  using Fate = std::optional<ChangeNotice::Kind>;
  struct Row {
    Fate fate;
    // How many doubts there were when it was added last.
    uint32_t doubts;
  };
  struct Table {
    std::unordered_map<int64_t, Row> rows;
    bool areAllRows = false;
  };

  static Fate Then(Fate before, Fate now);
  Fate FateOf(const Row& row) const;
  void Merge(Table& table, int64_t key, Fate fate);

  std::map<std::string, Table, std::less<>> mTables;
  // The table of the last row, as rows of one table come one behind the other.
  std::string_view mLastName;
  Table* mLastTable = nullptr;
  uint32_t mDoubts = 0;
  uint64_t mAddCount = 0;
  bool mAreAllTables = false;
};

}  // namespace Oru::Common::Databases::Sqlite
