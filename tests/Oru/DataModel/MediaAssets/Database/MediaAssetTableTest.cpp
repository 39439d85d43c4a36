#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Sqlite::QuerySqlite;
using TestSupport::Channel;
using TestSupport::MakeClip;
using TestSupport::MakeResource;

namespace {

std::vector<std::string> OddIdentifiers() {
  std::vector<std::string> all = {"id",      "key",           "s.id", "ID", ":id",    "clip",    "clip ",
                                  "O'Brien", "' OR 1 = 1 --", "''",   "%",  "\u00e9", "e\u0301", "\xff\xfe"};
  const std::string withNul("clip\0a", 6);
  for (const std::string& text : {withNul, withNul.substr(0, 5), withNul.substr(4, 1)})
    all.push_back(text);
  for (const char* end : {"", "'"})
    all.push_back(std::string(1 << 20, '\'') + end);
  return all;
}

const char* const doublesMessage =
    "Oru::DataModel::MediaAssets::SortedVector::Insert: item already present in the collection";

}  // namespace

class MediaAssetTableTest : public TestSupport::OpenDatabase {
 protected:
  int64_t Saved(MediaAsset& asset) {
    EXPECT_TRUE(assets.Save(asset)) << log.Text();
    return asset.ObjectId();
  }
  int64_t SavedClip() {
    MediaAsset clip = MakeClip("clip");
    return Saved(clip);
  }
};

TEST_F(MediaAssetTableTest, AnIdentifierMatchesItselfAndNothingElse) {
  std::map<std::string, int64_t> keys;
  auto& tracks = database.GetTrackTable();
  for (const std::string& id : OddIdentifiers()) {
    SCOPED_TRACE(id.substr(0, 30));
    EXPECT_EQ(assets.GetObjectIdFromIdentifier(id), -1);
    MediaAsset clip{MediaAssetId(id)};
    const auto resource = MakeResource(id);
    resource->Streams().front()->Id(id);
    resource->Streams().front().UpdateIdentifier();
    Track track{TrackId(id)};
    track.Channels().push_back(Channel(id, 2, 5));
    // Nobody has stored the stream yet: the track's row is written, the channel isn't.
    EXPECT_FALSE(tracks.Save(track));
    clip.MediaResources().Insert(resource);
    clip.Tracks().Insert(std::make_shared<Track>(track));
    keys[id] = Saved(clip);
    EXPECT_EQ(std::stoll(Value("SELECT max(refEssence) FROM TrackChannel")),
              resource->Streams().front()->Essences()[2].ObjectId());
  }
  for (const auto& [id, key] : keys) {
    SCOPED_TRACE(id.substr(0, 30));
    EXPECT_EQ(assets.GetObjectIdFromIdentifier(id), key);
    EXPECT_EQ(database.GetMediaResourceTable().GetObjectIdFromIdentifier(id), key);
    EXPECT_EQ(database.GetStreamTable().GetObjectIdFromIdentifier(id), key);
    EXPECT_EQ(tracks.GetObjectIdFromIdentifier(id), key);
    EXPECT_EQ(TestSupport::ReadDeep(database, key).Id().Value(), id);
  }
}

TEST_F(MediaAssetTableTest, AnEssenceNumberThatStandsTwiceInANewStreamTakesItsRowOver) {
  const auto resource = MakeResource("resource");
  EssenceArray& twice = resource->Streams().front()->Essences();
  twice[1].Nr(0);
  ASSERT_TRUE(database.GetMediaResourceTable().Save(*resource));
  EXPECT_EQ(twice[1].ObjectId(), twice[0].ObjectId());
  EXPECT_NE(twice[2].ObjectId(), twice[0].ObjectId());
}

TEST_F(MediaAssetTableTest, WhatRunsFindsWhatTheGeneratedTextsFind) {
  for (const char* name : {"goal", "shifts", "", "5", "corner"}) {
    MediaAsset clip = MakeClip(std::string("clip ") + name);
    clip.Name(name);
    Saved(clip);
  }
  ASSERT_TRUE(database.ExecuteStatement(
      "UPDATE MediaAsset SET name = 5 WHERE name = '5'; UPDATE MediaAsset SET name = NULL WHERE name = ''"));
  QuerySqlite ofResource;
  ofResource.Equals("name", "resource");
  std::vector<QuerySqlite> queries(12);
  queries[1].Equals("MediaAsset.name", "goal").OrderByDesc("creationDate");
  queries[2].Contains("MediaAsset.name", "fts").OrderByAsc("MediaAsset.key");
  queries[3].Match("MediaAssetFts", "goal").OrderByAsc("MediaAssetFts.rank");
  queries[4].Equals("nameFts", "goal");
  queries[5].Equals("name", "goal");
  queries[6].Equals("Description", "goal");
  queries[7].OrderByAsc("name").Limit(3, 1);
  queries[8].OrderByDesc("RANK");
  queries[9].In("MediaAsset.key", "MediaResource", "key", ofResource);
  queries[10].Equals("rowid", 1);
  queries[11].OrderByAsc("rowid");
  int opened = 0;
  for (QuerySqlite& query : queries) {
    const std::string text = assets.StatementGenerator().GenerateSelectStatement(query);
    Common::Databases::Sqlite::CursorSqlite generated(
        database, text, assets.StatementGenerator().GenerateSelectCountStatement(query));
    const auto cursor = assets.OpenRawCursor(query);
    ASSERT_EQ(cursor->IsOpened(), generated.IsOpened()) << text;
    if (!cursor->IsOpened()) continue;
    ++opened;
    for (Common::Databases::Sqlite::RawReadSqlite row; cursor->Next(row);) {
      ASSERT_TRUE(generated.Step()) << text;
      for (const std::string& column : MediaAssetTable::selectColumnAliases) {
        EXPECT_EQ(row.GetString(column), generated.GetString(column)) << column << " in " << text;
        EXPECT_EQ(row.IsNull(column), generated.IsNull(column)) << column << " in " << text;
      }
    }
    EXPECT_FALSE(generated.Step()) << text;
    EXPECT_EQ(cursor->GetTotalItemsCount(), generated.GetTotalItemsCount()) << text;
  }
  EXPECT_EQ(opened, 8);
}

TEST_F(MediaAssetTableTest, ReadingTwiceIsRefusedWhereElementsAreUnique) {
  const int64_t key = SavedClip();
  MediaAsset asset = TestSupport::ReadDeep(database, key);
  const std::function<void()> readings[] = {
      [&] { assets.ReadTimebounds(asset); }, [&] { assets.ReadMediaResources(asset); },
      [&] { assets.ReadMediaResourcesLazy(asset); }, [&] { assets.ReadTrack(asset); },
      [&] { assets.ReadTrackLazy(asset); }};
  for (const auto& read : readings)
    EXPECT_THAT(read, testing::ThrowsMessage<std::runtime_error>(doublesMessage));
  assets.ReadMetadata(asset);
  assets.ReadDapOperatorMetadata(asset);
  EXPECT_TRUE(TestSupport::IsStored(database, asset));
  assets.ReadAnnotations(asset);
  EXPECT_EQ(asset.Annotations().size(), 2U);
}

TEST_F(MediaAssetTableTest, AProfileOfAnotherClassUnderAStoredNameIsABadCast) {
  const auto other = std::make_shared<AnglesDapOperatorMetadataProfile>();
  BusinessEntityModel::BaseTypes::MetadataProfileDictionary metadata;
  metadata.Set(other);
  EXPECT_THROW(assets.AddMetadata(metadata, {"oru.dapoperator", {"a", "b"}}), std::bad_cast);

  MediaAsset asset;
  ASSERT_TRUE(assets.GetObject(SavedClip(), asset));
  asset.Metadata().Set(other);
  EXPECT_THROW(assets.ReadDapOperatorMetadata(asset), std::bad_cast);
  EXPECT_THROW(assets.ReadDapOperatorKeyword(asset), std::bad_cast);
  // For the writing table it is no operator's profile, and for the generic table none of its own.
  EXPECT_TRUE(assets.Save(asset));
  EXPECT_EQ(Count("DapOperatorKeywords"), 2);
}

TEST_F(MediaAssetTableTest, AnUnsetReferenceIsNullAlsoAfterASaveThatBoundIt) {
  MediaAsset child{MediaAssetId("child")}, orphan{MediaAssetId("orphan")};
  child.Ancestor(MediaAssetId("grandparent"));
  child.Parent(MediaAssetId("parent"));
  const std::string references = "SELECT group_concat(quote(ancestor) || quote(parent)) FROM MediaAsset";
  ASSERT_TRUE(assets.Save(child) && assets.Save(orphan));
  EXPECT_EQ(Value(references), "'grandparent''parent',NULLNULL");
  // The same by update, one after the other.
  ASSERT_TRUE(assets.Save(child) && assets.Save(orphan));
  EXPECT_EQ(Value(references), "'grandparent''parent',NULLNULL");
  child.Parent({});
  ASSERT_TRUE(assets.Save(child) && assets.Save(orphan));
  EXPECT_EQ(Value(references), "'grandparent'NULL,NULLNULL");

  child.Parent(MediaAssetId("kept"));
  ASSERT_TRUE(assets.GetObject(child.ObjectId(), child));
  EXPECT_EQ(child.Ancestor().Id().Value() + child.Parent().Id().Value(), "grandparentkept");
}

}  // namespace Oru::DataModel::MediaAssets::Database
