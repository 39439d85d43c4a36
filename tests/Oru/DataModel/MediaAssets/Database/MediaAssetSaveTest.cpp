#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Sqlite::TransactionGuard;
using TestSupport::MakeClip;
using TestSupport::MakeResource;

namespace {

// All tables below an asset, in the order in which the save of a new clip first writes to each.
const std::vector<std::string> savedTables = {"MediaAsset",
                                              "Annotation",
                                              "MetadataAnnotation",
                                              "TimeBoundsMediaAsset",
                                              "DapOperatorMetadata",
                                              "DapOperatorKeywords",
                                              "MetadataMediaAsset",
                                              "MediaResource",
                                              "TimeBoundsMediaResource",
                                              "MetadataMediaResource",
                                              "Stream",
                                              "TimeBoundsStream",
                                              "MetadataStream",
                                              "Essence",
                                              "MetadataEssence",
                                              "VideoEssence",
                                              "AudioEssence",
                                              "DataEssence",
                                              "RelationMediaAssetMediaResource",
                                              "Track",
                                              "TrackChannel",
                                              "RelationAssetTrack"};

// Shows how far a save got: each table by its place in the list.
using Places = std::vector<std::string>;

}  // namespace

class MediaAssetSaveTest : public TestSupport::OpenDatabase {
 protected:
  void FailOn(const std::string& event, const std::string& table) {
    Run("CREATE TRIGGER Injected BEFORE " + event + " ON " + table +
        " BEGIN SELECT RAISE(ABORT, 'injected failure'); END");
  }
  void Mend() {
    Run("DROP TRIGGER Injected");
    log.Clear();
  }

  Places FilledTables() {
    Places filled;
    for (const std::string& table : savedTables) {
      if (Count(table) > 0) filled.push_back(table);
    }
    return filled;
  }
};

TEST_F(MediaAssetSaveTest, AFirstSaveStopsAtTheFailedStepAndKeepsTheStepsAhead) {
  for (std::size_t failing = 0; failing < savedTables.size(); ++failing) {
    SCOPED_TRACE(savedTables[failing]);
    FailOn("INSERT", savedTables[failing]);
    MediaAsset clip = MakeClip("clip");
    EXPECT_FALSE(assets.Save(clip));
    EXPECT_EQ(log.Lines().size(), 1U) << log.Text();
    EXPECT_TRUE(log.Contains("0xC0090118") && log.Contains("injected failure")) << log.Text();
    const auto end = savedTables.begin() + static_cast<std::ptrdiff_t>(failing);
    EXPECT_EQ(FilledTables(), Places(savedTables.begin(), end));
    EXPECT_EQ(clip.ObjectId(), failing == 0 ? -1 : std::stoll(Value("SELECT key FROM MediaAsset")));
    Mend();

    // The asset's row is there by now, so that the next save is none of a new asset and writes no link.
    const bool hasLinks = failing == 0;
    EXPECT_TRUE(assets.Save(clip)) << log.Text();
    EXPECT_EQ(Count("RelationMediaAssetMediaResource"), hasLinks || failing > 18 ? 1 : 0);
    EXPECT_EQ(Count("RelationAssetTrack"), hasLinks ? 1 : 0);
    Run("DELETE FROM MediaAsset; DELETE FROM MediaResource; DELETE FROM Track;");
    ASSERT_EQ(FilledTables(), Places());
  }
}

TEST_F(MediaAssetSaveTest, AGuardMakesAFirstSaveAllOrNothing) {
  for (const std::string& failing : savedTables) {
    SCOPED_TRACE(failing);
    FailOn("INSERT", failing);
    {
      TransactionGuard transaction(database);
      MediaAsset clip = MakeClip("clip");
      ASSERT_FALSE(assets.Save(clip));
    }
    EXPECT_EQ(FilledTables(), Places());
    Mend();
  }
  TransactionGuard transaction(database);
  MediaAsset clip = MakeClip("clip");
  ASSERT_TRUE(assets.Save(clip));
  EXPECT_GE(transaction.Commit(), 22);
  EXPECT_EQ(FilledTables(), savedTables);
  EXPECT_EQ(TestSupport::DeepDifference(database, clip), "");
}

TEST_F(MediaAssetSaveTest, AFailedSaveOfAStoredAssetLeavesNewAheadOldBehindAndNothingInBetween) {
  struct {
    const char* event;
    const char* table;
    // Of the steps in order, as stored: annotation, operator, metadata, resource, track.
    const char* stored;
  } const cases[] = {
      {"UPDATE", "MediaAsset", "old old old old old"},
      {"DELETE", "Annotation", "old old old old old"},
      {"INSERT", "Annotation", "- old old old old"},
      {"INSERT", "MetadataAnnotation", "new old old old old"},
      {"INSERT", "TimeBoundsMediaAsset", "new old old old old"},
      {"DELETE", "DapOperatorKeywords", "new old old old old"},
      {"UPDATE", "DapOperatorMetadata", "new old old old old"},
      {"INSERT", "DapOperatorKeywords", "new new old old old"},
      {"DELETE", "MetadataMediaAsset", "new new old old old"},
      {"INSERT", "MetadataMediaAsset", "new new - old old"},
      {"UPDATE", "MediaResource", "new new new old old"},
      {"UPDATE", "DataEssence", "new new new new old"},
      {"UPDATE", "Track", "new new new new old"},
      {"INSERT", "TrackChannel", "new new new new new"},
  };
  for (const auto& [event, table, stored] : cases) {
    SCOPED_TRACE(std::string(event) + " of " + table);
    Run("DELETE FROM MediaAsset; DELETE FROM MediaResource; DELETE FROM Track;");
    MediaAsset old = MakeClip("clip", "old");
    ASSERT_TRUE(assets.Save(old));
    FailOn(event, table);
    {
      const TransactionGuard transaction(database);
      MediaAsset changed = MakeClip("clip", "new");
      ASSERT_FALSE(assets.Save(changed));
      EXPECT_EQ(changed.ObjectId(), old.ObjectId());
    }
    EXPECT_EQ(TestSupport::DeepDifference(database, old), "");

    MediaAsset changed = MakeClip("clip", "new");
    EXPECT_FALSE(assets.Save(changed));
    EXPECT_EQ(
        Value(
            "SELECT coalesce((SELECT data FROM Annotation), '-') || ' ' || (SELECT icon FROM "
            "DapOperatorMetadata) || ' ' || coalesce((SELECT value FROM MetadataMediaAsset), '-') || ' ' || "
            "(SELECT name FROM MediaResource) || ' ' || (SELECT name FROM Track)"),
        stored);
    EXPECT_EQ(Value("SELECT name FROM MediaAsset"), std::string(table) == "MediaAsset" ? "old" : "new");
    Mend();
    EXPECT_TRUE(assets.Save(changed));
    EXPECT_EQ(TestSupport::DeepDifference(database, changed), "");
  }
}

TEST_F(MediaAssetSaveTest, ARefusedRowLeavesTheObjectItsIdAndTheNextSaveWorks) {
  MediaAsset first = MakeClip("first"), second = MakeClip("second");
  ASSERT_TRUE(assets.Save(first) && assets.Save(second));
  const int64_t key = second.ObjectId();
  second.Id("first");
  EXPECT_FALSE(assets.Save(second));
  EXPECT_TRUE(log.Contains("UNIQUE constraint failed: MediaAsset.id")) << log.Text();
  EXPECT_EQ(second.ObjectId(), key);

  MediaAsset twin = MakeClip("first");
  EXPECT_FALSE(assets.Insert(twin, true));
  EXPECT_EQ(twin.ObjectId(), -1);

  second.Id("second");
  EXPECT_TRUE(assets.Save(second));
  EXPECT_EQ(TestSupport::DeepDifference(database, first), "");
  EXPECT_EQ(TestSupport::DeepDifference(database, second), "");
}

TEST_F(MediaAssetSaveTest, AnUnsetReferenceIsNullAlsoAfterASaveThatBoundIt) {
  MediaAsset child{MediaAssetId("child")}, orphan{MediaAssetId("orphan")};
  child.Ancestor(MediaAssetId("grandparent"));
  child.Parent(MediaAssetId("parent"));
  const std::string references = "SELECT group_concat(quote(ancestor) || quote(parent)) FROM MediaAsset";
  ASSERT_TRUE(assets.Save(child) && assets.Save(orphan));
  EXPECT_EQ(Value(references), "'grandparent''parent',NULLNULL");
  // The same by update, each behind the other.
  ASSERT_TRUE(assets.Save(child) && assets.Save(orphan));
  EXPECT_EQ(Value(references), "'grandparent''parent',NULLNULL");
  child.Parent({});
  ASSERT_TRUE(assets.Save(child) && assets.Save(orphan));
  EXPECT_EQ(Value(references), "'grandparent'NULL,NULLNULL");

  MediaAsset reading;
  reading.Parent(MediaAssetId("kept"));
  ASSERT_TRUE(assets.GetObject(child.ObjectId(), reading));
  EXPECT_EQ(reading.Ancestor().Id(), "grandparent");
  EXPECT_FALSE(reading.Ancestor());
  EXPECT_EQ(reading.Parent().Id(), "kept");
}

TEST_F(MediaAssetSaveTest, LinksAreWrittenWithTheAssetsRowAndNeverAgain) {
  MediaAsset clip = MakeClip("clip");
  clip.MediaResources().Insert(MediaResourceId("known by its identifier only"));
  ASSERT_TRUE(assets.Save(clip));
  EXPECT_EQ(Count("RelationMediaAssetMediaResource"), 1);

  MediaAsset again = MakeClip("clip");
  again.MediaResources().Insert(MakeResource("late"));
  again.Tracks().Insert(std::make_shared<Track>(TrackId("late")));
  ASSERT_TRUE(assets.Save(again) && assets.Save(clip));
  EXPECT_EQ(Count("MediaResource"), 2);
  EXPECT_EQ(Count("Track"), 2);
  EXPECT_EQ(Count("RelationMediaAssetMediaResource"), 1);
  EXPECT_EQ(Count("RelationAssetTrack"), 1);

  // What a clip no longer holds stays linked.
  again.MediaResources().Clear();
  again.Tracks().Clear();
  ASSERT_TRUE(assets.Save(again));
  const MediaAsset reading = TestSupport::ReadDeep(database, clip.ObjectId());
  ASSERT_EQ(reading.MediaResources().Size(), 1U);
  EXPECT_EQ(reading.MediaResources().Front().Id(), "clip/resource");
  EXPECT_EQ(reading.Tracks().Size(), 1U);
}

TEST_F(MediaAssetSaveTest, AnAssetOfWhichOnlyTheRowWasReadLosesWhatItOwnsButNotItsOperatorAndLinks) {
  MediaAsset clip = MakeClip("clip");
  ASSERT_TRUE(assets.Save(clip));
  MediaAsset row;
  ASSERT_TRUE(assets.GetObject(clip.ObjectId(), row) && assets.Save(row));
  const Places lost = {"Annotation", "MetadataAnnotation", "TimeBoundsMediaAsset", "MetadataMediaAsset"};
  for (const std::string& table : savedTables) {
    const bool isLost = std::count(lost.begin(), lost.end(), table) > 0;
    EXPECT_EQ(Count(table) == 0, isLost) << table;
  }
  EXPECT_EQ(Count("DapOperatorKeywords"), 2);
}

TEST_F(MediaAssetSaveTest, TwoAssetsShareAResourceAndATrackAndTheLastSaveOfThemCounts) {
  MediaAsset one = MakeClip("one");
  MediaAsset two{MediaAssetId("two")};
  two.MediaResources() = one.MediaResources();
  two.Tracks() = one.Tracks();
  ASSERT_TRUE(assets.Save(one) && assets.Save(two));
  // Another object of the same identifier finds the row.
  const auto renamed = MakeResource("one/resource");
  renamed->Name("renamed");
  MediaAsset three{MediaAssetId("three")};
  three.MediaResources().Insert(renamed);
  three.Tracks().Insert(std::make_shared<Track>(TrackId("one/track"), "renamed"));
  ASSERT_TRUE(assets.Save(three));
  EXPECT_EQ(Count("MediaResource"), 1);
  EXPECT_EQ(Count("Stream"), 1);
  EXPECT_EQ(Count("Essence"), 3);
  EXPECT_EQ(Count("Track"), 1);
  EXPECT_EQ(Count("RelationMediaAssetMediaResource"), 3);
  for (const MediaAsset* asset : {&one, &two, &three}) {
    const MediaAsset reading = TestSupport::ReadDeep(database, asset->ObjectId());
    ASSERT_EQ(reading.MediaResources().Size(), 1U);
    EXPECT_EQ(reading.MediaResources().Front()->Name(), "renamed");
    EXPECT_EQ(reading.Tracks().Front()->Name(), "renamed");
    EXPECT_TRUE(reading.Tracks().Front()->Channels().empty());
  }
}

}  // namespace Oru::DataModel::MediaAssets::Database
