#include "Oru/Common/Databases/Sqlite/PropertiesTableSqlite.h"

ORU_ENTITY_TABLE_TEMPLATES(, Oru::Common::Databases::Property)

namespace Oru::Common::Databases::Sqlite {

const std::array<std::string, 4> PropertiesTableSqlite::columnNames = {"key", "name", "stringValue",
                                                                       "intValue"};

PropertiesTableSqlite::PropertiesTableSqlite(const std::string& name, DatabaseSqlite& attachedDatabase)
    : TableSqlite(attachedDatabase),
      tableName(name),
      keyByName("SELECT key FROM " + name + " WHERE name = :name") {
  GenerateStatements();
  // Runs at every opening, on old files too.
  createStatement = "CREATE TABLE IF NOT EXISTS " + tableName +
                    " (key integer primary key autoincrement, name text not null unique, stringValue text, "
                    "intValue integer);";
}

PropertiesTableSqlite::~PropertiesTableSqlite() = default;

int64_t PropertiesTableSqlite::GetObjectIdFromName(const std::string& name) {
  return keyByName.FindKey(AttachedDatabase(), name);
}

bool PropertiesTableSqlite::Save(Property& obj, bool lazy) {
  if (obj.ObjectId() == -1) obj.ObjectId(GetObjectIdFromName(obj.GetName()));
  return TableSqlite::Save(obj, lazy);
}

bool PropertiesTableSqlite::GetObject(const std::string& name, Property& destObj) {
  QuerySqlite query;
  query.Equals(columnNames[1], name);
  ObjectCursorSqlite<Property, Property> cursor;
  OpenObjectCursor(cursor, query);
  return cursor.Next(destObj);
}

void PropertiesTableSqlite::ReadFromCursor(const Cursor& cursor, Property& obj, bool) {
  obj.ObjectId(cursor.GetInt64(columnNames[0]));
  obj.SetName(cursor.GetString(columnNames[1]));
  obj.SetStringValue(cursor.GetString(columnNames[2]));
  obj.SetIntValue(cursor.GetInt32(columnNames[3]));
}

bool PropertiesTableSqlite::BindToCursor(Cursor& cursor, Property& obj) {
  return cursor.Bind(columnNames[1], obj.GetName()) && cursor.Bind(columnNames[2], obj.GetStringValue()) &&
         cursor.Bind(columnNames[3], obj.GetIntValue());
}

}  // namespace Oru::Common::Databases::Sqlite
