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

TEST_F(AnglesMediaAssetGroupTableTest, StatementsAreExact) {
  EXPECT_EQ(
      angles.GetSelectStatement(),
      "SELECT key, id, type, name, refMediaAssetGroup FROM MediaAssetGroup JOIN AnglesMediaAssetGroup ON "
      "MediaAssetGroup.key == AnglesMediaAssetGroup.refMediaAssetGroup");
  EXPECT_EQ(database.GetAnglesMediaAssetGroupItemTable().GetSelectStatement(),
            "SELECT key, refMediaAssetGroup, refMediaAsset, refMediaAssetGroupItem, angleIndex, name FROM "
            "MediaAssetGroupItem JOIN AnglesMediaAssetGroupItem ON MediaAssetGroupItem.key == "
            "AnglesMediaAssetGroupItem.refMediaAssetGroupItem");
}

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

TEST_F(AnglesMediaAssetGroupTableTest, DeletionTakesAllRowsOfTheGroupAndNoOther) {
  const std::string odd = "it's \"odd\"";
  AnglesMediaAssetGroup first = StoredGroup("first"), second = StoredGroup(odd), third = StoredGroup("third");
  ASSERT_TRUE(angles.Delete(first));
  EXPECT_EQ(first.ObjectId(), -1);
  ASSERT_TRUE(angles.Delete(MediaAssetGroupId("' OR ''='")));
  EXPECT_THAT(Rows(), ElementsAre(2, 2, 2, 4, 4));
  ASSERT_TRUE(angles.Delete(MediaAssetGroupId(odd)));
  EXPECT_THAT(Rows(), ElementsAre(1, 1, 1, 2, 2));
  EXPECT_EQ(StoredItems("third").size(), 2U);
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

TEST_F(AnglesMediaAssetGroupTableTest, AProfileOfAnotherClassIsNeitherWrittenNorReadInto) {
  AnglesMediaAssetGroup group = StoredGroup("g"), fresh = Group("h", {});
  const auto other = std::make_shared<DapOperatorMetadataProfile>();
  other->ServerId(ZuServerId(50));
  group.Metadata().Set(other);
  fresh.Metadata().Set(other);
  ASSERT_TRUE(angles.Save(group) && angles.Save(fresh));
  EXPECT_EQ(Count("DapOperatorMetadataAngles"), 1);
  EXPECT_EQ(*ReadProfile(group), *OnGrid(10, 3, 4, 5));
  EXPECT_THROW(angles.ReadDapOperatorProfileTable(group), std::bad_cast);
  EXPECT_EQ(other->ServerId(), ZuServerId(50));
}

TEST_F(AnglesMediaAssetGroupTableTest, AProfileThatMovesToAnotherGroupLeavesTheRowOfTheFirst) {
  AnglesMediaAssetGroup first = StoredGroup("first"), second = Group("second", {});
  const auto profile = first.Metadata().Get<Profile>();
  profile->Page(8);
  second.Metadata().Set(profile);
  ASSERT_TRUE(angles.Save(second)) << log.Text();
  EXPECT_EQ(*ReadProfile(first), *OnGrid(10, 3, 4, 5));
  EXPECT_EQ(*ReadProfile(second), *OnGrid(10, 8, 4, 5));
  EXPECT_EQ(profile->ObjectId(), second.ObjectId());
  // Nor does a stale key keep a row that has gone from being written anew.
  Run("DELETE FROM DapOperatorMetadataAngles");
  ASSERT_TRUE(angles.Save(first) && angles.Save(second));
  EXPECT_EQ(Count("DapOperatorMetadataAngles WHERE dapIdPage = 8"), 2);
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
