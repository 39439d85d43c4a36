#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupItemTable.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

class AnglesMediaAssetGroupTable;
class MediaAssetTable;

/// Groups of assets, with their items. What makes a group a multi-angle group is a row in
/// `AnglesMediaAssetGroupTable`; its type text plays no part.
///
/// Deletion is by row: items, angle rows and operator identity are deleted by cascade.
class ORU_DATAMODEL_DATABASE_EXPORT MediaAssetGroupTable
    : public Common::Databases::Sqlite::DeclaredTable<MediaAssetGroupTable, MediaAssetGroup,
                                                      MediaAssetGroup> {
 public:
  /// @param mediaAssetTable  finds the assets of items; must outlive this table
  explicit MediaAssetGroupTable(MediaAssetTable& mediaAssetTable);
  ~MediaAssetGroupTable() override;

  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Stores a group and replaces its items, which get new object ids. An object id of -1 is looked up by the
  /// identifier. The metadata aren't stored here.
  /// @return false when a row is refused, with a log entry, or an item's asset isn't stored; the group's row
  ///         and the items before that one are written then
  bool Save(MediaAssetGroup& obj, bool lazy) override;

  /// Appends the items of a group that has its object id, as `AnglesMediaAssetGroupItem`, in the order of the
  /// last save.
  /// @param lazy  whether items get only the identifier of their asset; otherwise also the asset with its own
  /// columns
  void ReadAnglesMediaAssetGroupItems(MediaAssetGroup& obj, bool lazy);

  /// The key of the group with that identifier, -1 when there is none.
  int64_t GetObjectIdFromIdentifier(const BusinessEntityModel::BaseTypes::Identifier& id) const;

  AnglesMediaAssetGroupTable& GetAnglesMediaAssetGroupTable() { return *anglesMediaAssetGroupTable; }
  MediaAssetGroupItemTable& GetMediaAssetGroupItemTable() { return *mediaAssetGroupItemTable; }

  bool BindToCursor(Common::Databases::Cursor& cursor, MediaAssetGroup& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, MediaAssetGroup& obj, bool lazy) override;
  void SetObjectId(MediaAssetGroup& obj, int64_t objectId) override { obj.ObjectId(objectId); }
  int64_t GetObjectId(MediaAssetGroup& obj) const override { return obj.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { Key, Id, Type, Name };
  };
  static const std::array<std::string, 4> columnNames;
  /// Finds the key of the row with an identifier, which the statement that is run takes as a parameter after
  /// it.
  static const std::string objectIdFromIdentifierQuery;

 private:
  std::unique_ptr<AnglesMediaAssetGroupTable> anglesMediaAssetGroupTable;
  std::unique_ptr<MediaAssetGroupItemTable> mediaAssetGroupItemTable;
  Common::Databases::Sqlite::PreparedStatement itemsOfGroup;
  mutable Common::Databases::Sqlite::PreparedStatement keyByIdentifier;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::MediaAssetGroup)
