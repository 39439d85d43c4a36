#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/Common/Databases/Sqlite/RawReadSqlite.h"

#include "support/DatabasePrelude.h"

namespace Oru::DataModel::MediaAssets::Database {

using testing::ElementsAre;
using testing::ThrowsMessage;
using TimePoints::Rate;
using TimePoints::TimeCode;
using TimePoints::TimeCodeBuilder;

namespace {

class ForeignProfile : public MetadataProfile {
 public:
  class FullyQualifiedName FullyQualifiedName() const override {
    return "m.foreign";
  }
  bool Equals(const MetadataProfile& other) const override { return &other == this; }
  std::shared_ptr<MetadataProfile> Clone() const override { return std::make_shared<ForeignProfile>(); }
};

}  // namespace

// The table of assets, and those of what belongs to assets and groups.
class MediaAssetTableTest : public OpenDatabase {
 protected:
  void Store(MediaAsset& asset) { EXPECT_TRUE(assets.Save(asset)) << log.Text(); }
  void ExpectOneEntry(const std::string& text) {
    EXPECT_TRUE(log.Lines().size() == 1 && log.Contains(text)) << log.Text();
    log.Clear();
  }

  MediaResourceTable& resources = database.GetMediaResourceTable();
  TrackTable& tracks = database.GetTrackTable();
  MediaAssetGroupTable& groups = database.GetMediaAssetGroupTable();
};

TEST_F(MediaAssetTableTest, WhatRunsFindsWhatTheGeneratedTextsFind) {
  for (const char* name : {"goal", "shifts", "", "5", "corner"}) {
    MediaAsset clip = MakeClip(std::string("clip ") + name);
    clip.Name(name);
    Store(clip);
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
    CursorSqlite generated(database, text, assets.StatementGenerator().GenerateSelectCountStatement(query));
    const auto cursor = assets.OpenRawCursor(query);
    ASSERT_EQ(cursor->IsOpened(), generated.IsOpened()) << text;
    if (!cursor->IsOpened()) continue;
    ++opened;
    for (RawReadSqlite row; cursor->Next(row);) {
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

TEST_F(MediaAssetTableTest, ARawCursorMarksWhatMatched) {
  Run("INSERT INTO MediaAsset(id, name, description) VALUES ('b', 'Goal', 'The goal'), ('c', 'MATCH_CAM-2', 'A goal'),"
      "('a', 'MATCH_CAM-1', 'Kick-off, and a goal after a long and rather dull first half'), ('d', 'Interview', '')");
  const std::pair<std::string, const char*> marked[] = {
      {FullTextExpression::AnyWord("THE interview"), "b:Goal:<b>The</b> goal;d:<b>Interview</b>:;"},
      {FullTextExpression::AllWordsAsTyped("a goal cam-2"), "c:MATCH_<b>CAM-2</b>:<b>A</b> <b>goal</b>;"},
      {FullTextExpression::InColumn("name", FullTextExpression::Phrase("goal")), "b:<b>Goal</b>:The goal;"}};
  for (const auto& [expression, expected] : marked) {
    std::string texts;
    RawReadSqlite row;
    QuerySqlite query;
    query.Match("MediaAssetFts", expression).OrderByAsc("id");
    for (const auto cursor = assets.OpenRawCursor(query); cursor->Next(row);)
      texts +=
          row.GetString("id") + ":" + row.GetString("nameFts") + ":" + row.GetString("descriptionFts") + ";";
    EXPECT_EQ(texts, expected);
  }
}

TEST_F(MediaAssetTableTest, ReadingTwiceIsRefusedWhereElementsAreUnique) {
  MediaAsset asset = MakeClip("clip");
  Store(asset);
  const std::function<void()> readings[] = {
      [&] { assets.ReadTimebounds(asset); }, [&] { assets.ReadMediaResources(asset); },
      [&] { assets.ReadMediaResourcesLazy(asset); }, [&] { assets.ReadTrack(asset); },
      [&] { assets.ReadTrackLazy(asset); }};
  for (const auto& read : readings)
    EXPECT_THAT(read, ThrowsMessage<std::runtime_error>(
                          "Oru::DataModel::MediaAssets::SortedVector::Insert: item already "
                          "present in the collection"));
  assets.ReadMetadata(asset);
  assets.ReadDapOperatorMetadata(asset);
  EXPECT_TRUE(IsStored(database, asset));
  assets.ReadAnnotations(asset);
  EXPECT_EQ(asset.Annotations().size(), 2U);
}

TEST_F(MediaAssetTableTest, AProfileOfAnotherClassUnderAStoredNameIsABadCast) {
  const auto other = std::make_shared<AnglesDapOperatorMetadataProfile>();
  MetadataProfileDictionary metadata;
  metadata.Set(other);
  EXPECT_THROW(assets.AddMetadata(metadata, {"oru.dapoperator", {"a", "b"}}), std::bad_cast);

  MediaAsset asset = MakeClip("clip");
  Store(asset);
  asset.Metadata().Set(other);
  EXPECT_THROW(assets.ReadDapOperatorMetadata(asset), std::bad_cast);
  EXPECT_THROW(assets.ReadDapOperatorKeyword(asset), std::bad_cast);
  // For the writing table it is no operator's profile, and for the generic table none of its own.
  EXPECT_TRUE(assets.Save(asset));
  EXPECT_EQ(Count("DapOperatorKeywords"), 2);
}

TEST_F(MediaAssetTableTest, AnUnsetReferenceIsNullAndLeavesWhatAnObjectHolds) {
  MediaAsset child{MediaAssetId("child")};
  child.Ancestor(MediaAssetId("grandparent"));
  Store(child);
  EXPECT_EQ(Value("SELECT ancestor || ' ' || typeof(parent) FROM MediaAsset"), "grandparent null");
  child.Parent(MediaAssetId("kept"));
  ASSERT_TRUE(assets.GetObject(child.ObjectId(), child));
  EXPECT_EQ(child.Parent().Id(), "kept");
}

TEST_F(MediaAssetTableTest, OnlyProfilesOfTheGenericClassAreWrittenEntryByEntry) {
  MediaAsset clip = MakeClip("clip");
  Store(clip);
  MetadataTable& table = assets.GetMetadataTable();
  const std::string stored =
      "SELECT group_concat(fullyQualifiedName || '/' || name || '=' || value, ' ') FROM MetadataMediaAsset";
  MetadataProfileDictionary metadata;
  MetadataTable::Fold(metadata, {"b", {"x", "1"}});
  MetadataTable::Fold(metadata, {"a", {"w", ""}});
  metadata.Set(std::make_shared<GenericMetadataProfile>("empty"));
  metadata.Set(std::make_shared<DapOperatorMetadataProfile>());
  EXPECT_TRUE(table.Write(metadata, clip.ObjectId()));
  EXPECT_EQ(Value(stored), "a/w= b/x=1");
  GenericMetadataProfile single("oru.dapoperator");
  single.Set("k", "v");
  EXPECT_TRUE(table.Write(single, clip.ObjectId()));
  EXPECT_EQ(Value(stored), "oru.dapoperator/k=v");

  MetadataTable::Fold(metadata, {"z", {"x", "2"}});
  metadata.Set(std::make_shared<ForeignProfile>());
  EXPECT_THROW(table.Write(metadata, clip.ObjectId()), std::bad_cast);
  EXPECT_EQ(Value(stored), "a/w= b/x=1") << "those before it are written";
  clip.Annotations().front()->Metadata().Set(std::make_shared<ForeignProfile>());
  EXPECT_THROW(assets.Save(clip), std::bad_cast);
}

TEST_F(MediaAssetTableTest, StreamsAndEssencesThatWereTakenOutInMemoryStay) {
  const auto resource = MakeResource("a");
  EssenceArray& essences = resource->Streams().front()->Essences();
  essences[1].Nr(0);
  ASSERT_TRUE(resources.Save(*resource));
  EXPECT_EQ(essences[1].ObjectId(), essences[0].ObjectId())
      << "a number that is there twice takes the row over";
  EXPECT_NE(essences[2].ObjectId(), essences[0].ObjectId());
  essences[1].Nr(1);
  essences[1].ObjectId(-1);
  essences.Erase(2);
  EXPECT_TRUE(resources.Save(*resource));
  EXPECT_EQ(Count("Essence"), 3);
  // The audio essence takes the number of the video essence, whose row is in the way.
  essences.Erase(0);
  EXPECT_FALSE(resources.Save(*resource));
  ExpectOneEntry("UNIQUE constraint failed: Essence.nr");
  MediaResource bare{MediaResourceId("a")};
  ASSERT_TRUE(resources.Save(bare));
  EXPECT_EQ(Count("Stream") - Count("MetadataMediaResource"), 1);

  // A stream moves to the resource that saves it.
  MediaResource other(MediaResourceId("other"));
  other.Adopt(std::make_unique<Stream>(StreamId("a/stream")));
  ASSERT_TRUE(resources.Save(other));
  EXPECT_EQ(other.Streams().front()->ObjectId(), resource->Streams().front()->ObjectId());
  EXPECT_EQ(Count("Essence JOIN Stream ON Stream.key = refStream WHERE refMediaResource = " +
                  std::to_string(other.ObjectId())),
            3);
}

TEST_F(MediaAssetTableTest, ARefusedChannelLeavesThoseBeforeIt) {
  ASSERT_TRUE(resources.Save(*MakeResource("r")));
  Track track{TrackId("track"), "name"};
  const std::pair<std::shared_ptr<TrackChannelToRemove>, const char*> cases[] = {
      {Channel("unknown", 0, 0), "essence 0 of stream unknown, which a track refers to, isn't stored"},
      {Channel("r/stream", 3, 0), "essence 3 of stream r/stream, which a track refers to, isn't stored"},
      {Channel("r/stream", 1, -1), "CHECK constraint failed: channelNr >= 0"},
      {Channel("r/stream", 0, 4), "UNIQUE constraint failed: TrackChannel.refTrack"}};
  for (const auto& [second, message] : cases) {
    track.Channels() = {Channel("r/stream", 0, 4), second, Channel("r/stream", 2, 0)};
    EXPECT_FALSE(tracks.Save(track));
    ExpectOneEntry(message);
    EXPECT_EQ(Value("SELECT group_concat(refEssence || '.' || channelNr) FROM TrackChannel"), "1.4");
  }
}

TEST_F(MediaAssetTableTest, AnItemWhoseAssetIsNotStoredEndsTheSaveOfAGroupThere) {
  MediaAsset clip{MediaAssetId("a")};
  Store(clip);
  MediaAssetGroup reading;
  for (const char* missing : {"missing", ""}) {
    AnglesMediaAssetGroup group = MakeGroup("g", {"a", missing, "a"}, "angle");
    EXPECT_FALSE(groups.Save(group));
    ExpectOneEntry(std::string("asset ") + missing + ", which item 1 of a group refers to, isn't stored");
    EXPECT_EQ(Count("MediaAssetGroup") + Count("MediaAssetGroupItem"), 2);
    reading.ObjectId(group.ObjectId());
  }
  // Lazily read items know their asset by its identifier, and others hold it.
  groups.ReadAnglesMediaAssetGroupItems(reading, true);
  groups.ReadAnglesMediaAssetGroupItems(reading, false);
  ASSERT_EQ(reading.Items().size(), 2U) << "a second reading adds";
  EXPECT_TRUE(reading.ItemReference(0).Id() == "a" && !reading.ItemReference(0).Pointer());
  EXPECT_EQ(reading.ItemReference(1).Pointer()->ObjectId(), clip.ObjectId());
  EXPECT_EQ(dynamic_cast<const AnglesMediaAssetGroupItem&>(reading.Item(0)).Name(), "angle");
  ASSERT_TRUE(groups.DeleteAll());
  groups.GetMediaAssetGroupItemTable().ReadMediaAssetLazy(reading.Item(0));
  groups.GetMediaAssetGroupItemTable().ReadMediaAsset(reading.Item(1));
  EXPECT_TRUE(reading.ItemReference(0).Id().IsEmpty() && reading.ItemReference(1).Id().IsEmpty());
}

class DapOperatorMetadataTableTest : public OpenDatabase {
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
  for (const int32_t place : {-1, 65536}) {
    KeywordEncapsulated keyword(clip.ObjectId(), place, Utf8String("k"));
    EXPECT_FALSE(assets.GetDapOperatorKeywordsTable().Save(keyword)) << "nor could it be read here";
  }
  EXPECT_TRUE(log.Contains("no profile could hold a keyword at 65536"));
  const TimeCode sound = Profile().UserTimecode();
  Profile().UserTimecode(TimeCodeBuilder().Year(1900).Sample(-1).Build());
  EXPECT_FALSE(assets.Save(clip)) << "a read would refuse it";
  EXPECT_TRUE(log.Contains("userTimecode has the negative count -1"));
  Profile().UserTimecode(sound);
  for (const char camera : {'@', 'M', 'a', '\xc1'}) {
    log.Clear();
    Profile().Camera(camera);
    EXPECT_FALSE(assets.Save(clip));
    EXPECT_TRUE(log.Contains("CHECK constraint failed")) << log.Text();
  }
  Profile().Camera('B');
  EXPECT_TRUE(assets.Save(clip) && IsStored(database, clip));
}

// A value outside its range is no value: the profile keeps the one that it holds.
TEST_F(DapOperatorMetadataTableTest, StoredPlacesOutsideTheirRangesArePassedOver) {
  const DapId held(ZuServerId(70), 7, 7, 7, 'G');
  const std::pair<const char*, bool> cases[] = {
      {"zuServerId = 0", false},  {"zuServerId = 25", false},    {"dapIdPage = 10", false},
      {"dapIdPage = -1", false},  {"dapIdBank = 10", false},     {"dapIdRow = 256", false},
      {"dapIdCamera = 0", false}, {"dapIdCamera = NULL", false}, {"zuServerId = 2147483640", true},
      {"dapIdPage = 0", true},    {"dapIdPage = NULL", true},    {"dapIdRow = 9", true},
  };
  for (const auto& [assignment, isRead] : cases) {
    Run("UPDATE DapOperatorMetadata SET zuServerId = 70, dapIdPage = 7, dapIdBank = 7, dapIdRow = 7, dapIdCamera = 71");
    assets.ReadDapOperatorMetadata(clip);
    EXPECT_EQ(Profile().DapId(), held);
    Run(std::string("UPDATE DapOperatorMetadata SET ") + assignment);
    assets.ReadDapOperatorMetadata(clip);
    EXPECT_EQ(Profile().DapId() != held, isRead) << assignment;
  }
}

TEST_F(DapOperatorMetadataTableTest, GapsAmongStoredKeywordsAreEmptyOnes) {
  Run("DELETE FROM DapOperatorKeywords; INSERT INTO DapOperatorKeywords VALUES (1, 3, 'd'), (1, 1, 'b')");
  EXPECT_THAT(Read().Keywords(), ElementsAre("", "b", "", "d"));
  Run("INSERT INTO DapOperatorKeywords VALUES (1, -1, 'x')");
  EXPECT_THROW(Read(), std::out_of_range);
}

}  // namespace Oru::DataModel::MediaAssets::Database
