#pragma once

#include "Oru/Common/Databases/Sqlite/Statements/StatementHandle.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

/// The open savepoints of one connection, the innermost last. The statements for each depth are prepared
/// once, before its first savepoint begins, so that a rollback can't fail for lack of memory.
///
/// Threads: to be used with the connection locked.
class Savepoints {
 public:
  /// @return SQLite's result code; the savepoint is open if that is SQLITE_OK
  int Begin(sqlite3* handle);
  /// Commits a savepoint and those within it.
  /// @return SQLite's result code; they are all still open unless that is SQLITE_OK
  int Release(std::size_t depth);
  /// Goes back to the beginning of a savepoint. It and those within it are no longer open then.
  /// @param undone  set to how many rows were changed since, and not taken back before
  /// @return SQLite's result code
  int Rollback(sqlite3* handle, std::size_t depth, int64_t& undone);
  /// Takes note that the transaction has ended, and all savepoints with it.
  void Forget() { mOpen.clear(); }
  /// Finalises the statements, before the connection closes, and forgets what is open.
  void Clear();

  /// How many are open.
  std::size_t Depth() const { return mOpen.size(); }
  /// How many are around the one of that number; `Depth()` if it isn't open.
  std::size_t DepthOf(uint64_t number) const;
  /// The number of the innermost one, which no other savepoint of the connection has had.
  uint64_t LastNumber() const { return mLastNumber; }

  /// Whether a statement goes back to a savepoint of this class.
  static bool IsOwnRollback(const char* text);

 private:
  struct Statements {
    std::unique_ptr<StatementHandle> begin, rollback, release;
  };
  struct Savepoint {
    uint64_t number;
    // How many rows the connection had changed, and more by those that were taken back since.
    int64_t changesAtBegin;
  };

  static int Run(const StatementHandle& statement);

  // By depth.
  std::vector<Statements> mStatements;
  std::vector<Savepoint> mOpen;
  uint64_t mLastNumber = 0;
};

}  // namespace Oru::Common::Databases::Sqlite
