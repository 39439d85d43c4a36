#include "Oru/DataModel/MediaAssets/Database/UnusedRows.h"

#include "Oru/Common/Databases/Sqlite/KeyLookup.h"

#include <utility>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;

namespace {

std::string Number(int64_t value) {
  return std::to_string(value);
}

}  // namespace

UnusedRows::UnusedRows(Sqlite::DatabaseSqlite& attachedDatabase, std::string sharedTable,
                       std::string linkTable, std::string linkColumn)
    : database(attachedDatabase),
      table(std::move(sharedTable)),
      link(std::move(linkTable)),
      column(std::move(linkColumn)),
      notes("temp.Unlinked" + table),
      known("temp.Known" + table) {}

bool UnusedRows::BeginNoting() {
  const bool isNoting =
      Sqlite::FindKey(database, "SELECT count(*) FROM temp.sqlite_master WHERE name = :name",
                      "Known" + table) > 0;
  if (isNoting) return true;
  const std::string note =
      " BEGIN INSERT INTO Unlinked" + table + "(key) VALUES (old." + column + "); END;\n";
  const std::string ifNew = "IF NOT EXISTS ";
  return database.ExecuteStatement(
      "SAVEPOINT noting;\n"
      "CREATE TABLE " +
      ifNew + notes +
      " (note integer primary key autoincrement, key integer);\n"
      "CREATE TEMP TRIGGER " +
      ifNew + "Unlinked" + table + "ByDelete AFTER DELETE ON main." + link + note + "CREATE TEMP TRIGGER " +
      ifNew + "Unlinked" + table + "ByUpdate AFTER UPDATE OF " + column + " ON main." + link + note +
      "CREATE TABLE " + known +
      " (dataVersion integer, lastKey integer);\n"
      "INSERT INTO " +
      known +
      " VALUES (-1, -1);\n"
      "RELEASE noting;\n");
}

UnusedRows::Changes UnusedRows::ChangesSinceLastTime() {
  Changes changes;
  // Ahead of all else: what another connection commits from here on shows the next time.
  // https://sqlite.org/pragma.html#pragma_data_version
  changes.dataVersion = Sqlite::FindKey(database, "PRAGMA data_version");
  Sqlite::CursorSqlite cursor(database, "SELECT (SELECT ifnull(max(lastKey), -1) FROM " + known +
                                            " WHERE dataVersion = " + Number(changes.dataVersion) +
                                            "), (SELECT ifnull(max(key), 0) FROM " + table +
                                            "), (SELECT ifnull(max(note), 0) FROM " + notes + ")");
  cursor.Step();
  changes.lastKnownKey = cursor.GetInt64(0);
  changes.lastKey = cursor.GetInt64(1);
  changes.lastNote = cursor.GetInt64(2);
  changes.areKnown = changes.lastKnownKey >= 0;
  return changes;
}

bool UnusedRows::DeleteAmong(const Changes& changes) {
  return database.ExecuteStatement("DELETE FROM " + table + " WHERE key IN (SELECT key FROM " + notes +
                                   " WHERE note <= " + Number(changes.lastNote) +
                                   " UNION ALL SELECT key FROM " + table + " WHERE key > " +
                                   Number(changes.lastKnownKey) + ") AND NOT EXISTS (SELECT 1 FROM " + link +
                                   " WHERE " + column + " = " + table + ".key)");
}

bool UnusedRows::Forget(const Changes& changes) {
  // Notes that came in meanwhile stay for the next time.
  return database.ExecuteStatement("DELETE FROM " + notes + " WHERE note <= " + Number(changes.lastNote)) &&
         database.ExecuteStatement("UPDATE " + known + " SET dataVersion = " + Number(changes.dataVersion) +
                                   ", lastKey = " + Number(changes.lastKey));
}

}  // namespace Oru::DataModel::MediaAssets::Database
