#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

class StatementHandle;

/// Notices what other connections commit to the file of a connection, and keeps what SQLite knows of the
/// tables true. SQLite itself looks at the file's schema version alone, and each opening of a data model database
/// resets that version: so the tables can change under a number that looks current.
///
/// Threads: to be used with the connection locked.
class SchemaWatch {
 public:
  /// @param handle  an open connection that outlives the watch
  explicit SchemaWatch(sqlite3* handle);
  SchemaWatch(const SchemaWatch&) = delete;
  SchemaWatch& operator=(const SchemaWatch&) = delete;
  ~SchemaWatch();

  /// Takes the present state as the one that SQLite is about to read. To be called once, before it reads any
  /// table's definition.
  /// @return false when SQLite fails, its reason then being in the handle
  bool Begin();
  /// To be called when a transaction begins: its first statement looks at the tables again.
  void TransactionBegins() { mHasLooked = false; }
  /// Whether what SQLite knows of the tables may be trusted for a statement. Looks at them at the first
  /// statement of a transaction and before each write outside one.
  /// @return false when SQLite fails, its reason then being in the handle
  bool IsTrue(bool isReadOnly);
  /// Whether another connection has committed since the last call; true at the first call.
  /// @return nothing when SQLite fails, its reason then being in the handle
  std::optional<bool> HasChanged();

 private:
  // Makes SQLite read the tables' definitions again if another connection has changed them since the last look.
  // The first look after a commit of another connection counts as a change: there is nothing to compare with yet.
  bool Look();
  // A number that changes with each commit of another connection, and with nothing else; none when SQLite fails.
  std::optional<int64_t> DataVersion();
  std::optional<std::size_t> Fingerprint();

  sqlite3* mHandle;
  // A database in memory belongs to one connection.
  const bool mIsFile;
  std::unique_ptr<StatementHandle> mVersionSelect;
  std::unique_ptr<StatementHandle> mSchemaSelect;
  // Those of the last look.
  std::optional<int64_t> mVersion;
  std::optional<std::size_t> mFingerprint;
  // Whether the open transaction has looked at the tables' definitions, which can't change within it.
  bool mHasLooked = false;
  // The number that HasChanged saw last.
  std::optional<int64_t> mReportedVersion;
};

}  // namespace Oru::Common::Databases::Sqlite
