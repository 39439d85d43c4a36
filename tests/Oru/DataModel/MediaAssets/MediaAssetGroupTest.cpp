#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include "support/Changes.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace Oru::DataModel::MediaAssets {
namespace {

std::shared_ptr<MediaAssetGroupItem> Item(const std::string& asset) {
  return std::make_shared<MediaAssetGroupItem>(MediaAssetId(asset));
}

std::shared_ptr<MediaAssetGroupItem> Angle(const std::string& asset, const std::string& name) {
  return std::make_shared<AnglesMediaAssetGroupItem>(name, MediaAssetId(asset));
}

TEST(MediaAssetGroupTest, ItemsCompareByTheOneThatIsAsked) {
  const std::shared_ptr<MediaAssetGroupItem> items[] = {Item("a"), Item("b"), Angle("a", "left"),
                                                        Angle("a", "right"), Angle("b", "left")};
  const bool isEqual[5][5] = {
      {true, false, true, true, false},  // a plain item asks for the asset alone
      {false, true, false, false, true},
      {false, false, true, false, false},  // an angle asks for an angle of the same name
      {false, false, false, true, false},
      {false, false, false, false, true},
  };
  for (int asked = 0; asked < 5; ++asked) {
    for (int other = 0; other < 5; ++other) {
      EXPECT_EQ(*items[asked] == *items[other], isEqual[asked][other]) << asked << ", " << other;
      EXPECT_EQ(*items[asked] != *items[other], !isEqual[asked][other]) << asked << ", " << other;
    }
  }
}

TEST(MediaAssetGroupTest, ItemsAreFoundByAssetAndByIndex) {
  MediaAssetGroup group("g", "name");
  const auto asset = std::make_shared<MediaAsset>("b");
  group.Items() = {Item("a"), std::make_shared<MediaAssetGroupItem>(asset), Angle("b", "second")};
  EXPECT_EQ(group.Find("b"), group.Items()[1]);
  EXPECT_EQ(group.Find("c"), nullptr);
  EXPECT_TRUE(group.HasAsset("a") && !group.HasAsset("c"));
  EXPECT_TRUE(group.ItemReference(2).Id() == "b" && !group.Asset(0) && group.Asset(1) == asset);
  EXPECT_THROW(group.Item(3), std::out_of_range);
  EXPECT_THROW(group.ItemReference(3), std::out_of_range);
  EXPECT_THROW(group.Asset(3), std::out_of_range);
}

TEST(MediaAssetGroupTest, GroupsCompareByContent) {
  const auto made = [] {
    MediaAssetGroup group("g", "name");
    group.Items() = {Angle("a", "left"), Angle("b", "right")};
    return group;
  };
  TestSupport::ExpectEachChangeCounts<MediaAssetGroup>(
      made(), {
                  [](MediaAssetGroup& other) { other.Id("other"); },
                  [](MediaAssetGroup& other) { other.Type("other"); },
                  [](MediaAssetGroup& other) { other.Name("other"); },
                  [](MediaAssetGroup& other) { other.Items().pop_back(); },
                  [](MediaAssetGroup& other) { std::swap(other.Items()[0], other.Items()[1]); },
                  [](MediaAssetGroup& other) { other.Items()[1] = Angle("b", "left"); },
                  [](MediaAssetGroup& other) {
                    other.Metadata().Set(std::make_shared<BaseTypes::GenericMetadataProfile>("p"));
                  },
              });
  MediaAssetGroup plain("g", "name");
  plain.Items() = {Item("a"), Item("b")};
  EXPECT_TRUE(plain.AreItemsEqual(made()) && !made().AreItemsEqual(plain));
}

TEST(MediaAssetGroupTest, ACloneIsOfTheSameClassesAndHasItemsOfItsOwn) {
  AnglesMediaAssetGroup group("g", "name");
  group.ObjectId(5);
  const auto asset = std::make_shared<MediaAsset>("a");
  group.Items() = {std::make_shared<AnglesMediaAssetGroupItem>("left", asset), Item("b")};
  const std::unique_ptr<MediaAssetGroup> clone = static_cast<const MediaAssetGroup&>(group).Clone();
  EXPECT_TRUE(*clone == group && clone->ObjectId() == 5 && clone->Asset(0) == asset);
  EXPECT_NE(dynamic_cast<AnglesMediaAssetGroup*>(clone.get()), nullptr);
  EXPECT_NE(clone->Items()[0], group.Items()[0]);
  EXPECT_NE(MediaAssetGroup(group).Clone()->Items()[0], group.Items()[0]);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
