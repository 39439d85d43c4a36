#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using TestSupport::MakeClip;
using TestSupport::MakeResource;

namespace {

// Shows how far a save got: each table by its place in the list.
using Places = std::vector<std::string>;

// All tables below an asset, in the order in which the save of a new clip first writes to each.
Places SavedTables() {
  std::istringstream names(
      "MediaAsset Annotation MetadataAnnotation TimeBoundsMediaAsset DapOperatorMetadata DapOperatorKeywords "
      "MetadataMediaAsset MediaResource TimeBoundsMediaResource MetadataMediaResource Stream "
      "TimeBoundsStream "
      "MetadataStream Essence MetadataEssence VideoEssence AudioEssence DataEssence "
      "RelationMediaAssetMediaResource Track TrackChannel RelationAssetTrack");
  return {std::istream_iterator<std::string>(names), {}};
}

}  // namespace

class MediaAssetSaveTest : public TestSupport::OpenDatabase {
 protected:
  Places FilledTables() {
    Places filled;
    for (const std::string& table : savedTables) {
      if (Count(table) > 0) filled.push_back(table);
    }
    return filled;
  }

  const Places savedTables = SavedTables();
};

TEST_F(MediaAssetSaveTest, AFirstSaveStopsAtTheFailedStepAndKeepsTheStepsAhead) {
  for (std::size_t failing = 0; failing < savedTables.size(); ++failing) {
    SCOPED_TRACE(savedTables[failing]);
    Run("CREATE TRIGGER Injected BEFORE INSERT ON " + savedTables[failing] +
        " BEGIN SELECT RAISE(ABORT, 'injected failure'); END");
    MediaAsset clip = MakeClip("clip");
    EXPECT_FALSE(assets.Save(clip));
    EXPECT_EQ(log.Lines().size(), 1U) << log.Text();
    EXPECT_TRUE(log.Contains("0xC0090118") && log.Contains("injected failure")) << log.Text();
    const auto end = savedTables.begin() + static_cast<std::ptrdiff_t>(failing);
    EXPECT_EQ(FilledTables(), Places(savedTables.begin(), end));
    EXPECT_EQ(clip.ObjectId(), failing == 0 ? -1 : std::stoll(Value("SELECT key FROM MediaAsset")));
    Run("DROP TRIGGER Injected");
    log.Clear();

    // The asset's row is there by now, so that the next save is none of a new asset and writes no link.
    const bool hasLinks = failing == 0;
    EXPECT_TRUE(assets.Save(clip)) << log.Text();
    EXPECT_EQ(Count("RelationMediaAssetMediaResource"), hasLinks || failing > 18 ? 1 : 0);
    EXPECT_EQ(Count("RelationAssetTrack"), hasLinks ? 1 : 0);
    Run("DELETE FROM MediaAsset; DELETE FROM MediaResource; DELETE FROM Track;");
    ASSERT_EQ(FilledTables(), Places());
  }
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

  child.Parent(MediaAssetId("kept"));
  ASSERT_TRUE(assets.GetObject(child.ObjectId(), child));
  EXPECT_EQ(child.Ancestor().Id().Value() + child.Parent().Id().Value(), "grandparentkept");
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

}  // namespace Oru::DataModel::MediaAssets::Database
