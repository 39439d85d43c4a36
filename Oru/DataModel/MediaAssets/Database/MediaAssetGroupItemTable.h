#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/GroupItemEncapsulated.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroupItem.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

class AnglesMediaAssetGroupItemTable;
class MediaAssetTable;

/// The items of groups: which assets belong to which group. Those of a group are written as a whole at each
/// save of the group, each with its angle row.
class ORU_DATAMODEL_DATABASE_EXPORT MediaAssetGroupItemTable
    : public Common::Databases::Sqlite::DeclaredTable<MediaAssetGroupItemTable, MediaAssetGroupItem,
                                                      GroupItemEncapsulated> {
 public:
  /// @param mediaAssetTable  finds the assets of items; must outlive this table
  explicit MediaAssetGroupItemTable(MediaAssetTable& mediaAssetTable);
  ~MediaAssetGroupItemTable() override;

  using DeclaredTable::ReadFromCursor;

  /// Adds items to a group, in the order of the array. They get new object ids. A plain item is stored with
  /// an empty angle name.
  /// @return false, with a log entry, at the first item whose asset isn't stored or that is refused; those
  ///         before it are written
  bool Write(const MediaAssetGroupItemArray& items, int64_t fkMediaAssetGroup);

  /// Sets the asset of an item that has its object id, with the asset's own columns.
  void ReadMediaAsset(MediaAssetGroupItem& groupItem);
  /// Sets the identifier of that asset only; an empty one when the item isn't stored.
  void ReadMediaAssetLazy(MediaAssetGroupItem& groupItem);

  AnglesMediaAssetGroupItemTable& GetAnglesMediaAssetGroupItemTable() {
    return *anglesMediaAssetGroupItemTable;
  }

  bool BindToCursor(Common::Databases::Cursor& cursor, GroupItemEncapsulated& obj) override;
  /// Reads the key; the asset comes from the two operations above.
  void ReadFromCursor(const Common::Databases::Cursor& cursor, MediaAssetGroupItem& obj, bool lazy) override;
  void SetObjectId(GroupItemEncapsulated& obj, int64_t objectId) override;
  int64_t GetObjectId(GroupItemEncapsulated& obj) const override { return obj.groupItem.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { Key, RefMediaAssetGroup, RefMediaAsset };
  };
  static const std::array<std::string, 3> columnNames;

 private:
  MediaAssetTable& mediaAssetTable;
  std::unique_ptr<AnglesMediaAssetGroupItemTable> anglesMediaAssetGroupItemTable;
  Common::Databases::Sqlite::PreparedStatement assetOfItem;
  Common::Databases::Sqlite::PreparedStatement lazyAsset;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::MediaAssetGroupItem,
                    Oru::DataModel::MediaAssets::Database::GroupItemEncapsulated)
