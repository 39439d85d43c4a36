#pragma once

#include "Oru/Common/Databases/Sqlite/Changes/ChangeListeners.h"
#include "Oru/Common/Databases/Sqlite/Connection/SchemaWatch.h"
#include "Oru/Common/Databases/Sqlite/Connection/StatementDeadline.h"
#include "Oru/Common/Databases/Sqlite/Statements/OpenCursors.h"
#include "Oru/Common/Databases/Sqlite/Statements/StatementCache.h"
#include "Oru/Common/Databases/Sqlite/Upkeep/MemoryRecovery.h"

#include <functional>
#include <memory>
#include <string>

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

/// The handle of one database, with the parts that serve it while it is open: the cached statements, the open
/// cursors, the watch over the schema, the listeners.
///
/// Threads: to be used with the connection locked, except where a part says otherwise.
class Connection {
 public:
  using LogFailure = std::function<void(const std::string&)>;

  explicit Connection(LogFailure logFailure);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  /// Takes an open handle, which stays the caller's.
  void Open(sqlite3* handle);
  /// Closes the cursors and finalises the statements. To be called before the handle is closed.
  void Close();

  bool IsOpen() const { return mHandle != nullptr; }
  sqlite3* Handle() const { return mHandle; }
  bool IsInTransaction() const;
  /// Whether the open transaction may write: it has taken the lock for that.
  bool IsWriting() const;

  StatementCache& Statements() { return *mStatements; }
  OpenCursors& Cursors() { return mCursors; }
  ChangeListeners& Listeners() { return mListeners; }
  MemoryRecovery& Recovery() { return mRecovery; }
  StatementDeadline& Deadline() { return mDeadline; }
  /// Only while the connection is open.
  SchemaWatch& Schema() { return *mSchema; }

  /// Runs statements without values.
  /// @return false when SQLite fails, its reason then being in the handle
  bool Run(const char* statements);
  /// Rolls back a transaction that no caller knows of; before the next statement if memory lacks now.
  void RollBackNowOrLater();
  /// To be called before the first step of each statement that may write.
  void NoteBegin();
  /// To be called with SQLite's code of each step that failed.
  void NoteFailure(int code);
  /// Writes an entry of a failure.
  void Log(const std::string& failure) const { mLogFailure(failure); }
  /// Logs why an operation was refused.
  /// @throws InvalidOperationException
  [[noreturn]] void Refuse(const char* operation, const std::string& reason) const;
  /// The same if the connection is closed.
  void RefuseIfClosed(const char* operation) const;

 private:
  const LogFailure mLogFailure;
  sqlite3* mHandle = nullptr;
  std::unique_ptr<StatementCache> mStatements;
  OpenCursors mCursors;
  std::unique_ptr<SchemaWatch> mSchema;
  MemoryRecovery mRecovery;
  StatementDeadline mDeadline;
  ChangeListeners mListeners;
};

}  // namespace Oru::Common::Databases::Sqlite
