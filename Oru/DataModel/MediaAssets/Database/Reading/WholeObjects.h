#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

// Reads the rows of a table together with what belongs to them, as one view of the file. Internal to the library.
namespace Oru::DataModel::MediaAssets::Database {

/// The object with that identifier, none if it isn't stored.
/// @param readParts  adds to an object what other tables hold of it
template <class Object, class Table, class ReadParts>
std::optional<Object> FindWhole(Common::Databases::Sqlite::DatabaseSqlite& database, Table& table,
                                const BusinessEntityModel::BaseTypes::Identifier& id, ReadParts readParts) {
  const Common::Databases::Sqlite::ConnectionLock lock(database.Parts());
  const Common::Databases::Sqlite::ReadGuard reading(database);
  const int64_t key = id.IsEmpty() ? -1 : table.GetObjectIdFromIdentifier(id);
  Object object;
  if (key == -1 || !table.GetObject(key, object)) return std::nullopt;
  readParts(object);
  return object;
}

/// All objects of a table by name.
template <class Object, class Table, class ReadParts>
std::vector<Object> AllByName(Common::Databases::Sqlite::DatabaseSqlite& database, Table& table,
                              ReadParts readParts) {
  const Common::Databases::Sqlite::ConnectionLock lock(database.Parts());
  const Common::Databases::Sqlite::ReadGuard reading(database);
  Common::Databases::Sqlite::QuerySqlite byName;
  byName.OrderByAsc(Table::columnNames[Table::Column::Name])
      .OrderByAsc(Table::columnNames[Table::Column::Key]);
  const auto cursor = table.OpenObjectCursor(byName);
  std::vector<Object> objects;
  for (Object object; cursor->Next(object); object = Object()) {
    readParts(object);
    objects.push_back(std::move(object));
  }
  return objects;
}

}  // namespace Oru::DataModel::MediaAssets::Database
