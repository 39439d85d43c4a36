#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/ArchiveStatus.h"
#include "Oru/DataModel/MediaAssets/Location.h"
#include "Oru/DataModel/MediaAssets/TimeCodeString.h"
#include "Oru/DataModel/MediaAssets/TimeCodeTable.h"
#include "Oru/DataModel/MediaAssets/TrackLayout.h"

#include "support/Changes.h"
#include "support/EnumerationNames.h"
#include "support/Prelude.h"
#include "support/RandomAsset.h"
#include "support/StoredHash.h"

// What the entities have in common: comparison, copies and clones; and the rules of single ones.
namespace Oru::DataModel::MediaAssets {
namespace {

using TestSupport::CheckedNames;
using TestSupport::ExpectEveryFieldCounts;
using TimePoints::TimePoint;

MediaResource& ResourceOf(MediaAsset& asset) {
  return *asset.MediaResources().Front();
}
Stream& StreamOf(MediaAsset& asset) {
  return *ResourceOf(asset).Streams()[0];
}
Essence& EssenceOf(MediaAsset& asset) {
  return StreamOf(asset).Essences()[0];
}

// An asset with one of everything, whose track and layout lead back into it.
MediaAsset FilledAsset() {
  MediaAsset asset("a");
  asset.ObjectId(3);
  asset.Annotations().push_back(std::make_shared<Annotation>(AnnotationType::CuePoint, "cue"));
  asset.MediaResources().Insert(std::make_shared<MediaResource>("r"));
  ResourceOf(asset).Adopt(std::make_unique<Stream>("s"));
  ResourceOf(asset).Add("known");
  StreamOf(asset).Essences().Add(std::make_unique<VideoEssence>());
  EssenceOf(asset).TrackChannels().Insert(std::make_shared<TrackChannel>("t", 1));
  EssenceOf(asset).TimeCodeTables().Insert(std::make_shared<TimeCodeTable>("ltc"));
  asset.Tracks().Insert(std::make_shared<Track>("t", "track"));
  for (const int32_t channelNr : {0, 1}) {
    auto& channels = asset.Tracks().Front()->Channels();
    channels.push_back(std::make_shared<TrackChannelToRemove>());
    channels.back()->Stream(ResourceOf(asset).Streams()[0]);
    channels.back()->ChannelNr(channelNr);
  }
  TrackLayoutItem item("i", "item");
  item.Tracks().Insert(asset.Tracks().Front());
  asset.TrackLayouts().Insert(std::make_shared<TrackLayout>("l", "layout"));
  asset.TrackLayouts().Front()->TrackLayoutItems().Insert(item);
  return asset;
}

std::shared_ptr<MediaAssetGroupItem> Item(const std::string& asset) {
  return std::make_shared<MediaAssetGroupItem>(MediaAssetId(asset));
}
std::shared_ptr<MediaAssetGroupItem> Angle(const std::string& asset, const std::string& name) {
  return std::make_shared<AnglesMediaAssetGroupItem>(name, MediaAssetId(asset));
}

// The numbers are in stored files.
TEST(EntitiesTest, StoredNumbersKeepTheirNames) {
  const std::string names =
      CheckedNames<AssetType, ResourceFormat, WrapperFormat, VideoCodingFormat, AudioCodingFormat,
                   BitRateMode, ChromaSubSampling, ColorSpace, ScanMode, Boxing, AnnotationType,
                   ArchiveStatus, UserTimecodeType, TimecodePrimary, FillAndKeyType, Location::Type>();
  EXPECT_EQ(TestSupport::StoredHash(names), 7751804348144559129U) << names;
}

TEST(EntitiesTest, EveryFieldIdentifierAndPartCountsAndIsTheClonesOwn) {
  ExpectEveryFieldCounts<MediaAsset>(
      FilledAsset(),
      {
          [](auto& asset) { asset.Id("other"); },
          [](auto& asset) { asset.Annotations()[0] = nullptr; },
          [](auto& asset) { asset.Annotations()[0]->Data("changed"); },
          [](auto& asset) { asset.Tracks().Front()->Name("renamed"); },
          [](auto& asset) { asset.TrackLayouts().Clear(); },
          [](auto& asset) { ResourceOf(asset).Id("other"); },
          [](auto& asset) { std::swap(ResourceOf(asset).Streams()[0], ResourceOf(asset).Streams()[1]); },
          [](auto& asset) { StreamOf(asset).Id("other"); },
          [](auto& asset) { StreamOf(asset).Locations().Add(Location()); },
          [](auto& asset) { StreamOf(asset).Essences().Erase(0); },
          [](auto& asset) { EssenceOf(asset).Nr(3); },
          [](auto& asset) { EssenceOf(asset).ChannelCount(2); },
          [](auto& asset) { EssenceOf(asset).TrackChannels().Front()->ChannelNr(2); },
          [](auto& asset) {
            EssenceOf(asset).TimeCodeTables().Front()->TimeCodeJumps().Insert(
                std::make_shared<TimeCodeJump>());
          },
      });
  ExpectEveryFieldCounts<DataEssence, Essence>(DataEssence());
  const auto expectForEach = [](const auto&... entities) { (ExpectEveryFieldCounts(entities), ...); };
  expectForEach(MediaResource("r"), Stream("s"), AudioEssence(), VideoEssence(), Annotation(),
                DapOperatorMetadataProfile(), AnglesDapOperatorMetadataProfile());
  EXPECT_TRUE(static_cast<const Essence&>(AudioEssence()) != DataEssence());
  EXPECT_TRUE(AspectRatio(16, 9) != AspectRatio(16, 10) && AspectRatio(16, 9) != AspectRatio(4, 9));
  MediaAssetGroup group("g", "name");
  group.Items() = {Angle("a", "left"), Angle("b", "right")};
  ExpectEveryFieldCounts<MediaAssetGroup>(
      group, {
                 [](auto& other) { other.Id("other"); },
                 [](auto& other) { std::swap(other.Items()[0], other.Items()[1]); },
                 [](auto& other) { other.Items()[1] = Angle("b", "left"); },
                 [](auto& other) { other.Metadata().Set(std::make_shared<DapOperatorMetadataProfile>()); },
             });
}

TEST(EntitiesTest, SomeThingsDoNotCount) {
  Track same = *FilledAsset().Tracks().Front();
  same.Channels().clear();
  EXPECT_TRUE(same == *FilledAsset().Tracks().Front()) << "channels don't count";
  MediaAsset filled = FilledAsset();
  ResourceOf(filled).Streams()[0] = StreamReference(StreamId("s"));
  EXPECT_TRUE(filled == FilledAsset()) << "by identifier while it isn't loaded";
  EXPECT_TRUE(Track("a", "z") < Track("b", "") && !(Track("a", "") < Track("a", "z")));
}

// A plain item asks for the asset alone, an angle for an angle of the same name.
TEST(EntitiesTest, ItemsCompareByTheOneThatIsAskedAndAreFound) {
  MediaAssetGroup group("g", "name");
  group.Items() = {Item("a"), Item("b"), Angle("a", "left"), Angle("a", "right"), Angle("b", "left")};
  std::string isEqual;
  for (const auto& asked : group.Items()) {
    for (const auto& other : group.Items()) {
      isEqual += *asked == *other ? '1' : '0';
      EXPECT_NE(*asked == *other, *asked != *other);
    }
  }
  EXPECT_EQ(isEqual, "1011001001001000001000001");
  const auto asset = std::make_shared<MediaAsset>("b");
  group.Items()[1] = std::make_shared<MediaAssetGroupItem>(asset);
  EXPECT_TRUE(group.Find("b") == group.Items()[1] && group.Find("c") == nullptr);
  EXPECT_TRUE(group.ItemReference(4).Id() == "b" && !group.Asset(0) && group.Asset(1) == asset);
  EXPECT_THROW(group.Item(5), std::out_of_range);
  EXPECT_THROW(group.Asset(5), std::out_of_range);
}

TEST(EntitiesTest, AClonesPartsAreItsOwnWhateverHappensToTheOriginal) {
  for (uint64_t seed = 1; seed <= 20; ++seed) {
    TestSupport::RandomAssets random(seed);
    MediaAsset asset = random.Next();
    const auto clone = asset.Clone();
    random.Change(asset);
    EXPECT_TRUE(*clone == TestSupport::RandomAssets(seed).Next()) << seed;
  }
  MediaAsset asset = FilledAsset();
  const MediaAsset copy = asset;
  EXPECT_TRUE(asset.Clone()->ObjectId() == 3 && copy.Annotations()[0] == asset.Annotations()[0]);
  AnglesMediaAssetGroup group("g", "name");
  group.Items() = {Angle("a", "left"), Item("b")};
  const std::unique_ptr<MediaAssetGroup> sameGroup = static_cast<const MediaAssetGroup&>(group).Clone();
  EXPECT_TRUE(*sameGroup == group && sameGroup->Items()[0] != group.Items()[0]);
  EXPECT_TRUE(dynamic_cast<AnglesMediaAssetGroup*>(sameGroup.get()));
  const MediaAssetGroup plain(static_cast<const MediaAssetGroup&>(group));
  EXPECT_NE(plain.Clone()->Items()[0], group.Items()[0]);
}

TEST(EntitiesTest, TheLinksInsideAnAssetLeadToTheCloneInAClone) {
  std::unique_ptr<MediaAsset> clone;
  {
    MediaAsset asset = FilledAsset();
    StreamOf(asset).Id("renamed");
    clone = asset.Clone();
  }
  const StreamReference& stream = ResourceOf(*clone).Streams()[0];
  EXPECT_TRUE(stream.Id() == "s" && stream->Id() == "renamed");
  const auto& track = clone->Tracks().Front();
  for (const auto& channel : track->Channels())
    EXPECT_TRUE(channel->Stream().Pointer() == stream.Pointer() && channel->Stream().Id() == "s");
  TrackLayout& layout = *clone->TrackLayouts().Front();
  EXPECT_EQ(layout.TrackLayoutItems().Front().Tracks().Front().lock(), track);
  EXPECT_TRUE(*layout.Clone() == layout && TrackLayout("l", "layout") != layout);
  const auto alone = track->Clone();
  EXPECT_NE(alone->Channels()[0]->Stream().Pointer(), stream.Pointer());
  EXPECT_EQ(alone->Channels()[0]->Stream().Pointer(), alone->Channels()[1]->Stream().Pointer());
  const TrackLayout copy(layout);
  clone->Tracks().Clear();
  EXPECT_THROW(static_cast<void>(copy == TrackLayout(copy)), std::runtime_error) << "the track is gone";
}

TEST(EntitiesTest, ModificationDatesFollowCreationDates) {
  MediaAsset asset;
  MediaResource resource;
  const auto refuses = [](auto& entity, int64_t date, const std::string& reason) {
    EXPECT_THAT([&] { entity.ModificationDate(date); },
                testing::ThrowsMessage<std::runtime_error>("Oru::DataModel::MediaAssets::" + reason));
  };
  asset.CreationDate(100);
  resource.CreationDate(100);
  EXPECT_TRUE(asset.ModificationDate() == 100 && resource.ModificationDate() == 100);
  asset.ModificationDate(300);
  asset.ModificationDate(100);
  refuses(asset, 99, "MediaAsset::ModificationDate: New modification Date < creation date");
  resource.ModificationDate(300);
  refuses(resource, 299, "MediaResource::ModificationDate: New modification Date < actual modification date");
  resource.CreationDate(-50);
  EXPECT_TRUE(asset.ModificationDate() == 100 && resource.ModificationDate() == -50);
}

TEST(EntitiesTest, OperatorMetadataIsTheProfileOfItsClass) {
  MediaAsset asset;
  EXPECT_THROW(asset.DapOperatorMetadata(), std::out_of_range);
  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  const auto angles = std::make_shared<AnglesDapOperatorMetadataProfile>();
  asset.Metadata().Set(profile);
  EXPECT_TRUE(asset.HasDapOperatorMetadata() && &std::as_const(asset).DapOperatorMetadata() == profile.get());
  asset.Metadata().Set(angles);
  EXPECT_FALSE(asset.HasDapOperatorMetadata() || profile->Equals(*angles) || angles->Equals(*profile));
  EXPECT_THROW(asset.DapOperatorMetadata(), std::bad_cast);
}

TEST(EntitiesTest, TheJumpInForceIsTheLastOneThatHasBegun) {
  TimeCodeTable table("ltc");
  EXPECT_EQ(table.JumpAt(TimePoint::FromNanoseconds(0)), nullptr);
  for (const int64_t at : {100, 0}) {
    table.TimeCodeJumps().Insert(std::make_shared<TimeCodeJump>(TimePoint::FromNanoseconds(at),
                                                                TimePoints::TimeCode().AddSample(at + 5)));
  }
  EXPECT_EQ(table.JumpAt(TimePoint::FromNanoseconds(-1)), nullptr);
  for (const auto& [instant, sample] : {std::pair(0, 5), {99, 5}, {100, 105}, {101, 105}})
    EXPECT_EQ(table.JumpAt(TimePoint::FromNanoseconds(instant))->TimeCode().TotalSample(), sample);
}

TEST(EntitiesTest, TheClipIdIsMadeOfItsPartsAndThatOfAnglesHasNoCamera) {
  DapOperatorMetadataProfile profile;
  EXPECT_TRUE(profile.DapId().IsEmpty() && profile.UserTimecode().HasDate());
  profile.ServerId(ZuServerId(110));
  profile.Bank(2);
  profile.Camera('D');
  EXPECT_EQ(profile.DapId(), DapId(ZuServerId(110), 255, 2, 255, 'D'));
  EXPECT_EQ(AnglesDapOperatorMetadataProfile(profile.DapId()).DapId(), DapId(ZuServerId(110), 255, 2, 255));
  EXPECT_EQ(AnglesDapOperatorMetadataProfile(), AnglesDapOperatorMetadataProfile::Empty());
  profile.Page(300);
  EXPECT_THROW(profile.DapId(), std::invalid_argument);
}

// Every sequence of five calls of the setters, against the rule in words: protection from the interface
// always brings protection for the user along, and only a user's own call takes that back, while the
// interface's is off.
TEST(EntitiesTest, ProtectionFlags) {
  for (int sequence = 1024; sequence < 2048; ++sequence) {
    DapOperatorMetadataProfile profile;
    bool user = false, interface = false;
    for (int calls = sequence; calls > 1; calls >>= 2) {
      const bool value = (calls & 1) != 0, isOfInterface = (calls & 2) != 0;
      isOfInterface ? profile.DapUIProtected(value) : profile.UserProtected(value);
      if (isOfInterface) interface = value;
      user = value || (user && (isOfInterface || interface));
      ASSERT_TRUE(profile.IsUserProtected() == user && profile.IsDapUiProtected() == interface) << sequence;
    }
  }
}

TEST(EntitiesTest, KeywordsGrowByEmptyOnes) {
  DapOperatorMetadataProfile profile;
  profile.Keyword(2, "third");
  EXPECT_THAT(profile.Keywords(), testing::ElementsAre("", "", "third"));
  profile.Keyword(65535, "last");
  EXPECT_THROW(profile.Keyword(65536, ""), std::out_of_range);
  EXPECT_THROW(profile.Keywords(StringVector(65537)), std::out_of_range);
  EXPECT_EQ(profile.Keywords().size(), 65536U);
}

// The formatter and the parser of time codes have tests of their own. They also take what isn't a time code alone.
TEST(EntitiesTest, ATimeCodeStringIsTheTextOfAClock) {
  TestSupport::RandomValues random(5);
  for (int i = 0; i < 4000; ++i) {
    const TimePoints::TimeCode timeCode = random.TimeCode();
    const TimeCodeString text(timeCode);
    const TimePoints::TimeCode clock = text.ToTimeCode(timeCode.Rate());
    EXPECT_EQ(TimeCodeString(clock).Value(), text.Value());
    EXPECT_TRUE(clock.IsDrop() == timeCode.IsDrop() && clock.Sample() == timeCode.Sample()) << text.Value();
    EXPECT_EQ(clock.Hour() * 3600 + clock.Minute() * 60 + clock.Second(),
              timeCode.Hour() * 3600 + timeCode.Minute() * 60 + timeCode.Second());
  }
  EXPECT_EQ(TimeCodeString("09:08:07:119").ToTimeCode(TimePoints::Rate(120, 1)).Sample(), 119);
  const TimePoints::Rate thirty(30, 1);
  for (const std::string text : {"", "10:00:00", "1:00:00:00", "10;00:00:00", "10:00:00:0 ", "10:00:00:00:00",
                                 "10:00:00.00", "-1:00:00:00", "10:00:00:99999999999"})
    EXPECT_THROW(TimeCodeString(text).ToTimeCode(thirty), std::invalid_argument) << text;
  for (const std::string text : {"24:00:00:00", "00:60:00:00", "00:00:00:30", "00:01:00;01"})
    EXPECT_THROW(TimeCodeString(text).ToTimeCode(thirty), std::out_of_range) << text;
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
