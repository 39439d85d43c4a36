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
  query.Equals(columnNames[Column::Name], name);
  ObjectCursorSqlite<Property, Property> cursor;
  OpenObjectCursor(cursor, query);
  return cursor.Next(destObj);
}

void PropertiesTableSqlite::ReadFromCursor(const Cursor& cursor, Property& obj, bool) {
  obj.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  obj.SetName(cursor.GetString(columnNames[Column::Name]));
  obj.SetStringValue(cursor.GetString(columnNames[Column::StringValue]));
  obj.SetIntValue(cursor.GetInt32(columnNames[Column::IntValue]));
}

bool PropertiesTableSqlite::BindToCursor(Cursor& cursor, Property& obj) {
  return cursor.Bind(columnNames[Column::Name], obj.GetName()) &&
         cursor.Bind(columnNames[Column::StringValue], obj.GetStringValue()) &&
         cursor.Bind(columnNames[Column::IntValue], obj.GetIntValue());
}

}  // namespace Oru::Common::Databases::Sqlite
