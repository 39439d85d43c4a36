#include "Oru/DataModel/MediaAssets/Database/DapOperatorMetadataTable.h"

#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using testing::ElementsAre;
using testing::ThrowsMessage;
using TestSupport::MakeClip;
using TimePoints::Rate;
using TimePoints::TimeCode;
using TimePoints::TimeCodeBuilder;

class DapOperatorMetadataTableTest : public TestSupport::OpenDatabase {
 protected:
  DapOperatorMetadataTableTest() { EXPECT_TRUE(assets.Save(clip)) << log.Text(); }

  // The operator's profile of the clip, read into an asset that holds none.
  DapOperatorMetadataProfile Read() {
    MediaAsset asset;
    asset.ObjectId(clip.ObjectId());
    assets.ReadDapOperatorMetadata(asset);
    return asset.DapOperatorMetadata();
  }
  DapOperatorMetadataProfile& Profile() { return clip.DapOperatorMetadata(); }

  MediaAsset clip = MakeClip("clip");
};

TEST_F(DapOperatorMetadataTableTest, TimeCodesOfOtherRatesAreReadAsFieldsOfOne) {
  for (const auto& [rate, isDrop] :
       {std::pair(Rate(25, 1), false), {Rate(30, 1), true}, {Rate(100, 1), false}}) {
    const TimeCode user = TimeCodeBuilder().ClockTime(10, 11, 12, 0).Rate(rate).IsDrop(isDrop).Build();
    Profile().UserTimecode(user);
    ASSERT_TRUE(assets.Save(clip));
    EXPECT_EQ(Read().UserTimecode(), TimeCodeBuilder().Year(1900).Rate({1, 1}).Build() + user.TotalSample());
  }
  Run("UPDATE DapOperatorMetadata SET userTimecode = 5, userTimecodeFormat = 4");
  EXPECT_EQ(Read().UserTimecode(), TimeCodeBuilder().Year(1900).Rate({60, 1}).Build() + 5) << "unknown";
}

TEST_F(DapOperatorMetadataTableTest, WhatCannotBeReadOrWrittenReachesTheCallerAndLeavesTheDatabaseUsable) {
  for (const char* column : {"userTimecode", "todTimecode"}) {
    Run(std::string("UPDATE DapOperatorMetadata SET ") + column + " = -1");
    EXPECT_THAT([&] { Read(); },
                ThrowsMessage<std::out_of_range>("New TotalSample -1 must be positive (after 1/1/1900) "));
    // No statement is left open: the file can be written, and its tables dropped.
    EXPECT_TRUE(assets.Save(clip)) << log.Text();
    Run("CREATE TABLE T (x); DROP TABLE T; BEGIN EXCLUSIVE; COMMIT;");
  }
  for (const int page : {-1, 256}) {
    Profile().Page(page);
    EXPECT_THROW(assets.Save(clip), std::invalid_argument);
  }
  Profile().Page(255);
  const TimeCode sound = Profile().UserTimecode();
  Profile().UserTimecode(TimeCodeBuilder().Year(1900).Sample(-1).Build());
  EXPECT_FALSE(assets.Save(clip)) << "a read would refuse it";
  EXPECT_TRUE(log.Contains("userTimecode has the negative count -1"));
  Profile().UserTimecode(sound);
  for (const int32_t place : {-1, 65536}) {
    KeywordEncapsulated keyword(clip.ObjectId(), place, BusinessEntityModel::BaseTypes::Utf8String("k"));
    EXPECT_FALSE(assets.GetDapOperatorKeywordsTable().Save(keyword)) << "nor could it be read here";
  }
  EXPECT_TRUE(log.Contains("no profile could hold a keyword at 65536"));
  for (const char camera : {'@', 'M', 'a', '\xc1'}) {
    log.Clear();
    Profile().Camera(camera);
    EXPECT_FALSE(assets.Save(clip));
    EXPECT_TRUE(log.Contains("CHECK constraint failed")) << log.Text();
  }
  Profile().Camera('B');
  EXPECT_TRUE(assets.Save(clip));
  EXPECT_TRUE(TestSupport::IsStored(database, clip));
}

// A value outside its range is no value: the profile keeps the one that it holds.
TEST_F(DapOperatorMetadataTableTest, StoredPlacesOutsideTheirRangesArePassedOver) {
  const DapId held(ZuServerId(70), 7, 7, 7, 'G');
  struct {
    const char* assignment;
    bool isRead;
  } const cases[] = {
      {"zuServerId = 0", false},  {"zuServerId = 25", false},    {"dapIdPage = 10", false},
      {"dapIdPage = -1", false},  {"dapIdBank = 10", false},     {"dapIdRow = 256", false},
      {"dapIdCamera = 0", false}, {"dapIdCamera = NULL", false}, {"zuServerId = 2147483640", true},
      {"dapIdPage = 0", true},    {"dapIdPage = NULL", true},    {"dapIdRow = 9", true},
  };
  for (const auto& [assignment, isRead] : cases) {
    Run("UPDATE DapOperatorMetadata SET zuServerId = 70, dapIdPage = 7, dapIdBank = 7, dapIdRow = 7, dapIdCamera = 71");
    MediaAsset asset;
    asset.ObjectId(clip.ObjectId());
    assets.ReadDapOperatorMetadata(asset);
    EXPECT_EQ(asset.DapOperatorMetadata().DapId(), held);
    Run(std::string("UPDATE DapOperatorMetadata SET ") + assignment);
    assets.ReadDapOperatorMetadata(asset);
    EXPECT_EQ(asset.DapOperatorMetadata().DapId() != held, isRead) << assignment;
  }
}

TEST_F(DapOperatorMetadataTableTest, GapsAmongStoredKeywordsAreEmptyOnes) {
  Run("DELETE FROM DapOperatorKeywords; INSERT INTO DapOperatorKeywords VALUES (1, 3, 'd'), (1, 1, 'b')");
  EXPECT_THAT(Read().Keywords(), ElementsAre("", "b", "", "d"));
  Run("INSERT INTO DapOperatorKeywords VALUES (1, -1, 'x')");
  EXPECT_THROW(Read(), std::out_of_range);
}

}  // namespace Oru::DataModel::MediaAssets::Database
