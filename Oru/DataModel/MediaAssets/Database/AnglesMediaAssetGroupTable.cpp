#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"

#include <memory>

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::AnglesMediaAssetGroup)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;

const std::string AnglesMediaAssetGroupTable::tableName = "AnglesMediaAssetGroup";
const std::array<std::string, 1> AnglesMediaAssetGroupTable::columnNames = {"refMediaAssetGroup"};
const std::string AnglesMediaAssetGroupTable::fromClause =
    "MediaAssetGroup JOIN AnglesMediaAssetGroup ON MediaAssetGroup.key == "
    "AnglesMediaAssetGroup.refMediaAssetGroup";
const std::string AnglesMediaAssetGroupTable::objectIdFromIdentifierQuery =
    "SELECT refMediaAssetGroup FROM AnglesMediaAssetGroup JOIN  MediaAssetGroup ON MediaAssetGroup.key == "
    "AnglesMediaAssetGroup.refMediaAssetGroup WHERE MediaAssetGroup.Id = ";

AnglesMediaAssetGroupTable::AnglesMediaAssetGroupTable(MediaAssetGroupTable& table)
    : ExtensionTable(static_cast<Sqlite::DatabaseSqlite&>(table.GetDatabase()), table),
      dapOperatorProfileTable(AttachedDatabase()),
      mediaAssetGroupTable(table),
      keyByIdentifier(objectIdFromIdentifierQuery + ":id") {
  GenerateStatements();
}

AnglesMediaAssetGroupTable::~AnglesMediaAssetGroupTable() = default;

bool AnglesMediaAssetGroupTable::Save(AnglesMediaAssetGroup& obj, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    if (!mediaAssetGroupTable.Save(obj, lazy)) return false;
    // Whether the group is a multi-angle one already doesn't follow from its object id: it may have been stored
    // as a plain group.
    const bool isStored = Exists(obj.ObjectId()) ? Update(obj, lazy) : Insert(obj, lazy);
    return isStored && dapOperatorProfileTable.Write(obj.Metadata(), obj.ObjectId());
  });
}

bool AnglesMediaAssetGroupTable::Delete(AnglesMediaAssetGroup& obj) {
  return mediaAssetGroupTable.Delete(obj);
}

bool AnglesMediaAssetGroupTable::Delete(const Identifier& groupId) {
  Sqlite::QuerySqlite query;
  query.Equals(MediaAssetGroupTable::columnNames[MediaAssetGroupTable::Column::Id], groupId.Value());
  return mediaAssetGroupTable.Delete(query);
}

void AnglesMediaAssetGroupTable::ReadDapOperatorProfileTable(AnglesMediaAssetGroup& obj) {
  using Profile = AnglesDapOperatorMetadataProfile;
  if (obj.Metadata().Contains(Profile::StaticFullyQualifiedName())) {
    auto& held = dynamic_cast<Profile&>(obj.Metadata().At(Profile::StaticFullyQualifiedName()));
    dapOperatorProfileTable.ReadOwned(obj.ObjectId(), held);
    return;
  }
  const auto profile = std::make_shared<Profile>();
  if (dapOperatorProfileTable.ReadOwned(obj.ObjectId(), *profile)) obj.Metadata().Set(profile);
}

int64_t AnglesMediaAssetGroupTable::GetObjectIdFromIdentifier(const Identifier& id) const {
  return keyByIdentifier.FindKey(AttachedDatabase(), id.Value());
}

bool AnglesMediaAssetGroupTable::BindToCursor(Cursor& cursor, AnglesMediaAssetGroup& obj) {
  return cursor.Bind(columnNames[Column::RefMediaAssetGroup], obj.ObjectId());
}

void AnglesMediaAssetGroupTable::ReadFromCursor(const Cursor& cursor, AnglesMediaAssetGroup& obj, bool lazy) {
  mediaAssetGroupTable.ReadFromCursor(cursor, obj, lazy);
}

}  // namespace Oru::DataModel::MediaAssets::Database
