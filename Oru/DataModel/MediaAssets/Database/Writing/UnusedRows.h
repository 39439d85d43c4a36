#pragma once

#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// Deletes the rows of one shared table that no link refers to any more, whatever unlinked them, at a cost
/// that goes by what has changed since the last time and not by the size of the file.
///
/// From the first time on, temporary triggers of the connection note each row that loses a link, and rows
/// that are new show by their keys. All is looked at the first time, and again when another connection has
/// changed the file meanwhile, or this one has made one of the tables new. The notes lie in temporary tables, so
/// that a rollback takes them back together with what they tell of. Internal to the library.
///
/// Threads: may be used from several threads at once.
class UnusedRows {
 public:
  /// @param sharedTable        the table whose rows need a link, with its key in the column `key`
  /// @param linkTable          the table of the links
  /// @param linkColumn         the column that refers to the shared table
  UnusedRows(Common::Databases::Sqlite::DatabaseSqlite& attachedDatabase, std::string sharedTable,
             std::string linkTable, std::string linkColumn);

  /// Has the connection note from now on which rows lose a link, so that the first deletion knows its own.
  void Watch();

  /// Deletes the rows without a link.
  /// @param deleteAll  deletes them by looking at all rows; gives false when the database refuses
  /// @return false, with a log entry, when the database refuses
  bool Delete(const std::function<bool()>& deleteAll);

 private:
  struct Changes {
    bool areKnown = false;
    // The connection's number of the file's state, the highest key looked at the last time and the highest
    // key now.
    int64_t dataVersion = 0;
    int64_t lastKnownKey = 0;
    int64_t lastKey = 0;
    bool areNoted = false;

    bool AreNone() const { return lastKey <= lastKnownKey && !areNoted; }
  };

  bool DeleteUnlinked(const std::function<bool()>& deleteAll);
  bool BeginNoting();
  std::string NotingScript() const;
  Changes ChangesSinceLastTime();
  bool AreAllLinked();
  // Among those that were noted and those with a key above one.
  bool DeleteAmong(int64_t lastKnownKey);
  bool Forget(const Changes& changes);

  Common::Databases::Sqlite::DatabaseSqlite& database;
  const std::string table;
  const std::string link;
  const std::string column;
  // Temporary tables: the keys of rows that have lost a link, and what was known the last time.
  const std::string notes;
  const std::string known;
  Common::Databases::Sqlite::PreparedStatement partCount;
  Common::Databases::Sqlite::PreparedStatement dataVersion;
};

}  // namespace Oru::DataModel::MediaAssets::Database
