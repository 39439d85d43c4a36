#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/RecordingCursor.h"
#include "support/StoredHash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

namespace Edits = BusinessEntityModel::Edits;

// Which columns each table binds and reads, as which types, in which order, and where it stops when one is
// refused.
class TableColumnsTest : public testing::Test {
 protected:
  using Numbers = std::map<std::string, int64_t>;
  using Call = std::function<bool(TestSupport::RecordingCursor&)>;

  // @param ends  the numbers of columns after which a group ends: a refusal ends the group that it happens in, and
  // only that
  template <class TableClass, class Row>
  void Bind(TableClass& table, Row row, const std::vector<std::size_t>& ends = {}) {
    Note(table.GetTableName() + " binds", {}, ends,
         [&](auto& cursor) { return table.BindToCursor(cursor, row); });
  }
  template <class TableClass, class Object>
  void Read(TableClass& table, Object&& object, const Numbers& numbers = {}) {
    Note(table.GetTableName() + " reads", numbers, {}, [&](auto& cursor) {
      try {
        table.ReadFromCursor(cursor, object, true);
        return true;
      } catch (const Common::Databases::ArgumentException&) {
        return false;
      }
    });
  }
  template <class TableClass, class Row>
  void BindAndRead(TableClass& table, Row row) {
    Bind(table, row);
    Read(table, row);
  }
  template <class TableClass, class Row, class Object>
  void BindAndRead(TableClass& table, const Row& row, Object&& object) {
    Bind(table, row);
    Read(table, object);
  }

  void Note(const std::string& what, const Numbers& numbers, const std::vector<std::size_t>& ends,
            const Call& call) {
    TestSupport::RecordingCursor whole;
    whole.numbers = numbers;
    EXPECT_TRUE(call(whole)) << what;
    const auto& all = whole.Calls();
    for (std::size_t refused = 1; refused <= all.size(); ++refused) {
      TestSupport::RecordingCursor cursor(refused);
      cursor.numbers = numbers;
      EXPECT_FALSE(call(cursor)) << what;
      const auto end =
          std::find_if(ends.begin(), ends.end(), [&](std::size_t each) { return each >= refused; });
      auto expected = all;
      expected.erase(
          expected.begin() + static_cast<std::ptrdiff_t>(refused),
          end == ends.end() ? expected.end() : expected.begin() + static_cast<std::ptrdiff_t>(*end));
      EXPECT_EQ(cursor.Calls(), expected) << what;
    }
    columns += what + ':';
    for (const std::string& column : all)
      columns += ' ' + column + ',';
    columns += '\n';
  }

  DataModelDatabase database{nullptr};
  std::string columns;
};

TEST_F(TableColumnsTest, AreBoundAndReadInTheirOrderUpToTheFirstThatIsRefused) {
  MediaAssetTable& assets = database.GetMediaAssetTable();
  MediaAsset asset(MediaAssetId("asset"));
  Bind(assets, asset);
  asset.Ancestor(MediaAssetReference(MediaAssetId("ancestor")));
  asset.Parent(MediaAssetReference(MediaAssetId("parent")));
  BindAndRead(assets, asset);
  BindAndRead(assets.GetMediaResourceTable(), MediaResource(MediaResourceId("resource")));
  BindAndRead(assets.GetRelationMediasTable(), RelationMedias());
  StreamTable& streams = assets.GetStreamTable();
  Stream stream(StreamId("stream"));
  BindAndRead(streams, StreamEncapsulated(1, stream), stream);
  VideoEssence video;
  AudioEssence audio;
  DataEssence data;
  BindAndRead(streams.GetEssenceTable(), EssenceEncapsulated(1, video), video);
  BindAndRead(streams.GetVideoEssenceTable(), EssenceEncapsulated(1, video), video);
  BindAndRead(streams.GetAudioEssenceTable(), EssenceEncapsulated(1, audio), audio);
  BindAndRead(streams.GetDataEssenceTable(), EssenceEncapsulated(1, data), data);
  BindAndRead(assets.GetTrackTable(), Track());
  BindAndRead(assets.GetTrackTable().GetTrackChannelTable(), TrackChannelEncapsulated());
  BindAndRead(assets.GetRelationAssetTrackTable(), RelationAssetTrack());
  TimePoints::TimeBounds bounds;
  BindAndRead(assets.GetTimeBoundsTable(), TimeBoundsEncapsulated(1, bounds), bounds);
  const BusinessEntityModel::BaseTypes::FullyQualifiedName profileName("profile");
  const std::string entry = "entry";
  BindAndRead(assets.GetMetadataTable(), MetadataEncapsulated(1, profileName, entry, entry), MetadataRow());
  Annotation annotation;
  BindAndRead(assets.GetAnnotationTable(), AnnotationEncapsulated(1, annotation), annotation);
  DapOperatorMetadataProfile profile;
  BindAndRead(assets.GetDapOperatorMetadataTable(), DapMetadataEncapsulated(1, profile), profile);
  BindAndRead(assets.GetDapOperatorKeywordsTable(), KeywordEncapsulated(1, 0, "keyword"));

  MediaAssetGroupTable& groups = database.GetMediaAssetGroupTable();
  BindAndRead(groups, MediaAssetGroup());
  MediaAssetGroupItemTable& items = groups.GetMediaAssetGroupItemTable();
  AnglesMediaAssetGroupItem item;
  BindAndRead(items, GroupItemEncapsulated(1, 1, item), item);
  BindAndRead(items.GetAnglesMediaAssetGroupItemTable(), GroupItemEncapsulated(1, 1, item), item);
  AnglesMediaAssetGroupTable& angles = groups.GetAnglesMediaAssetGroupTable();
  BindAndRead(angles, AnglesMediaAssetGroup());
  AnglesDapOperatorMetadataProfile place;
  BindAndRead(angles.GetDapOperatorProfileTable(), AnglesDapMetadataEncapsulated(1, place), place);

  BindAndRead(database.GetEditTable(), Edits::Edit());
  Edits::Database::SequenceTable& sequences = database.GetSequenceTable();
  Edits::Sequence sequence;
  Edits::Database::SequenceEncapsulated row(sequence);
  Bind(sequences, row, {10, 11});
  row.editFk = 1;
  Bind(sequences, row, {10, 11});
  Read(sequences, sequence);
  Read(sequences, sequence, {{"fixedDuration", 0}});
  Edits::Database::DapOperatorProfileTable& profiles = sequences.GetDapOperatorProfileTable();
  Edits::DapOperatorMetadataProfile ofSequence;
  Bind(profiles, Edits::Database::DapOperatorProfileEncapsulated(1, ofSequence), {9, 14, 15});
  Read(profiles, ofSequence);
  Read(profiles, ofSequence, {{"tcRegenOn", 0}});
  EXPECT_EQ(TestSupport::StoredHash(columns), 1704067616353417789U) << columns;
}

}  // namespace Oru::DataModel::MediaAssets::Database
