#pragma once

#include "Oru/Common/Databases/Database.h"
#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/StatementText.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace Oru::Common::Databases::Sqlite {

struct ConnectionParts;
class StatementHandle;

/// A connection to one SQLite file.
///
/// The connection text is a path or a SQLite URI (`file:clips.db?mode=ro`). The URI may carry options of this
/// library:
///   - `_busy_timeout`: milliseconds that a statement waits for another connection's lock, 5000 by default;
///   - `_statement_timeout`: milliseconds, at least 1, that a statement may take until its next row or its
///     end, waits for locks among them; no limit without it. A statement that takes longer fails
///     (`interrupted`, or `database is locked`). One that writes then rolls back its transaction.
///     `CheckIntegrity` and `Backup` have no limit;
///   - `_journal_mode`: `delete`, `truncate`, `persist`, `wal`, `memory` or `off`. The last two are for files
///     that can be made again: a crash or a kill within a transaction may damage the file, and with `off`
///     each rollback does, that of a guard left without `Commit` too;
///   - `_synchronous`: `off`, `normal`, `full` or `extra`;
///   - `_cache_size`: how much of the file the connection keeps in memory: pages, or KiB as a negative number;
///   - `_mmap_size`: how many bytes of the file, from its start, are read through a memory map; 0 for none.
/// The others are SQLite's defaults if they are left out. With a VFS that isn't the default one, temporary
/// tables and journals are in memory. Foreign keys are always enforced.
///
/// `Close` closes every cursor that is still open. Cursors and tables may live on; tables work again after
/// the next `Open`.
///
/// Threads: open, close and destroy a database while no other thread uses it. All else may be called from
/// several threads at once, and `Interrupt` at any time. A transaction belongs to the connection, with all
/// that any thread writes on it meanwhile.
///
/// For the other classes of these libraries this holds, unless a class says otherwise: an object belongs to
/// one thread at a time, and different objects may be used by different threads at once, also on one
/// database.
class ORU_COMMON_DATABASE_EXPORT DatabaseSqlite : public Database {
 public:
  /// The code of every log entry of a failed statement.
  static constexpr int32_t FailureCode = static_cast<int32_t>(0xC0090118);

  /// Doesn't open the file yet.
  /// @param connection  the connection text
  /// @param log         gets a line for each failure; may be null
  DatabaseSqlite(const std::string& connection, const std::shared_ptr<std::ostream>& log);
  /// The same without a connection text, which `Open` refuses.
  explicit DatabaseSqlite(const std::shared_ptr<std::ostream>& log);
  ~DatabaseSqlite() override;

  /// Opens the file. If it doesn't exist, makes it unless the text forbids that.
  /// @throws ArgumentException without a connection text, or when it carries an unknown option or a bad
  ///         value; InvalidOperationException when the database is open; NotSupportedException, with SQLite's
  ///         text, when the file can't be opened or is no database. The database is then closed.
  void Open() override;
  bool IsOpen() const override { return mHandle != nullptr; }
  void Close() override;
  std::unique_ptr<Query> NewQuery() const override;

  /// Begins a transaction and takes the write lock of the file at once, so that none of its statements meets
  /// another writer.
  /// @throws InvalidOperationException, with a log entry, when SQLite refuses: a transaction is open already,
  ///         the file is read-only or stays locked by another writer
  void BeginTransaction() override;
  /// @throws InvalidOperationException, with a log entry, when no transaction was begun, when SQLite refuses
  ///         the commit (the transaction is then still open, for another try or a rollback), or when SQLite
  ///         had to roll the transaction back at an earlier failure and `commit` is true
  int64_t EndTransaction(bool commit) override;

  /// Runs a text of one or more statements; with blank lines and comments between them.
  /// @return false, with a log entry of SQLite's text, at the first statement that fails; a transaction that
  ///         the text itself began is then rolled back
  bool ExecuteStatement(const std::string& text);
  /// Runs one statement with its values.
  /// @return false, with a log entry of SQLite's text, when it fails
  bool ExecuteStatement(const StatementText& statement);

  /// Gets the progress of a backup: how many pages remain, and of how many. Returns false to stop it. It is
  /// called on the thread of the backup. It may use the database, but not open or close it.
  using BackupProgress = std::function<bool(int32_t remaining, int32_t total)>;

  /// Copies the database into a new file, while others read and write it. The copy first gets another name in
  /// the same folder (the name with `.part1` and so on added). It gets its own name when it is complete and
  /// on the disk. So there is a complete copy under the name, or none. After a crash the part may remain.
  ///
  /// Other connections and threads wait for about 256 pages at most. The copy holds what is committed when it
  /// ends. If another connection writes meanwhile, the copy begins again, with larger steps each time so that
  /// it ends. Within a `ReadGuard`, it copies the state of the file that the guard sees.
  /// @param file      a path in a folder that exists. The file must not exist: to replace one could mix its
  ///                  journal with the copy, or remove it while another program uses it
  /// @param progress  called after every step, the last one too; may be null. What it throws ends the backup
  ///                  and passes on
  /// @return false when `progress` stopped it; no file is left then
  /// @throws ArgumentException when the file, or a journal of that name, already exists, or the text is no
  ///         path; InvalidOperationException on a closed database or inside a transaction that writes;
  ///         NotSupportedException, with its text, when SQLite or the file system fails, or the source stays
  ///         locked longer than the busy timeout. All with a log entry
  bool Backup(const std::string& file, const BackupProgress& progress = nullptr);

  /// Looks for damage: in the pages and indexes of the file, in its foreign keys, and in each full-text index
  /// against the texts that it indexes. Reads the whole file, while other threads wait. In a file that can
  /// only be read, the full-text indexes aren't checked.
  /// @return the findings, mostly in SQLite's words, at most 100 about the pages; empty for a sound file
  /// @throws InvalidOperationException, with a log entry, when the check could not run to its end: a closed
  ///         database, a lock, a failure of the disk
  std::vector<std::string> CheckIntegrity();

  /// Makes a full-text index again from the texts that it indexes.
  /// @param table  the name of an FTS5 table, with content of its own or of another table
  /// @return false, with a log entry of SQLite's text, when it refuses; the index is then as it was
  bool RebuildFullTextIndex(const std::string& table);

  /// Writes one entry, a line, to the log stream: UTC time, source, code and message.
  void Log(const std::string& source, int32_t code, const std::string& message);
  /// Logs a failure of this connection with the code of failed statements.
  void LogFailure(const std::string& message);
  /// The message of the last log entry, even without a log; empty before the first. It says why the last
  /// failed operation gave false, or threw an exception with a fixed text.
  std::string LastFailure() const;

  /// What SQLite says of the last failed call on the connection.
  std::string ErrorText() const;
  /// SQLite's result code of that call.
  int ErrorCode() const;
  /// Whether that call failed because of what was to be stored, and not because of the file: a constraint
  /// refused a value, or a value is too long.
  bool HasRefusedValue() const;
  /// The key that the last insert was given; 0 on a closed database.
  int64_t LastInsertRowId() const;
  /// How many rows the connection has written since it was opened; 0 on a closed database. Compare two
  /// numbers to see whether it has written in between.
  int64_t WrittenRows() const;
  /// The open connection, null while closed, for calls of SQLite's own interface that this class doesn't
  /// offer. The database owns it, and its commit hook.
  sqlite3* Handle() const { return mHandle; }
  /// What the connection consists of, for the library's own sources. Callers don't have its header.
  ConnectionParts& Parts() const { return *mParts; }

  /// Begins one consistent view of the file for several reads. It is simpler to use `ReadGuard`.
  /// @return a number for `EndReading`; 0 when a transaction or another reading is already open
  /// @throws InvalidOperationException, with a log entry, on a closed database
  uint64_t BeginReading();
  /// Ends the view. Does nothing if it has already ended.
  void EndReading(uint64_t number);

  /// Whether a transaction is open, however it was begun.
  bool IsInTransaction() const;
  /// Whether a transaction is open that has written, or has taken the lock for it. What is read in it may yet be
  /// rolled back.
  bool IsWriting() const;
  /// Whether `BeginTransaction` has begun a transaction that `EndTransaction` has not ended.
  bool HasBegunTransaction() const;
  /// The number of the last transaction of `BeginTransaction`, by which a guard recognises its own.
  uint64_t TransactionNumber() const;
  /// Whether another connection has committed since the last call, or since `Open`. If so, what was read
  /// before may be out of date. Within a transaction it reports what was visible when the transaction began.
  /// An opening that writes nothing is no change.
  /// @throws InvalidOperationException, with a log entry, on a closed database, or when the file can't be
  ///         read
  bool HasChanged();

  /// Switches SQLite's memory statistics off for the whole process. Each allocation takes one lock for them,
  /// so threads wait for one another even if each has its own database. Call it once at the start of a
  /// program that reads with several threads, before any thread uses SQLite.
  /// @return false when SQLite is already in use; then nothing has changed
  static bool TuneForThreads();

  /// Ends the statements that run on the connection now: they fail (`interrupted`), and one that writes rolls
  /// back its transaction. Without a running statement nothing happens, and later statements aren't touched.
  /// May be called from any thread at any time, while another thread opens or closes the database too.
  ///
  /// SQLite looks for it between the instructions of a statement. So it ends neither a call of the file
  /// system or VFS that hangs nor a wait for a lock, which lasts as long as the busy timeout; with
  /// `_statement_timeout` such a wait ends as well. An opening may hang before SQLite runs a statement. A
  /// program that must answer calls from another thread what may hang.
  void Interrupt();

  /// Loads an extension of SQLite that brings a VFS, for files whose connection text names that (`?vfs=`). It
  /// stays loaded up to the end of the process, and the default VFS stays what it is. A second call for the
  /// same library does nothing. The library's code runs in this process: load only what you trust.
  ///
  /// Threads: may be called from any; not while another thread registers a VFS by other means.
  /// @param library  a path, or a name that the system's loader finds; the ending `.so` may be left out
  /// @throws NotSupportedException, with the reason, when the library can't be loaded or brings no new VFS
  static void LoadVfs(const std::string& library);

  /// Whether the file can only be read, by its options or by its permissions; false on a closed database.
  bool IsReadOnly() const;
  /// How many milliseconds a statement waits for another connection's lock.
  int BusyTimeout() const { return mBusyTimeout; }

 protected:
  /// Whether no file can be made in the folder of the file, as a write must make its journal there.
  bool IsInReadOnlyFolder() const;

  /// The source that log entries of this connection name.
  std::string mLogSource;

 private:
  std::shared_ptr<std::ostream> mLog;

 protected:
  /// Held during the step of an insert and the read of its key. Taken after the connection's own lock, never
  /// before it.
  std::mutex mMutex;
  /// The open connection, null while closed.
  sqlite3* mHandle = nullptr;

 private:
  // For mMutex.
  template <class T, class U>
  friend class TableSqlite;

  void Fail(const std::string& message);
  void KeepLastFailure(const std::string& message) noexcept;
  void KeepTemporaryFilesLocal();
  bool BeginWatch();
  bool Configure(const char* pragma, const std::string& value);
  bool RunAll(std::string_view text);
  bool RunFirst(std::string_view& text, const std::vector<StatementValue>& values);
  std::string RunToEnd(StatementHandle& statement);

  mutable std::mutex mLastFailureMutex;
  std::string mLastFailure;
  bool mHasConnection = false;
  int mBusyTimeout = 0;
  std::unique_ptr<ConnectionParts> mParts;
};

}  // namespace Oru::Common::Databases::Sqlite
