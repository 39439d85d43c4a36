#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/DataModel/MediaAssets/Database/EssenceEncapsulated.h"
#include "Oru/DataModel/MediaAssets/Database/EssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// What the tables of the essence kinds share: the row of a kind goes with the row that all kinds have in
/// `EssenceTable`, under the same key.
template <class Derived>
class ORU_DATAMODEL_DATABASE_EXPORT EssenceKindTable
    : public Common::Databases::Sqlite::ExtensionTable<
          Derived, BusinessEntityModel::BaseTypes::PersistentObject, EssenceEncapsulated,
          BusinessEntityModel::BaseTypes::PersistentObject> {
  using Base =
      Common::Databases::Sqlite::ExtensionTable<Derived, BusinessEntityModel::BaseTypes::PersistentObject,
                                                EssenceEncapsulated,
                                                BusinessEntityModel::BaseTypes::PersistentObject>;

 public:
  using Base::Delete;
  using Base::ReadFromCursor;
  using Base::Save;

  /// Deletes the essence whole: its row of all kinds, and by cascade that of its kind and its metadata.
  bool Delete(EssenceEncapsulated& obj) override { return essenceTable.Delete(obj); }

  /// Stores the row of all kinds with the metadata, and the row of the kind.
  /// An object id of -1 is looked up by stream and number. An essence of another kind that is stored under
  /// that number keeps its kind.
  bool Save(EssenceEncapsulated& obj, bool lazy) override {
    // Whether the kind's row must be inserted shows only before the save of the other gives the essence its
    // key.
    if (GetObjectId(obj) == -1 && !obj.isAbsent) {
      SetObjectId(obj, essenceTable.GetObjectIdFromEssenceNr(obj.fk, obj.essence.Nr()));
    }
    const bool isNew = GetObjectId(obj) == -1;
    EssenceEncapsulated row = obj;
    row.isAbsent = isNew;
    if (!essenceTable.Save(row, lazy)) return false;
    return isNew ? this->Insert(obj, lazy) : this->Update(obj, lazy);
  }

  /// @param obj  the base of an essence of the kind
  void ReadFromCursor(const Common::Databases::Cursor& cursor,
                      BusinessEntityModel::BaseTypes::PersistentObject& obj, bool lazy) override {
    essenceTable.ReadFromCursor(cursor, obj, lazy);
  }
  bool BindToCursor(Common::Databases::Cursor& cursor, EssenceEncapsulated& obj) override {
    return cursor.Bind(Derived::columnNames[Derived::Column::RefEssence], GetObjectId(obj));
  }
  void SetObjectId(EssenceEncapsulated& obj, int64_t objectId) override {
    essenceTable.SetObjectId(obj, objectId);
  }
  int64_t GetObjectId(EssenceEncapsulated& obj) const override { return obj.essence.ObjectId(); }

 protected:
  /// @param table  the table of all essences, which must outlive this one
  explicit EssenceKindTable(EssenceTable& table)
      : Base(static_cast<Common::Databases::Sqlite::DatabaseSqlite&>(table.GetDatabase()), table),
        essenceTable(table) {}

 private:
  EssenceTable& essenceTable;
};

}  // namespace Oru::DataModel::MediaAssets::Database
