#pragma once

#include "Oru/Common/Databases/Sqlite/BindValues.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/ObjectCursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/ViewSqlite.h"

#include <memory>
#include <string>
#include <utility>

namespace Oru::Common::Databases::Sqlite {

/// A select text of a view, with parameters, whose cursor stays prepared between its runs.
/// @tparam T  what the view reads
///
/// Threads: may be run from several threads at once; each waits for the other's run.
template <class T>
class KeptSelect {
 public:
  /// One run: it holds the connection, and at its end it rewinds the statement. A run within a run gets a
  /// cursor of its own.
  class Run {
   public:
    /// Opens a cursor on the rows that the text finds in the view for values of its parameters, in their
    /// order. A text that SQLite refuses leaves the cursor closed, with a log entry.
    /// @throws InvalidOperationException, with a log entry, when SQLite refuses a value
    template <class... Values>
    Run(KeptSelect& select, ViewSqlite<T>& view, const Values&... values)
        : Run(select, static_cast<DatabaseSqlite&>(view.GetDatabase())) {
      mCursor->AttachToTable(view);
      BindValues(*mCursor, values...);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() {
      mCursor->Reset();
      mSelect.mIdle = std::move(mCursor);
    }

    /// The cursor over the rows, valid during this run.
    ObjectCursorSqlite<T, T>& Cursor() { return *mCursor; }

   private:
    Run(KeptSelect& select, DatabaseSqlite& db)
        : mLock(db), mSelect(select), mCursor(std::move(select.mIdle)) {
      if (!mCursor) mCursor = std::make_unique<ObjectCursorSqlite<T, T>>();
      if (!mCursor->IsOpenedOn(db)) mCursor->Reset(db, select.mText, std::string(), true);
    }

    ConnectionLock mLock;
    KeptSelect& mSelect;
    std::unique_ptr<ObjectCursorSqlite<T, T>> mCursor;
  };

  /// @param text  one select statement of the view; it is prepared at its first run
  explicit KeptSelect(std::string text = {}) : mText(std::move(text)) {}

  /// Empty for a select that was given none.
  const std::string& Text() const { return mText; }

 private:
  std::string mText;
  // While no run has it.
  std::unique_ptr<ObjectCursorSqlite<T, T>> mIdle;
};

}  // namespace Oru::Common::Databases::Sqlite
