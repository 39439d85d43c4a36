#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesDapOperatorMetadataTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// Multi-angle groups: groups that have a row here too, and with it an operator identity if they are given
/// one. A cursor of this table sees no other groups.
class ORU_DATAMODEL_DATABASE_EXPORT AnglesMediaAssetGroupTable
    : public Common::Databases::Sqlite::ExtensionTable<AnglesMediaAssetGroupTable, AnglesMediaAssetGroup,
                                                       AnglesMediaAssetGroup, MediaAssetGroup> {
 public:
  /// @param mediaAssetGroupTable  the table of all groups, which must outlive this one
  explicit AnglesMediaAssetGroupTable(MediaAssetGroupTable& mediaAssetGroupTable);
  ~AnglesMediaAssetGroupTable() override;

  using ExtensionTable::Delete;
  using ExtensionTable::ReadFromCursor;
  using ExtensionTable::Save;

  /// Stores a group with its items as `MediaAssetGroupTable` does, makes it a multi-angle group if it isn't
  /// one, and stores its operator identity if it has one; an absent identity leaves the stored one alone.
  /// @return false, with a log entry, when the database refuses, or at an item whose asset isn't stored
  /// @throws std::invalid_argument at a page, bank or clip of the identity that isn't between 0 and 255, with
  ///         the group stored; ObjectClosedException, with a log entry, when the database is closed or the
  ///         file has no tables
  bool Save(AnglesMediaAssetGroup& obj, bool lazy) override;
  /// Delete a group whole. That there is none is no failure.
  bool Delete(AnglesMediaAssetGroup& obj) override;
  bool Delete(const BusinessEntityModel::BaseTypes::Identifier& groupId);

  /// Adds the stored operator identity of a group that has its object id, or fills the one that it holds.
  /// @throws std::bad_cast when the group holds another class of profile under that name
  void ReadDapOperatorProfileTable(AnglesMediaAssetGroup& obj);

  /// The key of the multi-angle group with that identifier, -1 when there is none.
  int64_t GetObjectIdFromIdentifier(const BusinessEntityModel::BaseTypes::Identifier& id) const;

  AnglesDapOperatorMetadataTable& GetDapOperatorProfileTable() { return dapOperatorProfileTable; }

  bool BindToCursor(Common::Databases::Cursor& cursor, AnglesMediaAssetGroup& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, AnglesMediaAssetGroup& obj,
                      bool lazy) override;
  /// Does nothing: the key is that of the group's row.
  void SetObjectId(AnglesMediaAssetGroup&, int64_t) override {}
  int64_t GetObjectId(AnglesMediaAssetGroup& obj) const override { return obj.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { RefMediaAssetGroup };
  };
  static const std::array<std::string, 1> columnNames;
  /// The join that a read selects from.
  static const std::string fromClause;
  /// Finds the key of the row with an identifier, which the statement that is run takes as a parameter after
  /// it.
  static const std::string objectIdFromIdentifierQuery;

 private:
  AnglesDapOperatorMetadataTable dapOperatorProfileTable;
  MediaAssetGroupTable& mediaAssetGroupTable;
  mutable Common::Databases::Sqlite::PreparedStatement keyByIdentifier;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::AnglesMediaAssetGroup)
