#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include "support/StoredGroups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <typeinfo>

namespace Oru::DataModel::MediaAssets::Database {

using Profile = AnglesDapOperatorMetadataProfile;
using testing::ElementsAre;

class AnglesMediaAssetGroupTableTest : public TestSupport::StoredGroups {
 protected:
  static std::shared_ptr<Profile> OnGrid(int server, int page, int bank, int clip) {
    return std::make_shared<Profile>(DapId(ZuServerId(server), page, bank, clip));
  }
  // A group with two angles and a place on the grid, stored.
  AnglesMediaAssetGroup StoredGroup(const std::string& id) {
    AnglesMediaAssetGroup group = Group(id, {{"a", "Wide"}, {"b", "Close"}});
    group.Metadata().Set(OnGrid(10, 3, 4, 5));
    EXPECT_TRUE(angles.Save(group)) << log.Text();
    return group;
  }
  std::shared_ptr<Profile> ReadProfile(AnglesMediaAssetGroup group) {
    group.Metadata().Clear();
    angles.ReadDapOperatorProfileTable(group);
    return group.Metadata().Get<Profile>();
  }
  // The rows of all groups, table by table from the group down to its items' angles.
  std::vector<int> Rows() {
    return {Count("MediaAssetGroup"), Count("AnglesMediaAssetGroup"), Count("DapOperatorMetadataAngles"),
            Count("MediaAssetGroupItem"), Count("AnglesMediaAssetGroupItem")};
  }
};

TEST_F(AnglesMediaAssetGroupTableTest, EachLaterSaveUpdatesWhatTheFirstInserted) {
  AnglesMediaAssetGroup group = StoredGroup("g");
  group.Metadata().Set(OnGrid(20, 9, 0, 9));
  ASSERT_TRUE(angles.Save(group));
  AnglesMediaAssetGroup anew = Group("g", {{"c", "Low"}}), read;
  ASSERT_TRUE(angles.Save(anew)) << "without a profile the stored one stays";
  EXPECT_THAT(Rows(), ElementsAre(1, 1, 1, 1, 1));
  EXPECT_EQ(*ReadProfile(anew), *OnGrid(20, 9, 0, 9));
  EXPECT_EQ(ReadProfile(anew)->ObjectId(), group.ObjectId());
  ASSERT_TRUE(angles.GetObject(group.ObjectId(), read));
  EXPECT_EQ(read, Group("g", {}));

  AnglesMediaAssetGroup failing = Group("h", {{"a", "1"}, {"missing", "2"}});
  failing.Metadata().Set(OnGrid(10, 1, 1, 1));
  EXPECT_FALSE(angles.Save(failing));
  EXPECT_THAT(Rows(), ElementsAre(2, 1, 1, 2, 2)) << "nothing behind the item";
}

TEST_F(AnglesMediaAssetGroupTableTest, StoredValuesOutOfRangeLeaveTheFieldsOfAHeldProfileAsTheyWere) {
  AnglesMediaAssetGroup group = StoredGroup("g");
  const auto held = group.Metadata().Get<Profile>();
  Run("UPDATE DapOperatorMetadataAngles SET zuServerId = 15, dapIdPage = 12, dapIdBank = -1, dapIdRow = 10");
  EXPECT_EQ(*ReadProfile(group), Profile());
  angles.ReadDapOperatorProfileTable(group);
  EXPECT_EQ(*held, *OnGrid(10, 3, 4, 5));
  Run("UPDATE DapOperatorMetadataAngles SET zuServerId = -10, dapIdPage = 0, dapIdBank = 9, dapIdRow = NULL");
  angles.ReadDapOperatorProfileTable(group);
  EXPECT_EQ(*held, *OnGrid(10, 0, 9, 0));
  Run("DELETE FROM DapOperatorMetadataAngles");
  angles.ReadDapOperatorProfileTable(group);
  EXPECT_EQ(*held, *OnGrid(10, 0, 9, 0));
  EXPECT_EQ(ReadProfile(group), nullptr);
}

TEST_F(AnglesMediaAssetGroupTableTest, ASingleItemIsChangedAndDeletedInBothTables) {
  AnglesMediaAssetGroup group = StoredGroup("g");
  auto& items = database.GetAnglesMediaAssetGroupItemTable();
  auto& close = dynamic_cast<AnglesMediaAssetGroupItem&>(group.Item(1));
  close.Name("Closest");
  GroupItemEncapsulated row(group.ObjectId(), assets.GetObjectIdFromIdentifier(MediaAssetId("d")), close, -1);
  ASSERT_TRUE(items.Save(row)) << log.Text();
  EXPECT_THAT(StoredItems("g"), ElementsAre(std::pair("d", "Closest"), std::pair("a", "Wide")));
  ASSERT_TRUE(items.Delete(row));
  EXPECT_EQ(close.ObjectId(), -1);
  EXPECT_THAT(Rows(), ElementsAre(1, 1, 1, 1, 1));
}

}  // namespace Oru::DataModel::MediaAssets::Database
