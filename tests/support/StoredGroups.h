#pragma once

#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupItemTable.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include "support/OpenDatabase.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Oru::TestSupport {

/// A test with assets of the identifiers "a" to "d" in an open database, and groups over them.
class StoredGroups : public OpenDatabase {
 protected:
  /// The asset and the angle name of each item.
  using Members = std::vector<std::pair<std::string, std::string>>;

  StoredGroups() {
    for (const char* id : {"a", "b", "c", "d"})
      StoreAsset(id);
  }

  void StoreAsset(const std::string& id) {
    DataModel::MediaAssets::MediaAsset asset{DataModel::MediaAssets::MediaAssetId(id)};
    asset.Name("asset " + id);
    EXPECT_TRUE(assets.Save(asset)) << log.Text();
  }

  static std::shared_ptr<DataModel::MediaAssets::MediaAssetGroupItem> Item(const std::string& asset,
                                                                           const std::string& angle) {
    using namespace DataModel::MediaAssets;
    return std::make_shared<AnglesMediaAssetGroupItem>(angle, MediaAssetReference(MediaAssetId(asset)));
  }
  static void SetItems(DataModel::MediaAssets::MediaAssetGroup& group, const Members& members) {
    group.Items().clear();
    for (const auto& [asset, angle] : members)
      group.Items().push_back(Item(asset, angle));
  }
  static DataModel::MediaAssets::AnglesMediaAssetGroup Group(const std::string& id, const Members& members) {
    DataModel::MediaAssets::AnglesMediaAssetGroup group(DataModel::MediaAssets::MediaAssetGroupId(id),
                                                        "name of " + id);
    SetItems(group, members);
    return group;
  }

  /// What a new object reads of a stored group's items.
  Members StoredItems(const std::string& groupId) {
    using namespace DataModel::MediaAssets;
    MediaAssetGroup group;
    group.ObjectId(groups.GetObjectIdFromIdentifier(MediaAssetGroupId(groupId)));
    groups.ReadAnglesMediaAssetGroupItems(group, true);
    Members members;
    for (const auto& item : group.Items()) {
      members.emplace_back(item->MediaAsset().Id().Value(),
                           dynamic_cast<const AnglesMediaAssetGroupItem&>(*item).Name());
    }
    return members;
  }
  DataModel::MediaAssets::Database::MediaAssetGroupTable& groups = database.GetMediaAssetGroupTable();
  DataModel::MediaAssets::Database::AnglesMediaAssetGroupTable& angles =
      database.GetAnglesMediaAssetGroupTable();
};

}  // namespace Oru::TestSupport
