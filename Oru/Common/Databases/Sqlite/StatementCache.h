#pragma once

#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

class StatementShape;

/// The idle prepared statements of one connection, by shape: those used least recently go first when there
/// are too many. A statement is taken out while it is used, so that nobody shares it, and comes back rewound
/// and with its bindings cleared. Internal to the access layer.
///
/// Threads: may be used from several threads at once.
class StatementCache {
 public:
  /// Enough for all the texts that the tables of a data model database write, with room for the caller's own.
  static constexpr std::size_t DefaultCapacity = 256;

  explicit StatementCache(std::size_t capacity = DefaultCapacity);
  StatementCache(const StatementCache&) = delete;
  StatementCache& operator=(const StatementCache&) = delete;
  ~StatementCache();

  /// Gives a statement for the text, with the values of its lifted literals bound: a kept one or a new one.
  /// Null for a text that isn't worth keeping or that SQLite doesn't understand, and when it fails at it.
  /// @param error  set to why it failed. Another try must not hide that: SQLite may have rolled back
  std::unique_ptr<PreparedStatement> Take(sqlite3* handle, const std::string& text,
                                          std::string* error = nullptr);

  /// Keeps a statement for its next use; finalises one that isn't of this cache, and one that `isSound` is
  /// false for: a statement whose step failed is better prepared anew.
  void Return(std::unique_ptr<PreparedStatement> statement, bool isSound);

  /// Prepares the rollback of a transaction that is about to begin: it must not fail for want of memory
  /// later.
  /// @return false when SQLite refuses
  bool KeepRollback(sqlite3* handle);
  /// Rolls back, by the kept statement if there is one.
  /// @return false when SQLite fails at it
  bool Rollback(sqlite3* handle);

  /// Finalises all idle statements.
  void Clear();

  std::size_t IdleCount() const;

 private:
  using Statements = std::vector<std::unique_ptr<PreparedStatement>>;

  // The statements of tables begin alike; what tells them apart stands behind their FROM.
  struct ShapeHash {
    std::size_t operator()(std::string_view shape) const {
      constexpr std::size_t length = 64;
      return std::hash<std::string_view>()(shape.size() > length ? shape.substr(shape.size() - length)
                                                                 : shape);
    }
  };

  // All statements of one shape. A slot stays while a statement of it is out, which knows it by its address.
  struct Slot {
    std::string shape;
    Statements idle;
    std::size_t outCount = 0;
    // How many literals the analysis lifted that made this shape.
    std::size_t literalCount = 0;
    std::list<Slot>::iterator self;
  };
  using Slots = std::list<Slot>;

  std::unique_ptr<PreparedStatement> TakeIdle(const StatementShape& shape);
  void Register(PreparedStatement& statement, const StatementShape& shape);
  // There must be an idle one.
  std::unique_ptr<PreparedStatement> TakeLeastRecentlyUsed();
  void EraseIfUnused(Slots::iterator slot);

  std::unique_ptr<PreparedStatement> mRollback;
  const std::size_t mCapacity;
  // Never held while a statement is prepared or finalised: that takes the connection's mutex, whose holder
  // may be about to take a statement from here.
  mutable std::mutex mMutex;
  // Most recently used first.
  Slots mSlots;
  std::unordered_map<std::string_view, Slots::iterator, ShapeHash> mByShape;
  std::size_t mIdleCount = 0;
};

}  // namespace Oru::Common::Databases::Sqlite
