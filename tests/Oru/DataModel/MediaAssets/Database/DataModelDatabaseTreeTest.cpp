#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupItemTable.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/AudioEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/VideoEssenceTable.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/CapturedLog.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <set>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

namespace Edits = BusinessEntityModel::Edits;

class DataModelDatabaseTreeTest : public testing::Test {
 protected:
  // Stores an object through a table, so that its insert statement runs, and sees the row through the table's
  // own select.
  template <class TableClass, class Object>
  void Store(TableClass& table, Object&& object, const std::string& what) {
    visited.insert(&table);
    const int before = RowsOf(table);
    EXPECT_TRUE(table.Save(object)) << what << "\n" << log.Text();
    EXPECT_EQ(RowsOf(table), before + 1) << what;
  }
  template <class TableClass>
  static int RowsOf(TableClass& table) {
    int rows = 0;
    for (const auto cursor = table.OpenRawCursor(); cursor->Next();)
      ++rows;
    return rows;
  }

  void StoreMetadata(MetadataTable& table, int64_t owner) {
    const BusinessEntityModel::BaseTypes::FullyQualifiedName profile("profile " + suffix);
    const std::string key = "key", value = "value";
    Store(table, MetadataEncapsulated(owner, profile, key, value), table.GetTableName());
  }
  void StoreBounds(TimeBoundsTable& table, int64_t owner) {
    const TimePoints::TimeBounds bounds;
    Store(table, TimeBoundsEncapsulated(owner, bounds), table.GetTableName());
  }

  // A stream with one essence of each kind and one of which only the common row is stored; gives the key of
  // the first.
  int64_t StoreStream(StreamTable& streams, int64_t resource, const std::string& name) {
    Stream stream(StreamId(name + suffix));
    Store(streams, StreamEncapsulated(resource, stream), "stream");
    StoreMetadata(streams.GetMetadataTable(), stream.ObjectId());
    StoreBounds(streams.GetTimeBoundsTable(), stream.ObjectId());
    VideoEssence video, ofNoKind;
    AudioEssence audio;
    DataEssence data;
    int32_t number = 0;
    for (Essence* essence : std::initializer_list<Essence*>{&video, &audio, &data, &ofNoKind})
      essence->Nr(number++);
    Store(streams.GetVideoEssenceTable(), EssenceEncapsulated(stream.ObjectId(), video), "video essence");
    Store(streams.GetAudioEssenceTable(), EssenceEncapsulated(stream.ObjectId(), audio), "audio essence");
    Store(streams.GetDataEssenceTable(), EssenceEncapsulated(stream.ObjectId(), data), "data essence");
    Store(streams.GetEssenceTable(), EssenceEncapsulated(stream.ObjectId(), ofNoKind), "essence");
    EXPECT_EQ(RowsOf(streams.GetEssenceTable()), 4 * RowsOf(streams.GetDataEssenceTable()));
    StoreMetadata(streams.GetEssenceTable().GetMetadataTable(), video.ObjectId());
    return video.ObjectId();
  }

  int64_t StoreAsset(StreamTable& furtherStreams) {
    MediaAssetTable& assets = database.GetMediaAssetTable();
    MediaAsset asset(MediaAssetId("asset" + suffix));
    Store(assets, asset, "asset");
    StoreMetadata(assets.GetMetadataTable(), asset.ObjectId());
    StoreBounds(assets.GetTimeBoundsTable(), asset.ObjectId());

    DapOperatorMetadataProfile profile;
    Store(assets.GetDapOperatorMetadataTable(), DapMetadataEncapsulated(asset.ObjectId(), profile),
          "operator");
    Store(assets.GetDapOperatorKeywordsTable(), KeywordEncapsulated(asset.ObjectId(), 0, "goal"), "keyword");
    Annotation annotation;
    Store(assets.GetAnnotationTable(), AnnotationEncapsulated(asset.ObjectId(), annotation), "annotation");
    StoreMetadata(assets.GetAnnotationTable().GetMetadataTable(), annotation.ObjectId());

    MediaResource resource(MediaResourceId("resource" + suffix));
    Store(assets.GetMediaResourceTable(), resource, "resource");
    StoreMetadata(assets.GetMediaResourceTable().GetMetadataTable(), resource.ObjectId());
    StoreBounds(assets.GetMediaResourceTable().GetTimeBoundsTable(), resource.ObjectId());
    Store(assets.GetRelationMediasTable(), RelationMedias{asset.ObjectId(), resource.ObjectId()}, "link");
    const int64_t essence = StoreStream(assets.GetStreamTable(), resource.ObjectId(), "stream");
    StoreStream(furtherStreams, resource.ObjectId(), "further stream");

    Track track(TrackId("track" + suffix));
    Store(assets.GetTrackTable(), track, "track");
    Store(assets.GetTrackTable().GetTrackChannelTable(),
          TrackChannelEncapsulated(track.ObjectId(), essence, 0), "channel");
    Store(assets.GetRelationAssetTrackTable(), RelationAssetTrack{asset.ObjectId(), track.ObjectId()},
          "link");

    // A stream that was written through one tree is read through the one under the tracks.
    MediaAsset read;
    EXPECT_TRUE(assets.GetObject(asset.ObjectId(), read));
    assets.ReadTrack(read);
    const auto& stream = read.Tracks()[0]->Channels().at(0)->Stream();
    EXPECT_EQ(stream.Id().Value(), "stream" + suffix);
    EXPECT_TRUE(stream && stream->Essences().Size() == 3);
    return asset.ObjectId();
  }

  void StoreGroup(MediaAssetGroupTable& groups, int64_t asset, const std::string& name) {
    AnglesMediaAssetGroupTable& angles = groups.GetAnglesMediaAssetGroupTable();
    MediaAssetGroupItemTable& items = groups.GetMediaAssetGroupItemTable();
    MediaAssetGroup plain(MediaAssetGroupId("plain " + name + suffix), "");
    Store(groups, plain, "group");
    AnglesMediaAssetGroup group(MediaAssetGroupId(name + suffix), "");
    Store(angles, group, "angle group");
    AnglesDapOperatorMetadataProfile profile;
    Store(angles.GetDapOperatorProfileTable(), AnglesDapMetadataEncapsulated(group.ObjectId(), profile),
          "place");
    MediaAssetGroupItem item;
    Store(items, GroupItemEncapsulated(group.ObjectId(), asset, item), "item");
    AnglesMediaAssetGroupItem angle("Wide");
    Store(items.GetAnglesMediaAssetGroupItemTable(), GroupItemEncapsulated(group.ObjectId(), asset, angle, 1),
          "angle");
  }

  void StoreEdit() {
    Edits::Database::EditTable& edits = database.GetEditTable();
    Edits::Database::SequenceTable& sequences = database.GetSequenceTable();
    Edits::Edit edit(Edits::EditId("edit" + suffix));
    Store(edits, edit, "edit");
    StoreMetadata(edits.GetMetadataTable(), edit.ObjectId());
    Edits::Sequence sequence(Edits::SequenceId("sequence" + suffix));
    Store(sequences, sequence, "sequence");
    StoreMetadata(sequences.GetMetadataTable(), sequence.ObjectId());
    Edits::DapOperatorMetadataProfile profile;
    Store(sequences.GetDapOperatorProfileTable(),
          Edits::Database::DapOperatorProfileEncapsulated(sequence.ObjectId(), profile),
          "operator of sequence");
  }

  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  DataModelDatabase database{directory.File("clips.db"), log.Stream()};
  std::set<const void*> visited;
  std::string suffix;
};

// Built ahead of the first opening and working in each, through statements that end with their opening.
TEST_F(DataModelDatabaseTreeTest, EveryTableInsertsAndReadsInEachOpening) {
  StreamTable streams(database);
  MediaAssetGroupTable groups(database.GetMediaAssetTable());
  for (int opening = 0; opening < 3; ++opening) {
    database.Open();
    for (int times = 0; times < 2; ++times) {
      suffix = " " + std::to_string(opening) + "." + std::to_string(times);
      const int64_t asset = StoreAsset(streams);
      StoreGroup(database.GetMediaAssetGroupTable(), asset, "group");
      StoreGroup(groups, asset, "further group");
      StoreEdit();
    }
    database.Close();
  }
  EXPECT_EQ(visited.size(), 45U) << "table objects";
  EXPECT_EQ(log.Text(), "");
  database.Open();
  EXPECT_EQ(RowsOf(database.GetMediaAssetTable()), 6);
  EXPECT_TRUE(database.GetMediaAssetTable().DeleteAll() && database.GetEditTable().DeleteAll());
  EXPECT_EQ(RowsOf(groups) + RowsOf(streams) + RowsOf(database.GetTrackTable()), 0);
  EXPECT_EQ(RowsOf(database.GetSequenceTable()), 6) << "those of no edit";
}

}  // namespace Oru::DataModel::MediaAssets::Database
