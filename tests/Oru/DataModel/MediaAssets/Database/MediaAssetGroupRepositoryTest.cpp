#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupRepository.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/NotStoredException.h"

#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using namespace Common::Databases::Sqlite;

class MediaAssetGroupRepositoryTest : public TestSupport::OpenDatabase {};

TEST_F(MediaAssetGroupRepositoryTest, WhatCantBeStoredIsRefusedByName) {
  MediaAsset asset{MediaAssetId("a")};
  ASSERT_TRUE(assets.Save(asset));
  MediaAssetGroupRepository repository(database);
  AnglesMediaAssetGroup stored = TestSupport::MakeGroup("stored", {"a"});
  repository.Put(stored);
  const auto identity = [](int page, int bank, int clip) {
    auto made = std::make_shared<AnglesDapOperatorMetadataProfile>();
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
    std::vector<std::string> clips;
    std::shared_ptr<BusinessEntityModel::BaseTypes::MetadataProfile> profile;
  } cases[] = {
      {"", "the group has no identifier", true, {}, {}},
      {"g", "g: item 1 refers to asset gone, which isn't stored", false, {"a", "gone"}, {}},
      {"g", "g: item 0 refers to asset , which isn't stored", true, {""}, {}},
      {"g", "g: item 0 is a null pointer", true, {"null"}, {}},
      {"stored",
       "stored: a multi-angle group of that identifier is stored, and this is a plain one",
       false,
       {},
       {}},
      {"g", "g: there is no table for the metadata profile notes", true, {}, generic},
      {"g", "g: there is no table for the metadata profile oru.dapoperator", false, {}, identity(1, 1, 1)},
      {"g", "g: page 10 is off the range from 0 to 9", true, {}, identity(10, 1, 1)},
      {"g", "g: bank -1 is off the range from 0 to 9", true, {}, identity(1, -1, 1)},
      {"g", "g: clip 256 is off the range from 0 to 9", true, {}, identity(1, 1, 256)},
  };
  for (const auto& [id, reason, isMultiAngle, clips, profile] : cases) {
    AnglesMediaAssetGroup multiAngle = TestSupport::MakeGroup(id, clips);
    if (clips == std::vector<std::string>{"null"}) multiAngle.Items() = {nullptr};
    if (profile) multiAngle.Metadata().Set(profile);
    MediaAssetGroup plain = multiAngle;
    MediaAssetGroup& group = isMultiAngle ? multiAngle : plain;
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
