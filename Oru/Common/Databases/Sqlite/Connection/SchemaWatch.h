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
/// A look takes a lock of its own outside a transaction, which costs a tenth of a small write. So such a write
/// runs without one, and its commit is refused if another connection has committed since the last look: then the
/// watch looks, and the write runs once more.
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
  /// @param canRepeat  whether the caller asks `MustRepeat` after the statement's only step: a write outside
  ///                   a transaction then needs no look
  /// @return false when SQLite fails, its reason then being in the handle
  bool IsTrue(bool isReadOnly, bool canRepeat = false);
  /// Whether a step has to be made once more, as what SQLite knew of the tables was old. It has written
  /// nothing.
  /// @param code  SQLite's result code of the step
  bool MustRepeat(int code);
  /// Whether another connection has committed since the last call; true at the first call.
  /// @return nothing when SQLite fails, its reason then being in the handle
  std::optional<bool> HasChanged();

 private:
  // Makes SQLite read the tables' definitions again if another connection has changed them since the last look.
  // The first look after a commit of another connection counts as a change: there is nothing to compare with yet.
  bool Look();
  static int OnCommit(void* self);
  // A number that changes with each commit of this connection, and of another one once this one has taken a lock.
  std::optional<unsigned> FileState();
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
  // The file's state up to which SQLite knows the tables, as far as commits outside transactions can follow it.
  std::optional<unsigned> mTrusted;
  // Whether a commit in any other state is refused.
  bool mMayRefuse = false;
  // Of the step under way: whether it has committed, and in the state that was trusted.
  bool mHasCommitted = false;
  bool mWasTrusted = false;
  // How many writes look first, as others are writing too.
  int mLooksLeft = 0;
  // The number that HasChanged saw last.
  std::optional<int64_t> mReportedVersion;
};

}  // namespace Oru::Common::Databases::Sqlite
