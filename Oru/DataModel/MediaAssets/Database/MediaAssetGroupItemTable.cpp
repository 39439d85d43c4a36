#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupItemTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupItemTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/Changeable.h"

ORU_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::MediaAssetGroupItem,
                    Oru::DataModel::MediaAssets::Database::GroupItemEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;

namespace {

const std::string lazyMediaAssetQuery =
    "SELECT id FROM MediaAsset WHERE key IN (SELECT refMediaAsset FROM MediaAssetGroupItem WHERE key == ?);";

}  // namespace

const std::string MediaAssetGroupItemTable::tableName = "MediaAssetGroupItem";
const std::array<std::string, 3> MediaAssetGroupItemTable::columnNames = {"key", "refMediaAssetGroup",
                                                                          "refMediaAsset"};

MediaAssetGroupItemTable::MediaAssetGroupItemTable(MediaAssetTable& assets)
    : DeclaredTable(static_cast<Sqlite::DatabaseSqlite&>(assets.GetDatabase())),
      mediaAssetTable(assets),
      lazyAsset(lazyMediaAssetQuery) {
  GenerateStatements();
  SetOwnerColumn(columnNames[Column::RefMediaAssetGroup]);
  anglesMediaAssetGroupItemTable = std::make_unique<AnglesMediaAssetGroupItemTable>(*this);
  Sqlite::QuerySqlite query;
  query.In("key", tableName, columnNames[Column::RefMediaAsset],
           Sqlite::QuerySqlite().Equals(columnNames[Column::Key], int64_t{}));
  assetOfItem = Sqlite::PreparedStatement(mediaAssetTable.StatementGenerator().SelectToRun(query).text);
}

MediaAssetGroupItemTable::~MediaAssetGroupItemTable() = default;

bool MediaAssetGroupItemTable::Write(const MediaAssetGroupItemArray& items, int64_t fkMediaAssetGroup) {
  int32_t place = 0;
  return Sqlite::WriteEachObject(AttachedDatabase(), items, [&](MediaAssetGroupItem& item) {
    const Identifier& asset = item.MediaAsset().Id();
    const int64_t assetKey = mediaAssetTable.GetObjectIdFromIdentifier(asset);
    if (assetKey == -1) {
      AttachedDatabase().LogFailure("asset " + asset.Value() + ", which item " + std::to_string(place) +
                                    " of a group refers to, isn't stored");
      return false;
    }
    // The group's rows are gone, so whatever key the object held names none.
    item.ObjectId(-1);
    GroupItemEncapsulated row(fkMediaAssetGroup, assetKey, item, place++);
    return anglesMediaAssetGroupItemTable->Save(row);
  });
}

void MediaAssetGroupItemTable::ReadMediaAssetLazy(MediaAssetGroupItem& groupItem) {
  Sqlite::PreparedStatement::Run run(lazyAsset, AttachedDatabase(), groupItem.ObjectId());
  const Sqlite::CursorSqlite& cursor = run.Row();
  const Identifier id(run.Step() ? cursor.GetString(0) : std::string());
  groupItem.MediaAsset(MediaAssetReference(id));
}

void MediaAssetGroupItemTable::ReadMediaAsset(MediaAssetGroupItem& groupItem) {
  auto asset = std::make_shared<MediaAsset>(Identifier::Empty());
  mediaAssetTable.ReadFirst(assetOfItem, *asset, groupItem.ObjectId());
  groupItem.MediaAsset(MediaAssetReference(std::move(asset)));
}

bool MediaAssetGroupItemTable::BindToCursor(Cursor& cursor, GroupItemEncapsulated& obj) {
  return cursor.Bind(columnNames[Column::RefMediaAssetGroup], obj.fkMediaAssetGroup) &&
         cursor.Bind(columnNames[Column::RefMediaAsset], obj.fkMediaAsset);
}

void MediaAssetGroupItemTable::ReadFromCursor(const Cursor& cursor, MediaAssetGroupItem& obj, bool) {
  obj.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
}

void MediaAssetGroupItemTable::SetObjectId(GroupItemEncapsulated& obj, int64_t objectId) {
  Changeable(obj.groupItem).ObjectId(objectId);
}

}  // namespace Oru::DataModel::MediaAssets::Database
