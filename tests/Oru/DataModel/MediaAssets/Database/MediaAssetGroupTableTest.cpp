#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupTable.h"

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"

#include "support/StoredGroups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace Oru::DataModel::MediaAssets::Database {

using testing::ElementsAre;
using testing::IsEmpty;

class MediaAssetGroupTableTest : public TestSupport::StoredGroups {};

TEST_F(MediaAssetGroupTableTest, AGroupWithoutItemsIsARow) {
  MediaAssetGroup group(MediaAssetGroupId(std::string(40, 'g')), "Goals");
  group.Type("angles");
  ASSERT_TRUE(groups.Save(group));
  EXPECT_EQ(Value("SELECT key || id || type || name FROM MediaAssetGroup"),
            std::to_string(group.ObjectId()) + std::string(40, 'g') + "anglesGoals");

  MediaAssetGroup read;
  ASSERT_TRUE(groups.GetObject(group.ObjectId(), read));
  EXPECT_EQ(read, group);
  EXPECT_EQ(read.ObjectId(), group.ObjectId());
  EXPECT_EQ(read.Type(), "angles");
  EXPECT_TRUE(read.Items().empty() && read.Metadata().Empty());
  EXPECT_EQ(Count("AnglesMediaAssetGroup"), 0);
}

TEST_F(MediaAssetGroupTableTest, ItemsComeInTheOrderOfTheLastSaveUnderNewKeys) {
  // So many that places in the order of text, or of keys that are reused, would show.
  Members members;
  for (int i = 0; i < 12; ++i)
    members.emplace_back(std::string(1, static_cast<char>('a' + i * i % 4)), "angle " + std::to_string(i));
  AnglesMediaAssetGroup group = Group("g", members);
  ASSERT_TRUE(groups.Save(group));
  EXPECT_EQ(StoredItems("g"), members);

  const int64_t lastKey = std::stoll(ItemKeys().back());
  std::reverse(members.begin(), members.end());
  std::reverse(group.Items().begin(), group.Items().end());
  ASSERT_TRUE(groups.Save(group));
  EXPECT_EQ(StoredItems("g"), members);
  EXPECT_EQ(ItemKeys().size(), members.size());
  for (std::size_t i = 0; i < members.size(); ++i)
    EXPECT_EQ(group.Items()[i]->ObjectId(), lastKey + 1 + static_cast<int64_t>(i));

  // The stored place tells, not the key.
  Run("UPDATE AnglesMediaAssetGroupItem SET angleIndex = 11 - angleIndex");
  std::reverse(members.begin(), members.end());
  EXPECT_EQ(StoredItems("g"), members);
}

TEST_F(MediaAssetGroupTableTest, ANewObjectOfAStoredIdentifierReplacesItemsAndNoOthers) {
  AnglesMediaAssetGroup first = Group("g", {{"a", "1"}, {"b", "2"}}), other = Group("h", {{"a", "x"}});
  ASSERT_TRUE(groups.Save(first) && groups.Save(other));
  AnglesMediaAssetGroup second = Group("g", {{"c", "3"}});
  second.Name("renamed");
  ASSERT_TRUE(groups.Save(second));
  EXPECT_EQ(second.ObjectId(), first.ObjectId());
  EXPECT_EQ(Count("MediaAssetGroup"), 2);
  EXPECT_EQ(Value("SELECT name FROM MediaAssetGroup WHERE id = 'g'"), "renamed");
  EXPECT_THAT(StoredItems("g"), ElementsAre(std::pair("c", "3")));
  EXPECT_THAT(StoredItems("h"), ElementsAre(std::pair("a", "x")));
  EXPECT_EQ(Count("MediaAssetGroupItem"), 2);
}

TEST_F(MediaAssetGroupTableTest, AnItemWhoseAssetIsNotStoredEndsTheSaveThere) {
  AnglesMediaAssetGroup group = Group("g", {{"a", "1"}, {"b", "2"}});
  ASSERT_TRUE(groups.Save(group));
  group.Name("renamed");
  SetItems(group, {{"b", "3"}, {"missing", "4"}, {"c", "5"}});
  EXPECT_FALSE(groups.Save(group));
  EXPECT_EQ(Value("SELECT name FROM MediaAssetGroup"), "renamed");
  EXPECT_THAT(StoredItems("g"), ElementsAre(std::pair("b", "3")));

  // An item without any asset is such a one too.
  SetItems(group, {{"c", "6"}, {"", "7"}});
  EXPECT_FALSE(groups.Save(group));
  EXPECT_THAT(StoredItems("g"), ElementsAre(std::pair("c", "6")));
}

TEST_F(MediaAssetGroupTableTest, APlainItemIsStoredWithAnEmptyAngleName) {
  MediaAssetGroup group(MediaAssetGroupId("g"), "");
  group.Items() = {std::make_shared<MediaAssetGroupItem>(MediaAssetReference(MediaAssetId("b"))),
                   Item("a", "Wide")};
  ASSERT_TRUE(groups.Save(group));
  EXPECT_EQ(Value("SELECT typeof(name) FROM AnglesMediaAssetGroupItem WHERE angleIndex = 0"), "text");
  EXPECT_THAT(StoredItems("g"), ElementsAre(std::pair("b", ""), std::pair("a", "Wide")));
}

TEST_F(MediaAssetGroupTableTest, IdentifiersMayHoldAnyCharacter) {
  const std::vector<std::string> odd = {"O'Brien's", "'' OR 1=1 --",       "id", "\"key\"",
                                        "%",         "x; DROP TABLE Track"};
  for (const std::string& id : odd) {
    StoreAsset(id);
    AnglesMediaAssetGroup group = Group(id, {{id, id}});
    for (int times = 0; times < 2; ++times) {
      ASSERT_TRUE(groups.Save(group)) << log.Text();
      group.ObjectId(-1);
    }
  }
  EXPECT_EQ(Count("MediaAssetGroup"), static_cast<int>(odd.size()));
  for (const std::string& id : odd)
    EXPECT_THAT(StoredItems(id), ElementsAre(std::pair(id, id)));
  EXPECT_EQ(groups.GetObjectIdFromIdentifier(MediaAssetGroupId("' OR '1'='1")), -1);
  EXPECT_EQ(groups.GetObjectIdFromIdentifier(MediaAssetGroupId()), -1);
}

TEST_F(MediaAssetGroupTableTest, LazyItemsKnowTheirAssetByIdentifierAndOthersHoldIt) {
  AnglesMediaAssetGroup saved = Group("g", {{"c", "1"}, {"a", "2"}});
  ASSERT_TRUE(groups.Save(saved));
  MediaAssetGroup group;
  ASSERT_TRUE(groups.GetObject(saved.ObjectId(), group));
  groups.ReadAnglesMediaAssetGroupItems(group, true);
  groups.ReadAnglesMediaAssetGroupItems(group, false);
  ASSERT_EQ(group.Items().size(), 4U) << "a second reading adds";
  for (const std::size_t i : {0U, 1U}) {
    const MediaAssetReference &lazy = group.ItemReference(i), &deep = group.ItemReference(i + 2);
    EXPECT_EQ(lazy.Pointer(), nullptr);
    EXPECT_EQ(lazy.Id(), saved.ItemReference(i).Id());
    ASSERT_NE(deep.Pointer(), nullptr);
    EXPECT_EQ(deep.Id(), saved.ItemReference(i).Id());
    EXPECT_EQ(deep.Pointer()->Name(), "asset " + saved.ItemReference(i).Id().Value());
    EXPECT_EQ(deep.Pointer()->ObjectId(), assets.GetObjectIdFromIdentifier(deep.Id()));
    EXPECT_EQ(group.Items()[i]->ObjectId(), saved.Items()[i]->ObjectId());
  }
}

TEST_F(MediaAssetGroupTableTest, AnItemThatIsGoneReadsAsOneOfNoAsset) {
  AnglesMediaAssetGroup group = Group("g", {{"a", "1"}});
  ASSERT_TRUE(groups.Save(group));
  MediaAssetGroupItemTable& items = database.GetMediaAssetGroupItemTable();
  ASSERT_TRUE(items.DeleteAll());
  items.ReadMediaAssetLazy(group.Item(0));
  EXPECT_TRUE(group.ItemReference(0).Id().IsEmpty());
  group.Item(0).MediaAsset(MediaAssetReference(MediaAssetId("a")));
  items.ReadMediaAsset(group.Item(0));
  EXPECT_TRUE(group.ItemReference(0).Id().IsEmpty());
  ASSERT_NE(group.ItemReference(0).Pointer(), nullptr);
  EXPECT_EQ(group.ItemReference(0).Pointer()->ObjectId(), -1);
}

TEST_F(MediaAssetGroupTableTest, ARefusedRowLeavesTheItemsAsTheyWere) {
  AnglesMediaAssetGroup group = Group("g", {{"a", "1"}}), other = Group("h", {{"b", "2"}});
  ASSERT_TRUE(groups.Save(group) && groups.Save(other));
  AnglesMediaAssetGroup renamed = other;
  renamed.Id(MediaAssetGroupId("g"));
  SetItems(renamed, {{"c", "3"}});
  EXPECT_FALSE(groups.Save(renamed));
  EXPECT_TRUE(log.Contains("UNIQUE constraint failed: MediaAssetGroup.id"));
  EXPECT_THAT(StoredItems("g"), ElementsAre(std::pair("a", "1")));
  EXPECT_THAT(StoredItems("h"), ElementsAre(std::pair("b", "2")));

  // A row that has gone meanwhile is no failure by itself, but its items have nothing to belong to.
  ASSERT_TRUE(groups.Delete(other.ObjectId()));
  EXPECT_FALSE(groups.Save(other));
  EXPECT_TRUE(log.Contains("FOREIGN KEY constraint failed"));
  EXPECT_EQ(groups.GetObjectIdFromIdentifier(other.Id()), -1);
  EXPECT_EQ(Count("MediaAssetGroupItem"), 1);
}

TEST_F(MediaAssetGroupTableTest, SavedAsAPlainGroupAnAngleGroupIsNone) {
  AnglesMediaAssetGroup group = Group("g", {{"a", "1"}});
  group.Metadata().Set(std::make_shared<AnglesDapOperatorMetadataProfile>());
  ASSERT_TRUE(groups.Save(group));
  EXPECT_EQ(Count("AnglesMediaAssetGroup") + Count("DapOperatorMetadataAngles"), 0);
  EXPECT_EQ(angles.GetObjectIdFromIdentifier(group.Id()), -1);
  AnglesMediaAssetGroup seen;
  EXPECT_FALSE(angles.GetObject(group.ObjectId(), seen));
}

}  // namespace Oru::DataModel::MediaAssets::Database
