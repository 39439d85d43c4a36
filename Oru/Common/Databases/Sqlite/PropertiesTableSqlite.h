#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/Property.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Oru::Common::Databases::Sqlite {

/// Named properties of a database: one row per name, with a text and a number.
class ORU_COMMON_DATABASE_EXPORT PropertiesTableSqlite : public TableSqlite<Property, Property> {
 public:
  /// @param name  the name of the stored table
  PropertiesTableSqlite(const std::string& name, DatabaseSqlite& attachedDatabase);
  ~PropertiesTableSqlite() override;

  using TableSqlite<Property, Property>::Save;
  using TableSqlite<Property, Property>::GetObject;
  using TableSqlite<Property, Property>::ReadFromCursor;

  /// Stores a property. One with an object id of -1 replaces a stored property of its name.
  bool Save(Property& obj, bool lazy) override;

  /// Reads the property of a name.
  /// @return false, with `destObj` as it was, when there is none
  bool GetObject(const std::string& name, Property& destObj);
  /// The key of the property of a name, -1 when there is none.
  int64_t GetObjectIdFromName(const std::string& name);

  const std::string& GetTableName() const override { return tableName; }
  const std::string& GetColumnName(int32_t index) const override {
    return columnNames[static_cast<std::size_t>(index)];
  }
  int32_t GetColumnsCount() const override { return static_cast<int32_t>(columnNames.size()); }
  const std::string& GetObjectIdColumnName() const override { return columnNames[Column::Key]; }
  void ReadFromCursor(const Cursor& cursor, Property& obj, bool lazy) override;
  bool BindToCursor(Cursor& cursor, Property& obj) override;
  void SetObjectId(Property& obj, int64_t objectId) override { obj.ObjectId(objectId); }
  int64_t GetObjectId(Property& obj) const override { return obj.ObjectId(); }

 private:
  // The places of the columns in `columnNames`.
  struct Column {
    enum : std::size_t { Key, Name, StringValue, IntValue };
  };
  static const std::array<std::string, 4> columnNames;

  const std::string tableName;
  PreparedStatement keyByName;
};

}  // namespace Oru::Common::Databases::Sqlite

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::Common::Databases::Property)
