#pragma once

#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// Where rows of a shared table are linked: a column that holds their keys.
struct LinkColumn {
  std::string table;
  std::string column;
};

/// Deletes the rows of one shared table to which no link is left, whatever removed it. The cost depends on what
/// has changed since the last time, and not on the size of the file.
///
/// From the first time on, temporary triggers of the connection note each row that loses a link; new rows are
/// known by their keys. The first time scans the whole table. So does the next time after another connection has
/// changed the file, or this one has created one of the tables again. The notes are in temporary tables, so that
/// a rollback undoes them together with the changes.
///
/// Threads: may be used from several threads at once.
class UnusedRows {
 public:
  using DeleteRows = std::function<bool(Common::Databases::Query& query)>;

  /// @param sharedTable  its key is in the column `key`
  UnusedRows(Common::Databases::Sqlite::DatabaseSqlite& attachedDatabase, std::string sharedTable,
             LinkColumn link);

  /// Starts to note which rows lose a link, so that the first deletion knows its own.
  void Watch();

  /// Deletes the rows without a link.
  /// @param deleteAll  deletes the rows of the shared table that a query finds, for a scan of the whole table;
  ///                   gives false when the database refuses
  /// @return false, with a log entry, when the database refuses
  bool Delete(const DeleteRows& deleteAll);

 private:
  struct Changes {
    bool needFullScan = true;
    // The connection's number of the file's state, the highest key looked at the last time and the highest
    // key now.
    int64_t dataVersion = 0;
    int64_t lastKnownKey = 0;
    int64_t lastKey = 0;
    bool areNoted = false;

    bool AreNone() const { return lastKey <= lastKnownKey && !areNoted; }
  };

  bool DeleteUnlinked(const DeleteRows& deleteAll);
  bool DeleteByFullScan(const DeleteRows& deleteAll) const;
  bool BeginNoting();
  std::string NotingScript() const;
  Changes ChangesSinceLastTime();
  bool AreAllLinked();
  // Among those that were noted and those with a key above one.
  bool DeleteAmong(int64_t lastKnownKey);
  bool Forget(const Changes& changes);

  Common::Databases::Sqlite::DatabaseSqlite& database;
  const std::string table;
  const LinkColumn links;
  // Temporary tables: the keys of rows that have lost a link, and the state of the file at the last time.
  const std::string notes;
  const std::string known;
  Common::Databases::Sqlite::PreparedStatement partCount;
  Common::Databases::Sqlite::PreparedStatement dataVersion;
};

}  // namespace Oru::DataModel::MediaAssets::Database
