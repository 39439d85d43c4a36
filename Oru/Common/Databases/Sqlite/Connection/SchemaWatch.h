#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

class PreparedStatement;

/// Notices what other connections commit to the file of a connection, and keeps what SQLite knows of the
/// tables true. SQLite itself goes by the file's schema version alone, which each opening of a data model
/// database sets back: a change of the tables can pass under a number that looks current. Internal to the
/// access layer.
///
/// Threads: to be used with the connection locked.
class SchemaWatch {
 public:
  /// @param handle  an open connection that outlives the watch
  explicit SchemaWatch(sqlite3* handle);
  SchemaWatch(const SchemaWatch&) = delete;
  SchemaWatch& operator=(const SchemaWatch&) = delete;
  ~SchemaWatch();

  /// A number that changes with each commit of another connection, and with nothing else; none when SQLite
  /// fails, its reason then standing in the handle.
  std::optional<int64_t> DataVersion();

  /// Takes the present state as the one that SQLite is about to read. To be called once, before it reads any
  /// table's definition.
  /// @return false when SQLite fails, its reason then standing in the handle
  bool Begin();
  /// Makes SQLite read the tables' definitions again if another connection has changed them since the last
  /// look. The first look after a foreign commit counts as a change: there is nothing to compare with yet.
  /// @return false when SQLite fails, its reason then standing in the handle
  bool Look();

 private:
  std::optional<std::size_t> Fingerprint();

  sqlite3* mHandle;
  // A database in memory is nobody else's.
  const bool mIsFile;
  std::unique_ptr<PreparedStatement> mVersionSelect;
  std::unique_ptr<PreparedStatement> mSchemaSelect;
  // Those of the last look.
  std::optional<int64_t> mVersion;
  std::optional<std::size_t> mFingerprint;
};

}  // namespace Oru::Common::Databases::Sqlite
