#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/ChangeNotice.h"

#include <functional>
#include <memory>

namespace Oru::Common::Databases::Sqlite {

class ChangeTeller;
class DatabaseSqlite;

/// Has a function told what is committed on a connection, for as long as the listener lives.
///
///     ChangeListener listener(database, [&](const ChangeNotice& notice) { list.Refresh(notice); });
///
/// The function is called once the commit is done and the connection is free, with what one transaction
/// changed; so it may read and write through the same database. A rollback and a commit that SQLite refuses
/// tell nothing. Notices come one at a time, in the order of the commits: what is committed while one is
/// told, by the function itself or by another thread, is told behind it, in one further notice. An exception
/// that the function throws is logged, and has no effect on the commit.
///
/// Rows of the main file are told, those that cascades and triggers change included. Not told are:
///   - what other connections and processes change;
///   - temporary tables, tables of attached files, those that SQLite keeps for itself or for a full-text
///   index,
///     and tables WITHOUT ROWID;
///   - a row that a REPLACE takes away for the sake of another one, unless a foreign key or a trigger
///   concerns
///     its table, and the old key of a row whose key is changed: SQLite doesn't tell them
///     (https://sqlite.org/c3ref/update_hook.html). The library does neither;
///   - what a transaction changed before the first listener came.
///
/// While listeners live, the update, rollback and trace hooks of the connection and its authorizer are the
/// library's. Statements that run on the handle itself are told behind the next one of the library's. Without
/// a listener there is no hook, and nothing to pay for.
///
/// Threads: listeners may come and go on any thread. The function is called by the thread that committed or,
/// while another notice is told, by the thread that tells that. The destructor waits for a call on another
/// thread to return; so it must not run while its thread holds a `ConnectionLock` or anything else that the
/// function needs.
class ORU_COMMON_DATABASE_EXPORT ChangeListener {
 public:
  /// What is called with each notice.
  using Function = std::function<void(const ChangeNotice&)>;

  /// Begins to listen, on an open database or on one that is opened later; it lasts through closing and
  /// opening.
  /// @param database  may go before the listener, which is told nothing more then
  /// @param function  what to call; it must not open, close or destroy the database
  ChangeListener(DatabaseSqlite& database, Function function);
  ChangeListener(const ChangeListener&) = delete;
  ChangeListener& operator=(const ChangeListener&) = delete;
  /// Stops listening: behind it the function isn't called any more. It may run within the function.
  ~ChangeListener();

 private:
  friend class ChangeTeller;
  friend class DatabaseSqlite;
  struct Entry;

  std::shared_ptr<ChangeTeller> mTeller;
  std::shared_ptr<Entry> mEntry;
};

}  // namespace Oru::Common::Databases::Sqlite
