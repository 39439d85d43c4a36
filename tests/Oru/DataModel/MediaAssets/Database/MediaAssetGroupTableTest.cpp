#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupTable.h"

#include "support/StoredGroups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Oru::DataModel::MediaAssets::Database {

using testing::ElementsAre;

class MediaAssetGroupTableTest : public TestSupport::StoredGroups {};

TEST_F(MediaAssetGroupTableTest, AnItemWhoseAssetIsNotStoredEndsTheSaveThere) {
  AnglesMediaAssetGroup group = Group("g", {{"a", "1"}, {"b", "2"}});
  ASSERT_TRUE(groups.Save(group));
  group.Name("renamed");
  for (const char* missing : {"missing", ""}) {
    SetItems(group, {{"b", "3"}, {missing, "4"}, {"c", "5"}});
    log.Clear();
    EXPECT_FALSE(groups.Save(group));
    const std::string entry =
        std::string("asset ") + missing + ", which item 1 of a group refers to, isn't stored";
    EXPECT_TRUE(log.Lines().size() == 1 && log.Contains(entry)) << log.Text();
    EXPECT_EQ(Value("SELECT name FROM MediaAssetGroup"), "renamed");
    EXPECT_THAT(StoredItems("g"), ElementsAre(std::pair("b", "3")));
  }
}

TEST_F(MediaAssetGroupTableTest, LazyItemsKnowTheirAssetByIdentifierAndOthersHoldIt) {
  AnglesMediaAssetGroup saved = Group("g", {{"c", "1"}, {"a", "2"}});
  ASSERT_TRUE(groups.Save(saved));
  MediaAssetGroup group;
  group.ObjectId(saved.ObjectId());
  groups.ReadAnglesMediaAssetGroupItems(group, true);
  groups.ReadAnglesMediaAssetGroupItems(group, false);
  ASSERT_EQ(group.Items().size(), 4U) << "a second reading adds";
  for (const std::size_t i : {0U, 1U}) {
    const MediaAssetReference &lazy = group.ItemReference(i), &deep = group.ItemReference(i + 2);
    EXPECT_TRUE(lazy == saved.ItemReference(i) && deep == lazy);
    EXPECT_EQ(lazy.Pointer(), nullptr);
    ASSERT_NE(deep.Pointer(), nullptr);
    EXPECT_EQ(deep.Pointer()->Name(), "asset " + lazy.Id().Value());
    EXPECT_EQ(deep.Pointer()->ObjectId(), assets.GetObjectIdFromIdentifier(deep.Id()));
    EXPECT_EQ(group.Items()[i]->ObjectId(), saved.Items()[i]->ObjectId());
  }
  ASSERT_TRUE(groups.DeleteAll());
  database.GetMediaAssetGroupItemTable().ReadMediaAssetLazy(group.Item(0));
  database.GetMediaAssetGroupItemTable().ReadMediaAsset(group.Item(2));
  EXPECT_TRUE(group.ItemReference(0).Id().IsEmpty() && group.ItemReference(2).Id().IsEmpty());
}

}  // namespace Oru::DataModel::MediaAssets::Database
