#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/RecordingCursor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

namespace Edits = BusinessEntityModel::Edits;

// Which columns each table binds and reads, as which types, in which order, and where it stops when one is
// refused.
class TableColumnsTest : public testing::Test {
 protected:
  using Calls = std::vector<std::string>;
  using Numbers = std::map<std::string, int64_t>;

  // @param groups  what is bound: a refusal ends the group that it happens in, and only that
  template <class TableClass, class Row>
  void ExpectBound(TableClass& table, Row row, const std::vector<std::string>& groups) {
    const std::size_t count = AllOf(groups, 0).size();
    for (std::size_t refused = 0; refused <= count; ++refused) {
      TestSupport::RecordingCursor cursor(refused);
      EXPECT_EQ(table.BindToCursor(cursor, row), refused == 0) << table.GetTableName() << ' ' << refused;
      EXPECT_EQ(cursor.Calls(), AllOf(groups, refused)) << table.GetTableName();
    }
  }
  template <class TableClass, class Object>
  void ExpectRead(TableClass& table, Object&& object, const std::string& columns,
                  const Numbers& numbers = {}) {
    const std::size_t count = AllOf({columns}, 0).size();
    for (std::size_t refused = 0; refused <= count; ++refused) {
      TestSupport::RecordingCursor cursor(refused);
      cursor.numbers = numbers;
      const auto read = [&] { table.ReadFromCursor(cursor, object, true); };
      if (refused == 0) {
        EXPECT_NO_THROW(read()) << table.GetTableName();
      } else {
        EXPECT_THROW(read(), Common::Databases::ArgumentException) << table.GetTableName();
      }
      EXPECT_EQ(cursor.Calls(), AllOf({columns}, refused)) << table.GetTableName();
    }
  }

  // The calls of all groups, where the call of that number is refused.
  static Calls AllOf(const std::vector<std::string>& groups, std::size_t refused) {
    Calls all;
    std::size_t number = 0;
    for (const std::string& group : groups) {
      bool isEnded = false;
      std::istringstream text(group);
      for (std::string call; std::getline(text >> std::ws, call, ',');) {
        if (!isEnded) all.push_back(call);
        isEnded = isEnded || ++number == refused;
      }
    }
    return all;
  }

  DataModelDatabase database{nullptr};
};

TEST_F(TableColumnsTest, AreBoundAndReadInTheirOrderUpToTheFirstThatIsRefused) {
  MediaAssetTable& assets = database.GetMediaAssetTable();
  const std::string ofAsset =
      "id text, assetType int32, name text, description text, inBoundary int64, inBoundaryMoving bool, "
      "outBoundary int64, outBoundaryMoving bool, modificationDate int64, creationDate int64";
  MediaAsset asset(MediaAssetId("asset"));
  ExpectBound(assets, asset, {ofAsset});
  asset.Ancestor(MediaAssetReference(MediaAssetId("ancestor")));
  asset.Parent(MediaAssetReference(MediaAssetId("parent")));
  ExpectBound(assets, asset, {"ancestor text, parent text, " + ofAsset});
  ExpectRead(assets, asset,
             "key int64, id text, assetType int32, ancestor text, parent text, name text, description text, "
             "inBoundaryMoving bool, inBoundary int64, outBoundaryMoving bool, outBoundary int64, "
             "creationDate int64, modificationDate int64");

  MediaResourceTable& resources = assets.GetMediaResourceTable();
  MediaResource resource(MediaResourceId("resource"));
  ExpectBound(resources, resource,
              {"id text, name text, generalFormat int32, modificationDate int64, creationDate int64"});
  ExpectRead(resources, resource,
             "key int64, id text, name text, generalFormat int32, creationDate int64, "
             "modificationDate int64");
  ExpectBound(assets.GetRelationMediasTable(), RelationMedias(),
              {"refMediaAsset int64, refMediaResource int64"});
  ExpectRead(assets.GetRelationMediasTable(), RelationMedias(),
             "refMediaAsset int64, refMediaResource int64");

  StreamTable& streams = assets.GetStreamTable();
  Stream stream(StreamId("stream"));
  ExpectBound(streams, StreamEncapsulated(1, stream),
              {"id text, refMediaResource int64, wrapperFormat int32"});
  ExpectRead(streams, stream, "key int64, id text, wrapperFormat int32");

  const std::string ofEssence = "key int64, nr int32, channelCount int32";
  VideoEssence video;
  ExpectBound(streams.GetEssenceTable(), EssenceEncapsulated(1, video),
              {"refStream int64, nr int32, channelCount int32"});
  ExpectRead(streams.GetEssenceTable(), video, ofEssence);
  const auto ofVideo = [](const std::string& rate) {
    return "videoCodec int32, bitRate int32, bitRateMode int32, bitDepth int32, frameRateNum " + rate +
           ", frameRateDen " + rate +
           ", height int32, width int32, chromaSubSampling int32, colorSpace int32, scanMode int32, "
           "fourCC text, aspectRatioWidthFactor int32, aspectRatioHeightFactor int32, boxing int32";
  };
  ExpectBound(streams.GetVideoEssenceTable(), EssenceEncapsulated(1, video),
              {"refEssence int64, " + ofVideo("int32")});
  ExpectRead(streams.GetVideoEssenceTable(), video, ofEssence + ", " + ofVideo("int64"));
  const auto ofAudio = [](const std::string& rate) {
    return "audioCodec int32, bitRate int32, bitRateMode int32, sampleRateNum " + rate + ", sampleRateDen " +
           rate + ", bitDepth int32, fourCC text";
  };
  AudioEssence audio;
  ExpectBound(streams.GetAudioEssenceTable(), EssenceEncapsulated(1, audio),
              {"refEssence int64, " + ofAudio("int32")});
  ExpectRead(streams.GetAudioEssenceTable(), audio, ofEssence + ", " + ofAudio("int64"));
  DataEssence data;
  ExpectBound(streams.GetDataEssenceTable(), EssenceEncapsulated(1, data), {"refEssence int64"});
  ExpectRead(streams.GetDataEssenceTable(), data, ofEssence);

  TrackTable& tracks = assets.GetTrackTable();
  ExpectBound(tracks, Track(), {"id text, name text"});
  ExpectRead(tracks, Track(), "key int64, id text, name text");
  const std::string ofChannel = "refTrack int64, refEssence int64, channelNr int64";
  ExpectBound(tracks.GetTrackChannelTable(), TrackChannelEncapsulated(), {ofChannel});
  ExpectRead(tracks.GetTrackChannelTable(), TrackChannelEncapsulated(), ofChannel);
  ExpectBound(assets.GetRelationAssetTrackTable(), RelationAssetTrack(),
              {"refMediaAsset int64, refTrack int64"});
  ExpectRead(assets.GetRelationAssetTrackTable(), RelationAssetTrack(),
             "refMediaAsset int64, refTrack int64");

  const std::string boundBounds =
      "inBoundary int64, inBoundaryMoving bool, outBoundary int64, outBoundaryMoving bool";
  const std::string readBounds =
      "inBoundaryMoving bool, inBoundary int64, outBoundaryMoving bool, outBoundary int64";
  TimePoints::TimeBounds bounds;
  ExpectBound(assets.GetTimeBoundsTable(), TimeBoundsEncapsulated(1, bounds),
              {"foreignKey int64, " + boundBounds});
  ExpectRead(assets.GetTimeBoundsTable(), bounds, readBounds);
  const BusinessEntityModel::BaseTypes::FullyQualifiedName profileName("profile");
  const std::string entry = "entry";
  ExpectBound(assets.GetMetadataTable(), MetadataEncapsulated(1, profileName, entry, entry),
              {"foreignKey int64, fullyQualifiedName text, name text, value text"});
  ExpectRead(assets.GetMetadataTable(), MetadataRow(), "fullyQualifiedName text, name text, value text");
  Annotation annotation;
  ExpectBound(assets.GetAnnotationTable(), AnnotationEncapsulated(1, annotation),
              {"refMediaAsset int64, annotationType int32, data text, " + boundBounds});
  ExpectRead(assets.GetAnnotationTable(), annotation,
             "key int64, annotationType int32, data text, " + readBounds);
}

TEST_F(TableColumnsTest, OfOperatorsGroupsAndEditsAreBoundAndReadInTheirOrder) {
  MediaAssetTable& assets = database.GetMediaAssetTable();
  const auto ofClip = [](const std::string& color) {
    return "refMediaAsset int64, zuServerId int32, dapIdPage int32, dapIdBank int32, dapIdRow int32, "
           "dapIdCamera int32, umId text, varId text, rating int32, archiveStatus int32, "
           "userTimecodeType int32, primaryTimecode int32, userTimecodeFormat int32, userTimecode int64, "
           "todTimecodeFormat int32, todTimecode int64, icon text, color " +
           color +
           ", userProtected bool, dapUIProtected bool, fillAndKeyType int32, "
           "fillAndKeyMediaAssetId text";
  };
  DapOperatorMetadataProfile profile;
  ExpectBound(assets.GetDapOperatorMetadataTable(), DapMetadataEncapsulated(1, profile), {ofClip("uint32")});
  ExpectRead(assets.GetDapOperatorMetadataTable(), profile, ofClip("int32"));
  const KeywordEncapsulated keyword(1, 0, "keyword");
  const std::string ofKeyword = "refDapOperatorMetadata int64, nr int32, keyword text";
  ExpectBound(assets.GetDapOperatorKeywordsTable(), keyword, {ofKeyword});
  ExpectRead(assets.GetDapOperatorKeywordsTable(), KeywordEncapsulated(keyword), ofKeyword);

  MediaAssetGroupTable& groups = database.GetMediaAssetGroupTable();
  ExpectBound(groups, MediaAssetGroup(), {"id text, type text, name text"});
  ExpectRead(groups, MediaAssetGroup(), "key int64, id text, type text, name text");
  MediaAssetGroupItemTable& items = groups.GetMediaAssetGroupItemTable();
  MediaAssetGroupItem item;
  ExpectBound(items, GroupItemEncapsulated(1, 1, item), {"refMediaAssetGroup int64, refMediaAsset int64"});
  ExpectRead(items, item, "key int64");
  AnglesMediaAssetGroupTable& angles = groups.GetAnglesMediaAssetGroupTable();
  ExpectBound(angles, AnglesMediaAssetGroup(), {"refMediaAssetGroup int64"});
  ExpectRead(angles, AnglesMediaAssetGroup(), "key int64, id text, type text, name text");
  AnglesMediaAssetGroupItemTable& angleItems = items.GetAnglesMediaAssetGroupItemTable();
  AnglesMediaAssetGroupItem angle;
  ExpectBound(angleItems, GroupItemEncapsulated(1, 1, angle),
              {"angleIndex int32, name text, refMediaAssetGroupItem int64"});
  ExpectRead(angleItems, angle, "key int64, name text");
  AnglesDapOperatorMetadataProfile place;
  const std::string ofPlace =
      "refAngles int64, zuServerId int32, dapIdPage int32, dapIdBank int32, dapIdRow int32";
  ExpectBound(angles.GetDapOperatorProfileTable(), AnglesDapMetadataEncapsulated(1, place), {ofPlace});
  ExpectRead(angles.GetDapOperatorProfileTable(), place, ofPlace);

  Edits::Database::EditTable& edits = database.GetEditTable();
  const std::string ofEdit =
      "id text, name text, creationDate int64, creationOwner text, modificationDate int64, "
      "modificationOwner text";
  ExpectBound(edits, Edits::Edit(), {ofEdit});
  ExpectRead(edits, Edits::Edit(), "key int64, " + ofEdit);

  Edits::Database::SequenceTable& sequences = database.GetSequenceTable();
  const std::string boundDates =
      "timepoint int64, creationDate int64, creationOwner text, modificationDate int64, "
      "modificationOwner text";
  Edits::Sequence sequence;
  Edits::Database::SequenceEncapsulated row(sequence);
  for (const char* edit : {"editRef null", "editRef int64"}) {
    ExpectBound(
        sequences, row,
        {"id text, name text, version int32, duration int64, fixedDuration bool, " + boundDates, edit});
    row.editFk = 1;
  }
  const std::string readFirst = "key int64, id text, name text, version int32, fixedDuration bool, ";
  ExpectRead(sequences, sequence, readFirst + "duration int64, " + boundDates);
  ExpectRead(sequences, sequence, readFirst + boundDates, {{"fixedDuration", 0}});

  Edits::Database::DapOperatorProfileTable& profiles = sequences.GetDapOperatorProfileTable();
  Edits::DapOperatorMetadataProfile ofSequence;
  const std::string ofServer =
      "zuServerId int32, dapIdPage int32, dapIdBank int32, dapIdRow int32, umId text, varId text, "
      "nbVideoElements int32, archiveStatus int32, ";
  const std::string ofRegen =
      "tcRegenContinuity int32, tcRegenReference int32, tcRegenTimecodeRefFormat int32, "
      "tcRegenTimecodeRef int64, tcRegenOutput int32";
  ExpectBound(profiles, Edits::Database::DapOperatorProfileEncapsulated(1, ofSequence),
              {ofServer + "tcRegenOn bool", ofRegen, "refSequence int64"});
  ExpectRead(profiles, ofSequence, ofServer + "tcRegenOn int32, " + ofRegen);
  ExpectRead(profiles, ofSequence, ofServer + "tcRegenOn int32", {{"tcRegenOn", 0}});
}

}  // namespace Oru::DataModel::MediaAssets::Database
