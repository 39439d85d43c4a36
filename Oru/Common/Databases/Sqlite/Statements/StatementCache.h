#pragma once

#include "Oru/Common/Databases/Sqlite/Statements/StatementHandle.h"

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

/// The cached statements of one connection, by their exact text. If there are too many, the least recently
/// used are finalised first. A statement is taken out while it is used, so that it is never shared, and comes
/// back rewound and with its bindings cleared.
///
/// Threads: may be used from several threads at once.
class StatementCache {
 public:
  /// Enough for all the texts that the tables of a data model database write, with room for the caller's own.
  static constexpr std::size_t DefaultCapacity = 256;
  /// A longer text, in bytes, isn't cached: a list of thousands of keys isn't worth its memory.
  static constexpr std::size_t LongestText = 16384;

  explicit StatementCache(std::size_t capacity = DefaultCapacity);
  StatementCache(const StatementCache&) = delete;
  StatementCache& operator=(const StatementCache&) = delete;
  ~StatementCache();

  /// Gives a statement for the first statement of a text: a cached one or a new one. Null when SQLite
  /// refuses, its reason then being in the handle, or when the text holds none.
  ///
  /// Statements that read or write rows are cached. Others (schema, settings, transactions) and texts of
  /// several statements are prepared for one use.
  /// @param rest  set to what follows the statement in the text, unless null
  std::unique_ptr<StatementHandle> Take(sqlite3* handle, std::string_view text,
                                        std::string_view* rest = nullptr);

  /// Caches a statement for its next use. Finalises one that isn't of this cache, and one whose step failed.
  /// @param isSound  whether no step failed
  void Return(std::unique_ptr<StatementHandle> statement, bool isSound);

  /// Prepares the rollback of a transaction that is about to begin, so that it can't fail later for lack of
  /// memory.
  /// @return false when SQLite refuses
  bool PrepareRollback(sqlite3* handle);
  /// Rolls back, by the prepared statement if there is one.
  /// @return false when SQLite fails at it
  bool Rollback(sqlite3* handle);

  /// Finalises all cached statements.
  void Clear();

  std::size_t Count() const;

 private:
  using Statements = std::vector<std::unique_ptr<StatementHandle>>;

  // The statements of tables begin alike; they differ after their FROM.
  struct TextHash {
    std::size_t operator()(std::string_view text) const {
      constexpr std::size_t length = 64;
      return std::hash<std::string_view>()(text.size() > length ? text.substr(text.size() - length) : text);
    }
  };

  // All statements of one text. A slot stays while a statement of it is out, which knows it by its address.
  struct Slot {
    std::string text;
    Statements cached;
    std::size_t outCount = 0;
    std::list<Slot>::iterator self;
  };
  using Slots = std::list<Slot>;

  std::unique_ptr<StatementHandle> TakeCached(std::string_view text);
  void Register(StatementHandle& statement, std::string_view text);
  // There must be a cached one.
  std::unique_ptr<StatementHandle> TakeLeastRecentlyUsed();
  void EraseIfUnused(Slots::iterator slot);

  std::unique_ptr<StatementHandle> mRollback;
  const std::size_t mCapacity;
  // Never held while a statement is prepared or finalised: that takes the connection's mutex, whose owner may
  // be waiting for this one.
  mutable std::mutex mMutex;
  // Most recently used first.
  Slots mSlots;
  std::unordered_map<std::string_view, Slots::iterator, TextHash> mByText;
  std::size_t mCount = 0;
};

}  // namespace Oru::Common::Databases::Sqlite
