#include "Oru/DataModel/MediaAssets/Database/DapOperatorMetadataTable.h"

#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
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
  void Set(const std::string& assignments) { Run("UPDATE DapOperatorMetadata SET " + assignments); }
  std::vector<std::string> StoredKeywords() {
    return TestSupport::Column(database, "SELECT nr || ' ' || keyword FROM DapOperatorKeywords ORDER BY nr");
  }
  DapOperatorMetadataProfile& Profile() { return clip.DapOperatorMetadata(); }

  MediaAsset clip = MakeClip("clip");
};

TEST_F(DapOperatorMetadataTableTest, TimeCodesArePackedIntoACountAndAFormat) {
  constexpr int64_t max = std::numeric_limits<int64_t>::max();
  struct {
    Rate rate;
    bool isDrop;
    int format;
    Rate readRate;
  } const cases[] = {{{50, 1}, false, 1, {50, 1}}, {{60, 1}, false, 2, {60, 1}}, {{60, 1}, true, 3, {60, 1}},
                     {{25, 1}, false, 0, {1, 1}},  {{30, 1}, false, 0, {1, 1}},  {{30, 1}, true, 0, {1, 1}},
                     {{24, 1}, false, 0, {1, 1}},  {{1, 1}, false, 0, {1, 1}},   {{100, 1}, false, 0, {1, 1}},
                     {{300, 1}, false, 0, {1, 1}}};
  for (const auto& [rate, isDrop, format, readRate] : cases) {
    const TimeCodeBuilder builder =
        TimeCodeBuilder().Date(2024, 2, 29).ClockTime(10, 11, 12, 0).Rate(rate).IsDrop(isDrop);
    const TimeCode user = builder.Build();
    const TimeCode tod = user.AddSample(max - user.TotalSample());
    SCOPED_TRACE(rate.ToString() + (isDrop ? " drop" : ""));
    Profile().UserTimecode(user);
    Profile().TodTimecode(tod);
    ASSERT_TRUE(assets.Save(clip));
    EXPECT_EQ(Value("SELECT userTimecodeFormat || ' ' || todTimecodeFormat FROM DapOperatorMetadata"),
              std::to_string(format) + " " + std::to_string(format));
    EXPECT_EQ(Value("SELECT userTimecode FROM DapOperatorMetadata"), std::to_string(user.TotalSample()));
    const DapOperatorMetadataProfile reading = Read();
    EXPECT_EQ(reading.UserTimecode().TotalSample(), user.TotalSample());
    EXPECT_EQ(reading.UserTimecode().Rate(), readRate);
    EXPECT_EQ(reading.UserTimecode().IsDrop(), format == 3);
    EXPECT_EQ(reading.TodTimecode().TotalSample(), max);
    if (format != 0) {
      EXPECT_EQ(reading.UserTimecode(), user);
      EXPECT_EQ(reading.TodTimecode(), tod);
    }
  }
}

TEST_F(DapOperatorMetadataTableTest, ATimeCodeWithoutADateComesBackWithOne) {
  const TimeCode clock = TimeCodeBuilder().ClockTime(10, 0, 0, 12).Rate(Rate(50, 1)).Build();
  Profile().UserTimecode(clock);
  ASSERT_TRUE(assets.Save(clip));
  EXPECT_FALSE(clock.HasDate());
  EXPECT_TRUE(Read().UserTimecode().HasDate());
  EXPECT_EQ(Read().UserTimecode().Year(), 1970);
  EXPECT_EQ(Read().UserTimecode().Sample(), 12);
}

TEST_F(DapOperatorMetadataTableTest, StoredFormatsThatAreNeverWrittenMean60WithoutDrop) {
  for (const char* format : {"4", "-1", "255", "2147483647"}) {
    Set(std::string("userTimecode = 5, userTimecodeFormat = ") + format);
    const TimeCode reading = Read().UserTimecode();
    EXPECT_EQ(reading.Rate(), Rate(60, 1)) << format;
    EXPECT_FALSE(reading.IsDrop());
    EXPECT_EQ(reading.TotalSample(), 5);
  }
}

TEST_F(DapOperatorMetadataTableTest, ANegativeCountReachesTheCallerAndLeavesTheDatabaseUsable) {
  for (const char* column : {"userTimecode", "todTimecode"}) {
    Set(std::string(column) + " = -1");
    MediaAsset asset;
    asset.ObjectId(clip.ObjectId());
    EXPECT_THAT([&] { assets.ReadDapOperatorMetadata(asset); },
                ThrowsMessage<std::out_of_range>("New TotalSample -1 must be positive (after 1/1/1900) "));
    EXPECT_FALSE(asset.HasDapOperatorMetadata());
    // No statement is left standing: the file can be written, and its tables dropped.
    EXPECT_TRUE(assets.Save(clip)) << log.Text();
    EXPECT_EQ(TestSupport::DeepDifference(database, clip), "");
    Run("CREATE TABLE T (x); DROP TABLE T; BEGIN EXCLUSIVE; COMMIT;");
  }
}

// A value outside its range is no value: the profile keeps the one that it holds.
TEST_F(DapOperatorMetadataTableTest, StoredPlacesOutsideTheirRangesArePassedOver) {
  struct {
    const char* column;
    const char* stored;
    // The place as read; absent when the one that is held stays.
    std::optional<int> taken;
  } const cases[] = {
      {"zuServerId", "0", {}},
      {"zuServerId", "25", {}},
      {"zuServerId", "-10", {}},
      {"zuServerId", "10", 10},
      {"zuServerId", "2147483640", 2147483640},
      {"dapIdPage", "0", 0},
      {"dapIdPage", "9", 9},
      {"dapIdPage", "10", {}},
      {"dapIdPage", "-1", {}},
      {"dapIdPage", "255", {}},
      {"dapIdPage", "NULL", 0},
      {"dapIdBank", "0", 0},
      {"dapIdBank", "9", 9},
      {"dapIdBank", "10", {}},
      {"dapIdBank", "255", {}},
      {"dapIdRow", "0", 0},
      {"dapIdRow", "9", 9},
      {"dapIdRow", "256", {}},
      {"dapIdRow", "-2147483648", {}},
      {"dapIdCamera", "0", {}},
      {"dapIdCamera", "65", 'A'},
      {"dapIdCamera", "76", 'L'},
      {"dapIdCamera", "NULL", {}},
  };
  for (const auto& [column, stored, taken] : cases) {
    for (const bool isNew : {true, false}) {
      SCOPED_TRACE(std::string(column) + " = " + stored + (isNew ? ", new" : ", filled"));
      ASSERT_TRUE(assets.Save(clip));
      Set("zuServerId = 20, dapIdPage = 2, dapIdBank = 3, dapIdRow = 4, dapIdCamera = 66");
      Set(std::string(column) + " = " + stored);
      MediaAsset asset;
      asset.ObjectId(clip.ObjectId());
      if (!isNew) {
        asset.Metadata().Set(std::make_shared<DapOperatorMetadataProfile>());
        asset.DapOperatorMetadata().ServerId(ZuServerId(70));
        asset.DapOperatorMetadata().Page(7);
        asset.DapOperatorMetadata().Bank(7);
        asset.DapOperatorMetadata().Row(7);
        asset.DapOperatorMetadata().Camera('G');
      }
      assets.ReadDapOperatorMetadata(asset);
      const DapOperatorMetadataProfile& reading = asset.DapOperatorMetadata();
      const auto expected = [&, name = std::string(column), value = taken](const char* of, int whenStored,
                                                                           int whenNew, int whenHeld) {
        if (name != of) return whenStored;
        return value.value_or(isNew ? whenNew : whenHeld);
      };
      EXPECT_EQ(reading.ServerId().SerialNumber(), expected("zuServerId", 20, 0, 70));
      EXPECT_EQ(reading.Page(), expected("dapIdPage", 2, 255, 7));
      EXPECT_EQ(reading.Bank(), expected("dapIdBank", 3, 255, 7));
      EXPECT_EQ(reading.Row(), expected("dapIdRow", 4, 255, 7));
      EXPECT_EQ(reading.Camera(), expected("dapIdCamera", 'B', 0, 'G'));
    }
  }
}

TEST_F(DapOperatorMetadataTableTest, ACameraOffTheGridIsRefusedByTheFile) {
  for (const char camera : {'A', 'L', '\0'}) {
    Profile().Camera(camera);
    EXPECT_TRUE(assets.Save(clip)) << camera;
  }
  for (const char camera : {'@', 'M', 'a', '\xc1'}) {
    SCOPED_TRACE(static_cast<int>(camera));
    log.Clear();
    Profile().Camera(camera);
    EXPECT_FALSE(assets.Save(clip));
    EXPECT_TRUE(log.Contains("CHECK constraint failed")) << log.Text();
    EXPECT_EQ(Value("SELECT dapIdCamera FROM DapOperatorMetadata"), "0");
  }
  Profile().Camera('B');
  EXPECT_TRUE(assets.Save(clip));
  EXPECT_EQ(TestSupport::DeepDifference(database, clip), "");
}

TEST_F(DapOperatorMetadataTableTest, AnInvalidPlaceReachesTheCallerAndLeavesTheTableUsable) {
  Profile().Page(256);
  EXPECT_THROW(assets.Save(clip), std::invalid_argument);
  Profile().Page(255);
  EXPECT_TRUE(assets.Save(clip));
  EXPECT_EQ(TestSupport::DeepDifference(database, clip), "");
}

TEST_F(DapOperatorMetadataTableTest, TheUserFlagIsReadAheadOfTheUiFlag) {
  struct {
    const char* stored;
    bool isUser, isUi;
  } const cases[] = {{"userProtected = 0, dapUIProtected = 0", false, false},
                     {"userProtected = 1, dapUIProtected = 0", true, false},
                     {"userProtected = 0, dapUIProtected = 1", true, true},
                     {"userProtected = 1, dapUIProtected = 1", true, true}};
  for (const auto& [stored, isUser, isUi] : cases) {
    Set(stored);
    EXPECT_EQ(Read().IsUserProtected(), isUser) << stored;
    EXPECT_EQ(Read().IsDapUiProtected(), isUi) << stored;
  }
  // Into a profile that is protected: the flags of the file hold, but for the user's behind the UI's of
  // before.
  Set("userProtected = 0, dapUIProtected = 0");
  Profile().DapUIProtected(true);
  assets.ReadDapOperatorMetadata(clip);
  EXPECT_TRUE(Profile().IsUserProtected());
  EXPECT_FALSE(Profile().IsDapUiProtected());
}

TEST_F(DapOperatorMetadataTableTest, KeywordsAreReplacedAndKeepTheirPlaces) {
  const std::vector<StringVector> lists = {{"first", "goal"},
                                           {"one", "", "three"},
                                           {"only"},
                                           {"", ""},
                                           {},
                                           {"O'Brien", std::string("a\0b", 3), "\u00e9"}};
  for (const StringVector& keywords : lists) {
    Profile().Keywords(keywords);
    ASSERT_TRUE(assets.Save(clip));
    EXPECT_EQ(Read().Keywords(), keywords);
    EXPECT_EQ(Count("DapOperatorKeywords"), static_cast<int>(keywords.size()));
  }
  // Gaps of a file are empty keywords.
  Run("DELETE FROM DapOperatorKeywords; INSERT INTO DapOperatorKeywords VALUES (1, 3, 'd'), (1, 1, 'b')");
  EXPECT_THAT(Read().Keywords(), ElementsAre("", "b", "", "d"));
  Run("INSERT INTO DapOperatorKeywords VALUES (1, -1, 'x')");
  EXPECT_THROW(Read(), std::out_of_range);
  EXPECT_TRUE(assets.Save(clip));
}

TEST_F(DapOperatorMetadataTableTest, KeywordsAreNotWrittenOverStoredOnes) {
  auto& table = assets.GetDapOperatorKeywordsTable();
  std::vector<BusinessEntityModel::BaseTypes::Utf8String> none, some = {"x", "y", "z"};
  EXPECT_TRUE(table.Write(none, clip.ObjectId()));
  EXPECT_FALSE(table.Write(some, clip.ObjectId()));
  EXPECT_TRUE(log.Contains("UNIQUE constraint failed: DapOperatorKeywords.refDapOperatorMetadata"))
      << log.Text();
  EXPECT_THAT(StoredKeywords(), ElementsAre("0 first", "1 goal"));
  EXPECT_TRUE(table.DeleteOnKey(clip.ObjectId()) && table.DeleteOnKey(12345));
  EXPECT_TRUE(table.Write(some, clip.ObjectId()));
  EXPECT_THAT(StoredKeywords(), ElementsAre("0 x", "1 y", "2 z"));
  EXPECT_FALSE(table.Write(some, 12345));
  EXPECT_TRUE(assets.Delete(clip.ObjectId()));
  EXPECT_THAT(StoredKeywords(), ElementsAre());
}

TEST_F(DapOperatorMetadataTableTest, WithoutAProfileTheStoredRowStays) {
  MediaAsset row;
  ASSERT_TRUE(assets.GetObject(clip.ObjectId(), row) && assets.Save(row));
  EXPECT_EQ(Read().Icon(), "first");
  EXPECT_THAT(StoredKeywords(), ElementsAre("0 first", "1 goal"));

  // Keywords alone make a profile that holds nothing else.
  assets.ReadDapOperatorKeyword(row);
  EXPECT_THAT(row.DapOperatorMetadata().Keywords(), ElementsAre("first", "goal"));
  EXPECT_EQ(row.DapOperatorMetadata().Icon(), "");
  Run("DELETE FROM DapOperatorMetadata");
  EXPECT_TRUE(Read() == DapOperatorMetadataProfile());
  EXPECT_EQ(Read().ObjectId(), -1);
}

TEST_F(DapOperatorMetadataTableTest, AProfileThatCameFromAnotherAssetDoesNotOverwriteThatOnesRow) {
  const int64_t first = clip.ObjectId();
  MediaAsset other{MediaAssetId("other")};
  const auto moved = std::make_shared<DapOperatorMetadataProfile>(Profile());
  EXPECT_EQ(moved->ObjectId(), first);
  moved->Icon("moved");
  moved->Keywords({"moved"});
  other.Metadata().Set(moved);
  ASSERT_TRUE(assets.Save(other)) << log.Text();
  EXPECT_EQ(moved->ObjectId(), other.ObjectId());
  EXPECT_EQ(TestSupport::DeepDifference(database, clip), "");
  EXPECT_EQ(TestSupport::DeepDifference(database, other), "");
  EXPECT_EQ(Count("DapOperatorMetadata"), 2);

  // And back again, over the row that is there.
  clip.Metadata().Set(moved);
  ASSERT_TRUE(assets.Save(clip));
  EXPECT_EQ(Count("DapOperatorMetadata WHERE icon = 'moved'"), 2);
  EXPECT_EQ(moved->ObjectId(), first);

  // A stale id without a row of its own.
  MediaAsset third{MediaAssetId("third")};
  moved->ObjectId(98765);
  third.Metadata().Set(moved);
  ASSERT_TRUE(assets.Save(third));
  EXPECT_EQ(TestSupport::DeepDifference(database, third), "");
}

}  // namespace Oru::DataModel::MediaAssets::Database
