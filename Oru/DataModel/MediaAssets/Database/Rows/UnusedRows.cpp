#include "Oru/DataModel/MediaAssets/Database/Rows/UnusedRows.h"

#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"

#include <exception>
#include <utility>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;

namespace {

std::string Number(int64_t value) {
  return std::to_string(value);
}

}  // namespace

UnusedRows::UnusedRows(Sqlite::DatabaseSqlite& attachedDatabase, std::string sharedTable, LinkColumn link)
    : database(attachedDatabase),
      table(std::move(sharedTable)),
      links(std::move(link)),
      notes("Unlinked" + table),
      known("Known" + table),
      // A table that is dropped takes its triggers along, and one that is renamed keeps them:
      // https://sqlite.org/lang_altertable.html
      partCount(
          "SELECT count(*) FROM temp.sqlite_master WHERE name IN (:notes, :known) OR name GLOB :notes || "
          "'By*Of' || tbl_name"),
      dataVersion("PRAGMA data_version") {}

bool UnusedRows::Delete(const DeleteRows& deleteAll) {
  if (!database.IsOpen()) return DeleteByFullScan(deleteAll);
  // Other threads may note, begin and roll back on the same connection. What is read, deleted and forgotten must
  // be the same notes.
  const Sqlite::ConnectionLock lock(database.Parts());
  try {
    return DeleteUnlinked(deleteAll);
  } catch (const std::exception&) {
    // A look-up that was refused has logged why.
    return false;
  }
}

void UnusedRows::Watch() {
  if (!database.IsOpen()) return;
  const Sqlite::ConnectionLock lock(database.Parts());
  try {
    BeginNoting();
  } catch (const std::exception&) {
    // Without notes, the next deletion scans the whole table.
  }
}

bool UnusedRows::DeleteUnlinked(const DeleteRows& deleteAll) {
  if (!BeginNoting()) return DeleteByFullScan(deleteAll);
  const Changes changes = ChangesSinceLastTime();
  if (!changes.needFullScan) {
    return changes.AreNone() || (DeleteAmong(changes.lastKnownKey) && Forget(changes));
  }
  // What was noted goes first: usually there is nothing else, and a count shows that quickly.
  return DeleteAmong(changes.lastKey) && (AreAllLinked() || DeleteByFullScan(deleteAll)) && Forget(changes);
}

bool UnusedRows::DeleteByFullScan(const DeleteRows& deleteAll) const {
  Sqlite::QuerySqlite linked;
  linked.In("key", links.table, links.column);
  Sqlite::QuerySqlite unlinked;
  unlinked.Not(linked);
  return deleteAll(unlinked);
}

bool UnusedRows::BeginNoting() {
  constexpr int64_t tablesAndTriggers = 2 + 4;
  const bool isNoting = partCount.FindKey(database, notes, known) == tablesAndTriggers;
  if (isNoting || database.ExecuteStatement(NotingScript())) return true;
  // Half of it would be worse than nothing: a trigger without its table fails whatever fires it.
  if (database.IsInTransaction()) database.ExecuteStatement("ROLLBACK TO noting; RELEASE noting");
  return false;
}

std::string UnusedRows::NotingScript() const {
  const auto trigger = [this](const std::string& event, const std::string& onTable, const std::string& key,
                              const std::string& condition) {
    const std::string name = notes + "By" + event.substr(0, event.find(' ')) + "Of" + onTable;
    // Noted once, or the notes would grow with each save of a group for as long as nothing is deleted.
    return "DROP TRIGGER IF EXISTS temp." + name + ";\nCREATE TEMP TRIGGER " + name + " AFTER " + event +
           " ON main." + onTable + condition + " BEGIN INSERT INTO " + notes + "(key) SELECT " + key +
           " WHERE NOT EXISTS (SELECT 1 FROM " + notes + " WHERE key = " + key + "); END;\n";
  };
  const std::string isLowKey = " WHEN new.key <= (SELECT lastKey FROM " + known + ")";
  // Without recursive triggers a link that a REPLACE takes away would go unnoticed:
  // https://sqlite.org/lang_conflict.html
  return "PRAGMA recursive_triggers = ON;\n"
         "SAVEPOINT noting;\n"
         "DROP TABLE IF EXISTS temp." +
         notes + ";\nCREATE TEMP TABLE " + notes + " (key integer primary key);\n" +
         trigger("DELETE", links.table, "old." + links.column, "") +
         trigger("UPDATE OF " + links.column, links.table, "old." + links.column, "") +
         trigger("INSERT", table, "new.key", isLowKey) +
         trigger("UPDATE OF key", table, "new.key", isLowKey) +
         // Not by an INSERT, whose key another thread's insert could take for its own.
         "DROP TABLE IF EXISTS temp." + known + ";\nCREATE TEMP TABLE " + known +
         " AS SELECT -1 AS dataVersion, -1 AS lastKey;\n"
         "RELEASE noting;\n";
}

UnusedRows::Changes UnusedRows::ChangesSinceLastTime() {
  Changes changes;
  // Read first: what another connection commits from here on shows the next time.
  // https://sqlite.org/pragma.html#pragma_data_version
  changes.dataVersion = dataVersion.FindKey(database);
  Sqlite::CursorSqlite cursor(database, "SELECT (SELECT ifnull(max(lastKey), -1) FROM temp." + known +
                                            " WHERE dataVersion = " + Number(changes.dataVersion) +
                                            "), (SELECT ifnull(max(key), 0) FROM " + table +
                                            "), EXISTS (SELECT 1 FROM temp." + notes + ")");
  cursor.Step();
  changes.lastKnownKey = cursor.GetInt64(0);
  changes.lastKey = cursor.GetInt64(1);
  changes.areNoted = cursor.GetBoolean(2);
  changes.needFullScan = changes.lastKnownKey < 0;
  return changes;
}

// Every link refers to a row, as foreign keys are enforced: when as many rows are linked as there are, all
// are. Counting them takes a quarter of the time of looking for each row's link. There are no more rows than
// numbers from the lowest key to the highest, so the rows are counted only where numbers are missing.
bool UnusedRows::AreAllLinked() {
  Sqlite::CursorSqlite cursor(database, "SELECT CASE WHEN linked = (SELECT max(key) FROM " + table +
                                            ") - (SELECT min(key) FROM " + table +
                                            ") + 1 THEN 1 ELSE linked = (SELECT count(*) FROM " + table +
                                            ") END FROM (SELECT count(DISTINCT " + links.column +
                                            ") AS linked FROM " + links.table + ")");
  return cursor.Step() && cursor.GetBoolean(0);
}

bool UnusedRows::DeleteAmong(int64_t lastKnownKey) {
  return database.ExecuteStatement("DELETE FROM " + table + " WHERE key IN (SELECT key FROM temp." + notes +
                                   " UNION ALL SELECT key FROM " + table + " WHERE key > " +
                                   Number(lastKnownKey) + ") AND NOT EXISTS (SELECT 1 FROM " + links.table +
                                   " WHERE " + links.column + " = " + table + ".key)");
}

bool UnusedRows::Forget(const Changes& changes) {
  return database.ExecuteStatement("DELETE FROM temp." + notes) &&
         database.ExecuteStatement("UPDATE temp." + known + " SET dataVersion = " +
                                   Number(changes.dataVersion) + ", lastKey = " + Number(changes.lastKey));
}

}  // namespace Oru::DataModel::MediaAssets::Database
