#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Sqlite/ChangeNotice.h"

#include <memory>

namespace Oru::Common::Databases::Sqlite {

class ChangeNotifier;
class DatabaseSqlite;
struct ListenerEntry;

/// Calls a function with what is committed on a connection, for as long as the listener lives.
///
///     ChangeListener listener(database, [&](const ChangeNotice& notice) { list.Refresh(notice); });
///
/// The function is called after the commit, when the connection is free, with what one transaction changed.
/// So it may read and write through the same database. It isn't called for a rollback or for a commit that
/// SQLite refuses. Calls come one at a time, in the order of the commits. What is committed during a call, by
/// the function itself or by another thread, is reported in one further call. An exception that the function
/// throws is logged, and has no effect on the commit.
///
/// A notice names rows of the main file, including those that cascades and triggers change. It doesn't
/// report:
///   - what other connections and processes change;
///   - temporary tables, tables of attached files, tables that SQLite keeps for itself or for a full-text
///     index, and tables WITHOUT ROWID;
///   - a row that a REPLACE removes for another one, unless a foreign key or a trigger concerns its table,
///     and the old key of a row whose key is changed: SQLite doesn't report these
///     (https://sqlite.org/c3ref/update_hook.html). The library itself does neither;
///   - what a transaction changed before the first listener came.
///
/// While listeners live, the library uses the update, rollback and trace hooks of the connection and its
/// authorizer. Changes by statements that run on the handle itself are reported after the next statement of
/// the library. Without a listener there is no hook, and no cost.
///
/// Threads: listeners may come and go on any thread. The function is called on the thread that committed, or
/// on a thread that is already calling listeners. The destructor waits until a call on another thread has
/// returned; so it must not run while its thread holds a `ConnectionLock` or anything else that the function
/// needs.
class ORU_COMMON_DATABASE_EXPORT ChangeListener {
 public:
  /// What is called with each notice.
  using Function = ChangeNotice::Callback;

  /// Begins to listen, on an open database or on one that is opened later. It continues when the database is
  /// closed and opened again.
  /// @param database  may be destroyed before the listener, which is then not called any more
  /// @param function  what to call; it must not open, close or destroy the database
  ChangeListener(DatabaseSqlite& database, Function function);
  ChangeListener(const ChangeListener&) = delete;
  ChangeListener& operator=(const ChangeListener&) = delete;
  /// Stops listening: afterwards the function isn't called any more. It may run within the function.
  ~ChangeListener();

 private:
  std::shared_ptr<ListenerEntry> mEntry;
  std::shared_ptr<ChangeNotifier> mNotifier;
};

}  // namespace Oru::Common::Databases::Sqlite
