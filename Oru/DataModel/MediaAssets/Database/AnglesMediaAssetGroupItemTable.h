#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/GroupItemEncapsulated.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupItemTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// The angle part of group items: place and name of the angle, under the item's key.
class ORU_DATAMODEL_DATABASE_EXPORT AnglesMediaAssetGroupItemTable
    : public Common::Databases::Sqlite::ExtensionTable<AnglesMediaAssetGroupItemTable,
                                                       AnglesMediaAssetGroupItem, GroupItemEncapsulated,
                                                       MediaAssetGroupItem> {
 public:
  /// @param mediaAssetGroupItemTable  the table of the items themselves, which must outlive this one
  explicit AnglesMediaAssetGroupItemTable(MediaAssetGroupItemTable& mediaAssetGroupItemTable);
  ~AnglesMediaAssetGroupItemTable() override;

  using ExtensionTable::Delete;
  using ExtensionTable::ReadFromCursor;
  using ExtensionTable::Save;

  /// Stores an item with its angle: inserts both when its object id is -1, and updates both otherwise.
  bool Save(GroupItemEncapsulated& obj, bool lazy) override;
  /// Deletes an item whole.
  bool Delete(GroupItemEncapsulated& obj) override;

  bool BindToCursor(Common::Databases::Cursor& cursor, GroupItemEncapsulated& obj) override;
  /// Reads key and name; the place shows in the order of the group's items.
  void ReadFromCursor(const Common::Databases::Cursor& cursor, AnglesMediaAssetGroupItem& obj,
                      bool lazy) override;
  /// Does nothing: the key is that of the item's row.
  void SetObjectId(GroupItemEncapsulated&, int64_t) override {}
  int64_t GetObjectId(GroupItemEncapsulated& obj) const override { return obj.groupItem.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { RefMediaAssetGroupItem, AngleIndex, Name };
  };
  static const std::array<std::string, 3> columnNames;
  /// The join that a read selects from.
  static const std::string fromClause;

 private:
  MediaAssetGroupItemTable& mediaAssetGroupItemTable;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::AnglesMediaAssetGroupItem,
                    Oru::DataModel::MediaAssets::Database::GroupItemEncapsulated)
