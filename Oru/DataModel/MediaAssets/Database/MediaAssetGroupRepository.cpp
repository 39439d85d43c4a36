#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/Writing/AllOrNothing.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/WholeObjects.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectWrite.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases::Sqlite;
using BusinessEntityModel::BaseTypes::GenericMetadataProfile;
using BusinessEntityModel::BaseTypes::Identifier;
using BusinessEntityModel::BaseTypes::MetadataProfile;

namespace {

void RequirePlace(const Identifier& group, const char* what, int32_t place) {
  if (place == DapId::Unset || DapId::IsInRange(place, 0, 9)) return;
  RefuseObject(group, std::string(what) + " " + std::to_string(place) + " is off the range from 0 to 9");
}

void RequireStorable(const MediaAssetGroup& group, bool isMultiAngle) {
  if (group.Id().IsEmpty()) RefuseObject(group.Id(), "the group has no identifier");
  const auto& items = group.Items();
  if (const auto null = std::find(items.begin(), items.end(), nullptr); null != items.end())
    RefuseObject(group.Id(), "item " + std::to_string(null - items.begin()) + " is a null pointer");
  group.Metadata().Iterate([&](const MetadataProfile& profile) {
    const auto* identity = dynamic_cast<const AnglesDapOperatorMetadataProfile*>(&profile);
    const auto* generic = dynamic_cast<const GenericMetadataProfile*>(&profile);
    if (identity && isMultiAngle) {
      RequirePlace(group.Id(), "page", identity->Page());
      RequirePlace(group.Id(), "bank", identity->Bank());
      RequirePlace(group.Id(), "clip", identity->Clip());
    } else if (!generic || !generic->Entries().empty()) {
      RefuseObject(group.Id(),
                   "there is no table for the metadata profile " + profile.FullyQualifiedName().Value());
    }
    return true;
  });
}

}  // namespace

MediaAssetGroupRepository::MediaAssetGroupRepository(DataModelDatabase& database)
    : mDatabase(database),
      mItemsOfGroup(
          "SELECT item.key, asset.id, angle.name FROM MediaAssetGroupItem AS item "
          "JOIN MediaAsset AS asset ON asset.key = item.refMediaAsset "
          "LEFT JOIN AnglesMediaAssetGroupItem AS angle ON angle.refMediaAssetGroupItem = item.key "
          "WHERE item.refMediaAssetGroup = :group ORDER BY angle.angleIndex, item.key") {}

MediaAssetGroupRepository::~MediaAssetGroupRepository() = default;

std::optional<MediaAssetGroup> MediaAssetGroupRepository::Find(const MediaAssetGroupId& id) {
  return FindWhole<MediaAssetGroup>(mDatabase, mDatabase.GetMediaAssetGroupTable(), id,
                                    [this](MediaAssetGroup& group) { ReadItems(group, false); });
}

std::optional<AnglesMediaAssetGroup> MediaAssetGroupRepository::FindAngles(const MediaAssetGroupId& id) {
  AnglesMediaAssetGroupTable& table = mDatabase.GetAnglesMediaAssetGroupTable();
  return FindWhole<AnglesMediaAssetGroup>(mDatabase, table, id, [&](AnglesMediaAssetGroup& group) {
    ReadItems(group, true);
    table.ReadDapOperatorProfileTable(group);
  });
}

std::vector<MediaAssetGroup> MediaAssetGroupRepository::All() {
  return AllByName<MediaAssetGroup>(mDatabase, mDatabase.GetMediaAssetGroupTable(),
                                    [this](MediaAssetGroup& group) { ReadItems(group, false); });
}

void MediaAssetGroupRepository::ReadItems(MediaAssetGroup& group, bool areAngles) {
  PreparedStatement::Run run(mItemsOfGroup, mDatabase, group.ObjectId());
  const CursorSqlite& cursor = run.Row();
  while (run.Step()) {
    MediaAssetReference asset(Identifier(cursor.GetString(1)));
    std::string name = cursor.GetString(2);
    // The file has a name for each item; the items of a plain group are plain ones where it is empty.
    std::shared_ptr<MediaAssetGroupItem> item;
    if (areAngles || !name.empty()) {
      item = std::make_shared<AnglesMediaAssetGroupItem>(std::move(name), std::move(asset));
    } else {
      item = std::make_shared<MediaAssetGroupItem>(std::move(asset));
    }
    item->ObjectId(cursor.GetInt64(0));
    group.Items().push_back(std::move(item));
  }
}

void MediaAssetGroupRepository::Put(MediaAssetGroup& group) {
  if (auto* angles = dynamic_cast<AnglesMediaAssetGroup*>(&group)) return Put(*angles);
  RequireStorable(group, false);
  PutInto(mDatabase.GetMediaAssetGroupTable(), group, [&] {
    if (mDatabase.GetAnglesMediaAssetGroupTable().GetObjectIdFromIdentifier(group.Id()) == -1) return;
    RefuseObject(group.Id(), "a multi-angle group of that identifier is stored, and this is a plain one");
  });
}

void MediaAssetGroupRepository::Put(AnglesMediaAssetGroup& group) {
  RequireStorable(group, true);
  AnglesMediaAssetGroupTable& table = mDatabase.GetAnglesMediaAssetGroupTable();
  PutInto(table, group, [&] {
    // The tables leave an identity alone that the object no longer has.
    const int64_t key = table.GetObjectIdFromIdentifier(group.Id());
    RequireWritten(mDatabase, group.Id(), key == -1 || table.GetDapOperatorProfileTable().DeleteOwned(key));
  });
}

template <class Group, class Table, class Prepare>
void MediaAssetGroupRepository::PutInto(Table& table, Group& group, Prepare prepare) {
  FormerObjectIds before;
  before.Remember(group);
  for (const auto& item : group.Items())
    before.Remember(*item);
  if (const auto identity = group.Metadata().template Get<AnglesDapOperatorMetadataProfile>())
    before.Remember(*identity);
  AllOrNothing(mDatabase, [&] {
    RequireItemsStored(group);
    prepare();
    group.ObjectId(-1);
    RequireWritten(mDatabase, group.Id(), table.Save(group));
  });
  before.KeepNew();
}

void MediaAssetGroupRepository::RequireItemsStored(const MediaAssetGroup& group) {
  int number = 0;
  for (const auto& item : group.Items()) {
    const Identifier& asset = item->MediaAsset().Id();
    if (mDatabase.GetMediaAssetTable().GetObjectIdFromIdentifier(asset) == -1) {
      RefuseObject(group.Id(), "item " + std::to_string(number) + " refers to asset " + asset.Value() +
                                   ", which isn't stored");
    }
    ++number;
  }
}

bool MediaAssetGroupRepository::Remove(const MediaAssetGroupId& id) {
  return AllOrNothing(mDatabase, [&] {
    MediaAssetGroupTable& table = mDatabase.GetMediaAssetGroupTable();
    const int64_t key = id.IsEmpty() ? -1 : table.GetObjectIdFromIdentifier(id);
    if (key == -1) return false;
    RequireWritten(mDatabase, id, table.Delete(key));
    return true;
  });
}

}  // namespace Oru::DataModel::MediaAssets::Database
