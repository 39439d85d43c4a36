#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/NotStoredException.h"

#include "support/RandomAsset.h"
#include "support/StoredGroups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using namespace Common::Databases::Sqlite;
using Identity = AnglesDapOperatorMetadataProfile;

class MediaAssetGroupRepositoryTest : public TestSupport::StoredGroups {
 protected:
  static std::vector<int64_t> ObjectIds(const MediaAssetGroup& group) {
    std::vector<int64_t> ids{group.ObjectId()};
    for (const auto& item : group.Items())
      ids.push_back(item->ObjectId());
    if (const auto identity = group.Metadata().Get<Identity>()) ids.push_back(identity->ObjectId());
    return ids;
  }

  MediaAssetGroupRepository repository{database};
};

// Groups of both kinds that are put and removed, in transactions that are rolled back too, beside a map.
TEST_F(MediaAssetGroupRepositoryTest, TheFileHoldsWhatAMapHolds) {
  struct Held {
    std::unique_ptr<MediaAssetGroup> group;
    bool isMultiAngle;
  };
  std::map<std::string, Held> model;
  TestSupport::RandomAssets random(20261125);
  const std::string assetIds[] = {"a", "b", "c", "d", "missing"};
  for (int round = 0; round < 600; ++round) {
    const std::string id = "it's " + std::to_string(random.Below(6));
    const auto held = model.find(id);
    const bool wasMultiAngle = held != model.end() && held->second.isMultiAngle;
    TransactionGuard transaction(database);
    std::optional<SavepointGuard> savepoint(database);
    bool isKept = !random.Chance(4);
    if (random.Chance(5)) {
      ASSERT_EQ(repository.Remove(MediaAssetGroupId(id)), held != model.end());
      if (isKept) model.erase(id);
    } else {
      const bool isMultiAngle = random.Chance(2);
      std::unique_ptr<MediaAssetGroup> group = std::make_unique<MediaAssetGroup>(id, random.Text());
      if (isMultiAngle) group = std::make_unique<AnglesMediaAssetGroup>(id, random.Text());
      group->Type(random.Text());
      group->ObjectId(random.Int64());
      bool isStorable = isMultiAngle || !wasMultiAngle;
      for (auto count = random.Below(5); count > 0; --count) {
        const std::string& asset = assetIds[random.Below(random.Chance(8) ? 5 : 4)];
        isStorable = isStorable && asset != "missing";
        // An angle has a name; the item of a plain group may have one.
        if (isMultiAngle || random.Chance(2)) {
          group->Items().push_back(Item(asset, "x" + random.Text()));
        } else {
          group->Items().push_back(
              std::make_shared<MediaAssetGroupItem>(MediaAssetReference(MediaAssetId(asset))));
        }
        group->Items().back()->ObjectId(random.Int64());
      }
      if (isMultiAngle && random.Chance(2)) {
        const auto place = [&] { return static_cast<int>(random.Below(10)); };
        group->Metadata().Set(
            std::make_shared<Identity>(DapId(ZuServerId(10 + 10 * place()), place(), place(), DapId::Unset)));
      }
      const auto before = ObjectIds(*group);
      if (isStorable) {
        repository.Put(*group);
        const auto found = repository.Find(MediaAssetGroupId(id));
        ASSERT_TRUE(found);
        ASSERT_EQ(found->ObjectId(), group->ObjectId());
        for (std::size_t i = 0; i < group->Items().size(); ++i)
          ASSERT_EQ(found->Item(i).ObjectId(), group->Item(i).ObjectId());
        if (isKept) model[id] = {group->Clone(), isMultiAngle};
      } else {
        ASSERT_THROW(repository.Put(*group), NotStoredException);
        ASSERT_EQ(ObjectIds(*group), before);
      }
    }
    if (isKept) savepoint->Commit();
    savepoint.reset();
    transaction.Commit();

    std::vector<MediaAssetGroup> all = repository.All();
    ASSERT_EQ(all.size(), model.size());
    ASSERT_TRUE(std::is_sorted(all.begin(), all.end(),
                               [](const auto& one, const auto& other) { return one.Name() < other.Name(); }));
    for (const auto& [heldId, expected] : model) {
      const MediaAssetGroupId identifier(heldId);
      const auto multiAngle = repository.FindAngles(identifier);
      ASSERT_EQ(multiAngle.has_value(), expected.isMultiAngle);
      ASSERT_TRUE(!multiAngle || *multiAngle == *expected.group);
      expected.group->Metadata().Clear();
      ASSERT_EQ(*repository.Find(identifier), *expected.group);
      ASSERT_TRUE(std::count(all.begin(), all.end(), *expected.group) == 1);
      if (multiAngle) expected.group->Metadata() = multiAngle->Metadata().DeepCopy();
    }
  }
  EXPECT_GT(model.size(), 3U);
}

TEST_F(MediaAssetGroupRepositoryTest, WhatCantBeStoredIsRefusedByName) {
  AnglesMediaAssetGroup stored = Group("stored", {{"a", "Wide"}});
  repository.Put(stored);
  const auto identity = [](int page, int bank, int clip) {
    auto made = std::make_shared<Identity>();
    made->Page(page);
    made->Bank(bank);
    made->Clip(clip);
    return made;
  };
  const auto generic = std::make_shared<BusinessEntityModel::BaseTypes::GenericMetadataProfile>("notes");
  generic->Set("by", "Zoe");
  const struct {
    const char *id, *reason;
    bool isMultiAngle;
    std::function<void(MediaAssetGroup&)> change;
  } cases[] = {
      {"", "the group has no identifier", true, [](MediaAssetGroup&) {}},
      {"g", "g: item 1 refers to asset gone, which isn't stored", false,
       [](MediaAssetGroup& group) {
         SetItems(group, {{"a", ""}, {"gone", ""}});
       }},
      {"g", "g: item 0 refers to asset , which isn't stored", true,
       [](MediaAssetGroup& group) {
         SetItems(group, {{"", "Wide"}});
       }},
      {"g", "g: item 0 is a null pointer", true, [](MediaAssetGroup& group) { group.Items() = {nullptr}; }},
      {"stored", "stored: a multi-angle group of that identifier is stored, and this is a plain one", false,
       [](MediaAssetGroup&) {}},
      {"g", "g: there is no table for the metadata profile notes", true,
       [&](MediaAssetGroup& group) { group.Metadata().Set(generic); }},
      {"g", "g: there is no table for the metadata profile oru.dapoperator", false,
       [&](MediaAssetGroup& group) { group.Metadata().Set(identity(1, 1, 1)); }},
      {"g", "g: page 10 is off the range from 0 to 9", true,
       [&](MediaAssetGroup& group) { group.Metadata().Set(identity(10, 1, 1)); }},
      {"g", "g: bank -1 is off the range from 0 to 9", true,
       [&](MediaAssetGroup& group) { group.Metadata().Set(identity(1, -1, 1)); }},
      {"g", "g: clip 256 is off the range from 0 to 9", true,
       [&](MediaAssetGroup& group) { group.Metadata().Set(identity(1, 1, 256)); }},
  };
  for (const auto& [id, reason, isMultiAngle, change] : cases) {
    MediaAssetGroup plain(MediaAssetGroupId(id), "name");
    AnglesMediaAssetGroup multiAngle(MediaAssetGroupId(id), "name");
    MediaAssetGroup& group = isMultiAngle ? multiAngle : plain;
    change(group);
    EXPECT_THAT([&] { repository.Put(group); }, testing::ThrowsMessage<NotStoredException>(reason));
    EXPECT_EQ(group.ObjectId(), -1);
  }
  EXPECT_EQ(repository.All().size(), 1U);
  EXPECT_FALSE(repository.Find(MediaAssetGroupId("")) || repository.FindAngles(MediaAssetGroupId("")) ||
               repository.Remove(MediaAssetGroupId("")));
  {
    const ReadGuard reading(database);
    EXPECT_THROW(repository.Put(stored), InvalidOperationException);
    EXPECT_THROW(repository.Remove(stored.Id()), InvalidOperationException);
  }
  database.Close();
  EXPECT_THROW(repository.Put(stored), InvalidOperationException);
  EXPECT_THROW(repository.Find(stored.Id()), InvalidOperationException);
  EXPECT_EQ(stored.ObjectId(), 1);
}

}  // namespace Oru::DataModel::MediaAssets::Database
