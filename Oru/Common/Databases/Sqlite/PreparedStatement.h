#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// A statement that stays prepared between its runs.
///
/// A run binds values to the parameters in their order, so that they are data whatever they hold. It throws
/// ObjectClosedException when SQLite refuses the text, and InvalidOperationException when it refuses a value
/// or a step fails; both with a log entry.
///
/// Threads: may be run from several threads at once; each waits for the other's run.
class ORU_COMMON_DATABASE_EXPORT PreparedStatement {
 public:
  /// One run: it holds the connection, and at its end it rewinds the statement. A run within a run of the
  /// same statement has a cursor of its own.
  class ORU_COMMON_DATABASE_EXPORT Run {
   public:
    /// Locks the connection and binds the values to the parameters, in order.
    template <class... Values>
    Run(PreparedStatement& statement, DatabaseSqlite& db, const Values&... values)
        : Run(statement, db, Bare()) {
      int32_t number = 0;
      // A closed cursor is left to the step, which reports it.
      const bool isBound = !mCursor->IsOpened() || (mCursor->Bind(++number, values) && ...);
      if (!isBound) throw InvalidOperationException();
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run();

    /// Steps to the next row; false after the last one.
    bool Step() { return mCursor->Step(mLock); }
    /// The cursor on the current row, valid during this run.
    const CursorSqlite& Row() const { return *mCursor; }

   private:
    struct Bare {};
    // Complete before values are bound, so that a value that is refused rewinds the statement too.
    Run(PreparedStatement& statement, DatabaseSqlite& db, Bare);

    ConnectionLock mLock;
    PreparedStatement& mStatement;
    std::unique_ptr<CursorSqlite> mCursor;
  };

  /// @param text  one statement; it is prepared at its first run
  explicit PreparedStatement(std::string text = {});

  /// Runs a select for a key: the first column of its first row, -1 if it finds none.
  template <class... Values>
  int64_t FindKey(DatabaseSqlite& db, const Values&... values) {
    Run run(*this, db, values...);
    return run.Step() ? run.Row().GetInt64(0) : -1;
  }

  /// Runs a statement that changes rows.
  /// @return false, with a log entry, when the database refuses
  template <class... Values>
  bool Execute(DatabaseSqlite& db, const Values&... values) {
    try {
      Run run(*this, db, values...);
      run.Step();
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }

 private:
  std::string mText;
  // While no run has it.
  std::unique_ptr<CursorSqlite> mCursor;
};

}  // namespace Oru::Common::Databases::Sqlite
