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
using testing::IsEmpty;

class AnglesMediaAssetGroupTableTest : public TestSupport::StoredGroups {
 protected:
  static std::shared_ptr<Profile> OnGrid(int server, int page, int bank, int clip) {
    auto profile = std::make_shared<Profile>();
    profile->ServerId(ZuServerId(server));
    profile->Page(page);
    profile->Bank(bank);
    profile->Clip(clip);
    return profile;
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

TEST_F(AnglesMediaAssetGroupTableTest, AGroupWithNothingInItIsARowInBothTables) {
  AnglesMediaAssetGroup group = Group("g", {});
  ASSERT_TRUE(angles.Save(group));
  EXPECT_THAT(Rows(), ElementsAre(1, 1, 0, 0, 0));
  EXPECT_EQ(angles.GetObjectIdFromIdentifier(group.Id()), group.ObjectId());
  EXPECT_EQ(ReadProfile(group), nullptr);
}

TEST_F(AnglesMediaAssetGroupTableTest, EachLaterSaveUpdatesWhatTheFirstInserted) {
  AnglesMediaAssetGroup group = StoredGroup("g");
  group.Metadata().Set(OnGrid(20, 9, 0, 9));
  ASSERT_TRUE(angles.Save(group));
  AnglesMediaAssetGroup anew = Group("g", {{"c", "Low"}});
  ASSERT_TRUE(angles.Save(anew)) << "without a profile the stored one stays";
  EXPECT_EQ(anew.ObjectId(), group.ObjectId());
  EXPECT_THAT(Rows(), ElementsAre(1, 1, 1, 1, 1));
  EXPECT_EQ(*ReadProfile(anew), *OnGrid(20, 9, 0, 9));
  EXPECT_EQ(ReadProfile(anew)->ObjectId(), group.ObjectId());
}

TEST_F(AnglesMediaAssetGroupTableTest, APlainGroupBecomesOneOfAnglesAtItsFirstSaveHere) {
  AnglesMediaAssetGroup same = Group("same", {{"a", "1"}}), other = Group("other", {{"b", "2"}});
  ASSERT_TRUE(groups.Save(same) && groups.Save(other));
  ASSERT_TRUE(angles.Save(same));
  AnglesMediaAssetGroup anew = Group("other", {{"c", "3"}});
  ASSERT_TRUE(angles.Save(anew));
  EXPECT_THAT(Rows(), ElementsAre(2, 2, 0, 2, 2));
  for (const AnglesMediaAssetGroup* group : {&same, &other}) {
    AnglesMediaAssetGroup read;
    ASSERT_TRUE(angles.GetObject(group->ObjectId(), read));
    EXPECT_EQ(read.Id(), group->Id());
    EXPECT_EQ(read.Name(), group->Name());
    EXPECT_EQ(read.ObjectId(), group->ObjectId());
  }
}

TEST_F(AnglesMediaAssetGroupTableTest, AFailedSaveOfTheGroupWritesNothingFurther) {
  AnglesMediaAssetGroup group = Group("g", {{"a", "1"}, {"missing", "2"}});
  group.Metadata().Set(OnGrid(10, 1, 1, 1));
  EXPECT_FALSE(angles.Save(group));
  EXPECT_THAT(Rows(), ElementsAre(1, 0, 0, 1, 1));
}

TEST_F(AnglesMediaAssetGroupTableTest, DeletionTakesAllRowsOfTheGroupAndNoOther) {
  const std::string odd = "it's \"odd\"";
  AnglesMediaAssetGroup first = StoredGroup("first"), second = StoredGroup(odd), third = StoredGroup("third");
  ASSERT_TRUE(angles.Delete(first));
  EXPECT_EQ(first.ObjectId(), -1);
  EXPECT_THAT(Rows(), ElementsAre(2, 2, 2, 4, 4));
  ASSERT_TRUE(angles.Delete(MediaAssetGroupId("' OR ''='")));
  ASSERT_TRUE(angles.Delete(first.Id()));
  EXPECT_THAT(Rows(), ElementsAre(2, 2, 2, 4, 4));
  ASSERT_TRUE(angles.Delete(MediaAssetGroupId(odd)));
  EXPECT_THAT(Rows(), ElementsAre(1, 1, 1, 2, 2));
  EXPECT_EQ(*ReadProfile(third), *OnGrid(10, 3, 4, 5));
  EXPECT_EQ(StoredItems("third").size(), 2U);
  EXPECT_EQ(Count("MediaAsset"), 4);
}

TEST_F(AnglesMediaAssetGroupTableTest, StoredValuesOutOfRangeLeaveTheirFieldsAsTheyWere) {
  AnglesMediaAssetGroup group = StoredGroup("g");
  Run("UPDATE DapOperatorMetadataAngles SET zuServerId = 15, dapIdPage = 12, dapIdBank = -1, dapIdRow = 10");
  EXPECT_EQ(*ReadProfile(group), Profile());
  angles.ReadDapOperatorProfileTable(group);
  EXPECT_EQ(*group.Metadata().Get<Profile>(), *OnGrid(10, 3, 4, 5));
  Run("UPDATE DapOperatorMetadataAngles SET zuServerId = -10, dapIdPage = 0, dapIdBank = 9, dapIdRow = NULL");
  angles.ReadDapOperatorProfileTable(group);
  EXPECT_EQ(*group.Metadata().Get<Profile>(), *OnGrid(10, 0, 9, 0));

  AnglesMediaAssetGroup unset = Group("unset", {});
  unset.Metadata().Set(std::make_shared<Profile>());
  ASSERT_TRUE(angles.Save(unset));
  EXPECT_EQ(*ReadProfile(unset), Profile());
}

TEST_F(AnglesMediaAssetGroupTableTest, AHeldProfileIsFilledAgain) {
  AnglesMediaAssetGroup group = Group("g", {});
  ASSERT_TRUE(angles.Save(group));
  const auto held = OnGrid(30, 1, 2, 3);
  group.Metadata().Set(held);
  angles.ReadDapOperatorProfileTable(group);
  EXPECT_EQ(*held, *OnGrid(30, 1, 2, 3)) << "nothing is stored yet";
  ASSERT_TRUE(angles.Save(group));
  Run("UPDATE DapOperatorMetadataAngles SET dapIdRow = 7");
  for (int times = 0; times < 2; ++times) {
    angles.ReadDapOperatorProfileTable(group);
    EXPECT_EQ(group.Metadata().Size(), 1U);
    EXPECT_EQ(group.Metadata().Get<Profile>(), held);
    EXPECT_EQ(*held, *OnGrid(30, 1, 2, 7));
  }
}

TEST_F(AnglesMediaAssetGroupTableTest, AProfileOfAnotherClassIsNeitherWrittenNorReadInto) {
  AnglesMediaAssetGroup group = StoredGroup("g");
  const auto other = std::make_shared<DapOperatorMetadataProfile>();
  other->ServerId(ZuServerId(50));
  group.Metadata().Set(other);
  ASSERT_TRUE(angles.Save(group));
  EXPECT_EQ(*ReadProfile(group), *OnGrid(10, 3, 4, 5));
  EXPECT_THROW(angles.ReadDapOperatorProfileTable(group), std::bad_cast);
  EXPECT_EQ(group.Metadata().Get<DapOperatorMetadataProfile>(), other);
  EXPECT_EQ(other->ServerId(), ZuServerId(50));

  AnglesMediaAssetGroup fresh = Group("h", {});
  fresh.Metadata().Set(other);
  ASSERT_TRUE(angles.Save(fresh));
  EXPECT_EQ(Count("DapOperatorMetadataAngles"), 1);
}

TEST_F(AnglesMediaAssetGroupTableTest, AProfileThatMovesToAnotherGroupLeavesTheRowOfTheFirst) {
  AnglesMediaAssetGroup first = StoredGroup("first"), second = Group("second", {});
  const auto profile = first.Metadata().Get<Profile>();
  ASSERT_EQ(profile->ObjectId(), first.ObjectId());
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

TEST_F(AnglesMediaAssetGroupTableTest, SelectsYieldTheColumnsOfTheBaseFirst) {
  StoredGroup("g");
  const auto columns = [](auto& table) {
    const auto cursor = table.OpenRawCursor();
    std::vector<std::string> names;
    for (int32_t i = 0; i < cursor->GetColumnsCount(); ++i)
      names.push_back(cursor->GetColumnName(i));
    return names;
  };
  EXPECT_THAT(columns(angles), ElementsAre("key", "id", "type", "name", "refMediaAssetGroup"));
  EXPECT_THAT(columns(database.GetAnglesMediaAssetGroupItemTable()),
              ElementsAre("key", "refMediaAssetGroup", "refMediaAsset", "refMediaAssetGroupItem",
                          "angleIndex", "name"));
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
  EXPECT_THAT(StoredItems("g"), ElementsAre(std::pair("a", "Wide")));
  ASSERT_TRUE(items.Save(row)) << "and stored anew";
  EXPECT_THAT(Rows(), ElementsAre(1, 1, 1, 2, 2));
}

}  // namespace Oru::DataModel::MediaAssets::Database
