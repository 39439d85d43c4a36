#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Sqlite::QuerySqlite;
using testing::ThrowsMessage;
using TestSupport::BoundsOf;
using TestSupport::Channel;
using TestSupport::MakeClip;
using TestSupport::MakeResource;

namespace {

const std::vector<std::string> oddIdentifiers = {"id",
                                                 "nr",
                                                 "key",
                                                 "s.id",
                                                 "ID",
                                                 ":id",
                                                 "clip",
                                                 "clip ",
                                                 "O'Brien",
                                                 "' OR 1 = 1 --",
                                                 "\" OR 1 = 1 --",
                                                 "'; DROP TABLE Track; --",
                                                 "''",
                                                 "%",
                                                 "\u00e9",
                                                 "e\u0301",
                                                 "\U0001f3ac",
                                                 "\xff\xfe",
                                                 std::string("clip\0", 5),
                                                 std::string("clip\0a", 6),
                                                 std::string("\0", 1),
                                                 std::string(1 << 20, '\''),
                                                 std::string(1 << 20, '\'') + "'"};

const char* const doublesMessage =
    "Oru::DataModel::MediaAssets::SortedVector::Insert: item already present in the collection";

}  // namespace

class MediaAssetTableTest : public TestSupport::OpenDatabase {
 protected:
  int64_t Saved(MediaAsset& asset) {
    EXPECT_TRUE(assets.Save(asset)) << log.Text();
    return asset.ObjectId();
  }
  int64_t SavedClip(const std::string& id) {
    MediaAsset clip = MakeClip(id);
    return Saved(clip);
  }
  MediaAsset Row(int64_t key) {
    MediaAsset asset;
    EXPECT_TRUE(assets.GetObject(key, asset));
    return asset;
  }
};

TEST_F(MediaAssetTableTest, StatementsAreExact) {
  EXPECT_EQ(
      assets.GetSelectStatement(),
      "SELECT MediaAsset.key AS key, MediaAsset.id AS id, MediaAsset.assetType AS assetType, "
      "MediaAsset.ancestor "
      "AS ancestor, MediaAsset.parent AS parent, MediaAsset.name AS name, MediaAsset.description AS "
      "description, "
      "MediaAsset.inBoundary AS inBoundary, MediaAsset.inBoundaryMoving AS inBoundaryMoving, "
      "MediaAsset.outBoundary AS outBoundary, MediaAsset.outBoundaryMoving AS outBoundaryMoving, "
      "MediaAsset.modificationDate AS modificationDate, MediaAsset.creationDate AS creationDate, "
      "highlight(MediaAssetFts, 0, '<b>', '</b>') AS nameFts, highlight(MediaAssetFts, 1, '<b>', '</b>') AS "
      "descriptionFts FROM MediaAsset JOIN MediaAssetFts ON  MediaAsset.key = MediaAssetFts.rowid");
  EXPECT_EQ(
      database.GetDataEssenceTable().GetSelectStatement(),
      "SELECT key, refStream, nr, channelCount, refEssence FROM Essence JOIN DataEssence ON Essence.key == "
      "DataEssence.refEssence");
}

TEST_F(MediaAssetTableTest, AnIdentifierMatchesItselfAndNothingElse) {
  std::map<std::string, int64_t> keys;
  for (const std::string& id : oddIdentifiers) {
    EXPECT_EQ(assets.GetObjectIdFromIdentifier(id), -1) << id.substr(0, 30);
    MediaAsset clip{MediaAssetId(id)};
    const auto resource = MakeResource(id);
    resource->Streams().front()->Id(id);
    resource->Streams().front().UpdateIdentifier();
    clip.MediaResources().Insert(resource);
    clip.Tracks().Insert(std::make_shared<Track>(TrackId(id)));
    keys[id] = Saved(clip);
  }
  EXPECT_EQ(Count("MediaAsset"), static_cast<int>(oddIdentifiers.size()));
  for (const auto& [id, key] : keys) {
    EXPECT_EQ(assets.GetObjectIdFromIdentifier(id), key) << id.substr(0, 30);
    EXPECT_EQ(database.GetMediaResourceTable().GetObjectIdFromIdentifier(id), key);
    EXPECT_EQ(database.GetStreamTable().GetObjectIdFromIdentifier(id), key);
    EXPECT_EQ(database.GetTrackTable().GetObjectIdFromIdentifier(id), key);
    EXPECT_EQ(Row(key).Id().Value(), id);
  }
}

TEST_F(MediaAssetTableTest, AChannelFindsItsEssenceByTheVeryIdentifierOfTheStream) {
  for (const std::string& id : oddIdentifiers) {
    const auto resource = MakeResource(id);
    resource->Streams().front()->Id(id);
    Track track{TrackId(id)};
    track.Channels().push_back(Channel(id, 2, 5));
    // Nobody has stored the stream yet: the track's row is written, the channel isn't.
    EXPECT_FALSE(database.GetTrackTable().Save(track));
    ASSERT_TRUE(database.GetMediaResourceTable().Save(*resource));
    ASSERT_TRUE(database.GetTrackTable().Save(track)) << id.substr(0, 30);
    EXPECT_EQ(std::stoll(Value("SELECT max(refEssence) FROM TrackChannel")),
              (*resource->Streams().front()).Essences()[2].ObjectId());
    Track reading;
    reading.ObjectId(track.ObjectId());
    database.GetTrackTable().ReadTrackChannel(reading);
    ASSERT_EQ(reading.Channels().size(), 1U);
    EXPECT_EQ(*reading.Channels().front(), *track.Channels().front());
    EXPECT_EQ(reading.Channels().front()->Stream()->Essences().Size(), 3);
  }
}

TEST_F(MediaAssetTableTest, DatesAreNotCutAt2038) {
  constexpr int64_t dates[] = {
      std::numeric_limits<int64_t>::min(), -1, 0, 2147483647, 2147483648, 4102444800, 253402300800,
      std::numeric_limits<int64_t>::max()};
  for (const int64_t date : dates) {
    MediaAsset clip = MakeClip("clip" + std::to_string(date));
    clip.CreationDate(date);
    clip.MediaResources().Front()->CreationDate(date);
    const MediaAsset reading = TestSupport::ReadDeep(database, Saved(clip));
    EXPECT_EQ(reading.CreationDate(), date);
    EXPECT_EQ(reading.ModificationDate(), date);
    EXPECT_EQ(reading.MediaResources().Front()->ModificationDate(), date);
  }
}

TEST_F(MediaAssetTableTest, ARowModifiedBeforeItsCreationEndsTheWalk) {
  for (const char* id : {"a", "b", "c"})
    SavedClip(id);
  Run("UPDATE MediaAsset SET creationDate = 500, modificationDate = 499, name = 'read' WHERE id = 'b'");
  const auto cursor = assets.OpenObjectCursor();
  MediaAsset asset;
  EXPECT_TRUE(cursor->Next(asset));
  EXPECT_THAT(
      [&] { cursor->Next(asset); },
      ThrowsMessage<std::runtime_error>("Oru::DataModel::MediaAssets::MediaAsset::ModificationDate: New "
                                        "modification Date < creation date"));
  // All else of the row has been read.
  EXPECT_EQ(asset.Name(), "read");
  EXPECT_EQ(asset.ModificationDate(), 500);
  Run("UPDATE MediaAsset SET modificationDate = 500 WHERE id = 'b';"
      "UPDATE MediaResource SET creationDate = 500, modificationDate = 499 WHERE id = 'b/resource'");
  MediaAsset owner = Row(2);
  EXPECT_THAT(
      [&] { assets.ReadMediaResources(owner); },
      ThrowsMessage<std::runtime_error>("Oru::DataModel::MediaAssets::MediaResource::ModificationDate: New "
                                        "modification Date < actual modification date"));
  EXPECT_TRUE(owner.MediaResources().Empty());
  EXPECT_TRUE(Row(2).Ancestor().IsEmpty());
}

TEST_F(MediaAssetTableTest, UnknownEnumerationValuesAreCarried) {
  const int64_t key = SavedClip("clip");
  Run("UPDATE MediaAsset SET assetType = 3; UPDATE MediaResource SET generalFormat = -2147483648;"
      "UPDATE Stream SET wrapperFormat = 2147483647; UPDATE VideoEssence SET videoCodec = 54;"
      "UPDATE AudioEssence SET bitRateMode = -1; UPDATE Annotation SET annotationType = 99;"
      "UPDATE DapOperatorMetadata SET fillAndKeyType = 1000");
  MediaAsset reading = TestSupport::ReadDeep(database, key);
  const auto resource = reading.MediaResources().Front().Pointer();
  const Stream& stream = *resource->Streams().front();
  EXPECT_EQ(static_cast<int32_t>(reading.AssetType()), 3);
  EXPECT_EQ(static_cast<int64_t>(resource->GeneralFormat()), -2147483648);
  EXPECT_EQ(static_cast<int32_t>(stream.Format()), 2147483647);
  EXPECT_EQ(static_cast<int32_t>(dynamic_cast<const VideoEssence&>(stream.Essences()[0]).VideoCodec()), 54);
  EXPECT_EQ(static_cast<int32_t>(dynamic_cast<const AudioEssence&>(stream.Essences()[1]).BitRateMode()), -1);
  EXPECT_EQ(static_cast<int32_t>(reading.Annotations().front()->Type()), 99);
  EXPECT_EQ(static_cast<int32_t>(reading.DapOperatorMetadata().FillAndKeyType()), 1000);
  EXPECT_EQ(Saved(reading), key);
  EXPECT_EQ(Value("SELECT videoCodec FROM VideoEssence"), "54");
}

TEST_F(MediaAssetTableTest, AQueryOnAnUnknownColumnIsLoggedAndItsCursorClosed) {
  SavedClip("clip");
  QuerySqlite query;
  query.Equals("title", "clip");
  const auto cursor = assets.OpenObjectCursor(query);
  EXPECT_FALSE(cursor->IsOpened());
  EXPECT_TRUE(log.Contains("no such column: title")) << log.Text();
  MediaAsset asset;
  EXPECT_THROW(cursor->Next(asset), Common::Databases::ObjectClosedException);

  QuerySqlite byName;
  byName.Equals("MediaAsset.name", "first").OrderByDesc("MediaAsset.description");
  EXPECT_TRUE(assets.OpenObjectCursor(byName)->Next(asset));
  EXPECT_EQ(asset.Id(), "clip");
}

TEST_F(MediaAssetTableTest, ARawCursorAlsoGivesWhatTheFullTextIndexHolds) {
  SavedClip("clip");
  const auto cursor = assets.OpenRawCursor();
  Common::Databases::Sqlite::RawReadSqlite row;
  ASSERT_TRUE(cursor->Next(row));
  EXPECT_EQ(row.GetString("nameFts"), "first");
  EXPECT_EQ(row.GetString("descriptionFts"), "");
  EXPECT_EQ(cursor->GetTotalItemsCount(), 1);
}

TEST_F(MediaAssetTableTest, ReadingTwiceIsRefusedWhereElementsAreUnique) {
  const int64_t key = SavedClip("clip");
  MediaAsset asset = TestSupport::ReadDeep(database, key);
  EXPECT_THAT([&] { assets.ReadTimebounds(asset); }, ThrowsMessage<std::runtime_error>(doublesMessage));
  EXPECT_THAT([&] { assets.ReadMediaResources(asset); }, ThrowsMessage<std::runtime_error>(doublesMessage));
  EXPECT_THAT([&] { assets.ReadMediaResourcesLazy(asset); },
              ThrowsMessage<std::runtime_error>(doublesMessage));
  EXPECT_THAT([&] { assets.ReadTrack(asset); }, ThrowsMessage<std::runtime_error>(doublesMessage));
  EXPECT_THAT([&] { assets.ReadTrackLazy(asset); }, ThrowsMessage<std::runtime_error>(doublesMessage));
  assets.ReadMetadata(asset);
  assets.ReadDapOperatorMetadata(asset);
  const auto once = TestSupport::AssetFields::Of(TestSupport::ReadDeep(database, key));
  EXPECT_EQ(once.FirstDifference(TestSupport::AssetFields::Of(asset)), "");
  assets.ReadAnnotations(asset);
  EXPECT_EQ(asset.Annotations().size(), 2U);

  MediaAsset lazy = TestSupport::ReadLazy(database, key);
  EXPECT_THAT([&] { assets.ReadMediaResources(lazy); }, ThrowsMessage<std::runtime_error>(doublesMessage));
  EXPECT_FALSE(lazy.MediaResources().Front());
}

TEST_F(MediaAssetTableTest, NothingIsFoundUnderAnIdThatIsGone) {
  const int64_t key = SavedClip("clip");
  for (const int64_t gone : {int64_t{-1}, key + 1}) {
    MediaAsset asset;
    EXPECT_FALSE(assets.GetObject(gone, asset));
    EXPECT_FALSE(assets.Exists(gone));
    asset.ObjectId(gone);
    assets.ReadTimebounds(asset);
    assets.ReadMetadata(asset);
    assets.ReadAnnotations(asset);
    assets.ReadMediaResources(asset);
    assets.ReadMediaResourcesLazy(asset);
    assets.ReadTrack(asset);
    EXPECT_TRUE(asset == MediaAsset());
    assets.ReadDapOperatorMetadata(asset);
    EXPECT_EQ(asset.Metadata().Size(), 1U);
    EXPECT_TRUE(asset.DapOperatorMetadata() == DapOperatorMetadataProfile());
  }
}

TEST_F(MediaAssetTableTest, AProfileOfAnotherClassUnderAStoredNameIsABadCast) {
  const auto other = std::make_shared<AnglesDapOperatorMetadataProfile>();
  BusinessEntityModel::BaseTypes::MetadataProfileDictionary metadata;
  assets.AddMetadata(metadata, {"sport", {"team", "A"}});
  assets.AddMetadata(metadata, {"sport", {"team", "B"}});
  assets.AddMetadata(metadata, {"sport", {"", ""}});
  const auto& sport =
      dynamic_cast<BusinessEntityModel::BaseTypes::GenericMetadataProfile&>(metadata.At("sport"));
  EXPECT_EQ(sport.Size(), 2);
  EXPECT_EQ(sport.Get("team"), "B");
  metadata.Set(other);
  EXPECT_THROW(assets.AddMetadata(metadata, {"oru.dapoperator", {"a", "b"}}), std::bad_cast);

  const int64_t key = SavedClip("clip");
  MediaAsset asset = Row(key);
  asset.Metadata().Set(other);
  EXPECT_THROW(assets.ReadDapOperatorMetadata(asset), std::bad_cast);
  EXPECT_THROW(assets.ReadDapOperatorKeyword(asset), std::bad_cast);
  // For the writing table it is no operator's profile, and for the generic table none of its own.
  EXPECT_TRUE(assets.Save(asset));
  EXPECT_EQ(Count("DapOperatorKeywords"), 2);
}

}  // namespace Oru::DataModel::MediaAssets::Database
