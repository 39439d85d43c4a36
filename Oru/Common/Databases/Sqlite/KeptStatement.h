#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

#include <string>

namespace Oru::Common::Databases::Sqlite {

class DatabaseSqlite;

/// A statement that stays prepared between its runs.
///
/// Threads: may be run from several threads at once; each waits for the other's run.
class ORU_COMMON_DATABASE_EXPORT KeptStatement {
 public:
  /// One run: it holds the connection, and at its end it rewinds the statement.
  class ORU_COMMON_DATABASE_EXPORT Run {
   public:
    /// Prepares the statement if it isn't yet on that database. One that SQLite refuses leaves the cursor
    /// closed, with a log entry.
    Run(KeptStatement& statement, DatabaseSqlite& db);
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run();

    /// The statement, to bind and to step; valid during this run.
    CursorSqlite& Cursor() { return mCursor; }
    /// Steps the cursor.
    bool Step() { return mCursor.Step(mLock); }

   private:
    ConnectionLock mLock;
    CursorSqlite& mCursor;
  };

  /// @param text  one statement; it is prepared at its first run
  explicit KeptStatement(std::string text);

 private:
  const std::string mText;
  CursorSqlite mCursor;
};

}  // namespace Oru::Common::Databases::Sqlite
