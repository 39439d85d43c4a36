#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/ArchiveStatus.h"
#include "Oru/DataModel/MediaAssets/Location.h"
#include "Oru/DataModel/MediaAssets/TimeCodeString.h"
#include "Oru/DataModel/MediaAssets/TimeCodeTable.h"
#include "Oru/DataModel/MediaAssets/TrackLayout.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/Changes.h"
#include "support/EnumerationNames.h"
#include "support/RandomAsset.h"
#include "support/StoredHash.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>

// What the entities have in common: comparison, copies and clones; and the rules of single ones.
namespace Oru::DataModel::MediaAssets {
namespace {

using TestSupport::CheckedNames;
using TestSupport::ExpectEachChangeCounts;
using TestSupport::ExpectEveryFieldCounts;
using TimePoints::TimePoint;

// An asset with one of everything, whose track and layout lead back into it.
MediaAsset FilledAsset() {
  MediaAsset asset("a");
  asset.ObjectId(3);
  asset.Annotations().push_back(std::make_shared<Annotation>(AnnotationType::CuePoint, "cue"));
  auto stream = std::make_shared<Stream>("s");
  stream->Essences().Add(std::make_unique<VideoEssence>());
  stream->Essences()[0].TrackChannels().Insert(std::make_shared<TrackChannel>("t", 1));
  stream->Essences()[0].TimeCodeTables().Insert(std::make_shared<TimeCodeTable>("ltc"));
  auto resource = std::make_shared<MediaResource>("r");
  resource->Streams().emplace_back(stream);
  resource->Add("known");
  asset.MediaResources().Insert(resource);
  asset.Tracks().Insert(std::make_shared<Track>("t", "track"));
  for (const int32_t channelNr : {0, 1}) {
    asset.Tracks().Front()->Channels().push_back(std::make_shared<TrackChannelToRemove>());
    asset.Tracks().Front()->Channels().back()->Stream(stream);
    asset.Tracks().Front()->Channels().back()->ChannelNr(channelNr);
  }
  TrackLayoutItem item("i", "item");
  item.Tracks().Insert(asset.Tracks().Front());
  auto layout = std::make_shared<TrackLayout>("l", "layout");
  layout->TrackLayoutItems().Insert(item);
  asset.TrackLayouts().Insert(layout);
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
      CheckedNames<AssetType>() + CheckedNames<ResourceFormat>() + CheckedNames<WrapperFormat>() +
      CheckedNames<VideoCodingFormat>() + CheckedNames<AudioCodingFormat>() + CheckedNames<BitRateMode>() +
      CheckedNames<ChromaSubSampling>() + CheckedNames<ColorSpace>() + CheckedNames<ScanMode>() +
      CheckedNames<Boxing>() + CheckedNames<AnnotationType>() + CheckedNames<ArchiveStatus>() +
      CheckedNames<UserTimecodeType>() + CheckedNames<TimecodePrimary>() + CheckedNames<FillAndKeyType>() +
      CheckedNames<Location::Type>();
  EXPECT_EQ(TestSupport::StoredHash(names), 7751804348144559129U) << names;
}

TEST(EntitiesTest, EveryStoredFieldCounts) {
  ExpectEveryFieldCounts(FilledAsset());
  ExpectEveryFieldCounts(MediaResource("r"));
  ExpectEveryFieldCounts(Stream("s"));
  ExpectEveryFieldCounts<DataEssence, Essence>(DataEssence());
  ExpectEveryFieldCounts(AudioEssence());
  ExpectEveryFieldCounts(VideoEssence());
  ExpectEveryFieldCounts(Annotation());
  ExpectEveryFieldCounts(DapOperatorMetadataProfile());
  ExpectEveryFieldCounts(AnglesDapOperatorMetadataProfile());
  ExpectEveryFieldCounts(MediaAssetGroup("g", "name"));
  EXPECT_TRUE(static_cast<const Essence&>(AudioEssence()) != DataEssence());
}

// In a clone, whose parts are its own.
TEST(EntitiesTest, SoDoIdentifiersAndParts) {
  const MediaAsset filled = FilledAsset();
  const std::function<void(MediaAsset&, MediaResource&, Stream&, Essence&)> changes[] = {
      [](auto& asset, auto&...) { asset.Id("other"); },
      [](auto& asset, auto&...) { asset.Annotations()[0] = nullptr; },
      [](auto& asset, auto&...) { asset.Annotations()[0]->Data("changed"); },
      [](auto& asset, auto&...) { asset.Tracks().Front()->Name("renamed"); },
      [](auto& asset, auto&...) { asset.TrackLayouts().Clear(); },
      [](auto&, auto& resource, auto&...) { resource.Id("other"); },
      [](auto&, auto& resource, auto&...) { std::swap(resource.Streams()[0], resource.Streams()[1]); },
      [](auto&, auto&, auto& stream, auto&) { stream.Id("other"); },
      [](auto&, auto&, auto& stream, auto&) { stream.Locations().Add(Location()); },
      [](auto&, auto&, auto& stream, auto&) { stream.Essences().Erase(0); },
      [](auto&, auto&, auto&, auto& essence) { essence.Nr(3); },
      [](auto&, auto&, auto&, auto& essence) { essence.ChannelCount(2); },
      [](auto&, auto&, auto&, auto& essence) { essence.TrackChannels().Front()->ChannelNr(2); },
      [](auto&, auto&, auto&, auto& essence) {
        essence.TimeCodeTables().Front()->TimeCodeJumps().Insert(std::make_shared<TimeCodeJump>());
      },
  };
  for (const auto& change : changes) {
    const auto changed = filled.Clone();
    EXPECT_TRUE(*changed == filled);
    MediaResource& resource = *changed->MediaResources().Front();
    change(*changed, resource, *resource.Streams()[0], resource.Streams()[0]->Essences()[0]);
    EXPECT_FALSE(*changed == filled) << "change " << &change - changes;
    EXPECT_TRUE(filled == FilledAsset()) << "change " << &change - changes;
  }
  MediaAssetGroup group("g", "name");
  group.Items() = {Angle("a", "left"), Angle("b", "right")};
  ExpectEachChangeCounts<MediaAssetGroup>(
      group, {
                 [](auto& other) { other.Id("other"); },
                 [](auto& other) { std::swap(other.Items()[0], other.Items()[1]); },
                 [](auto& other) { other.Items()[1] = Angle("b", "left"); },
                 [](auto& other) { other.Metadata().Set(std::make_shared<DapOperatorMetadataProfile>()); },
             });
  Track same = *FilledAsset().Tracks().Front();
  same.Channels().clear();
  EXPECT_TRUE(same == *FilledAsset().Tracks().Front()) << "channels don't count";
  MediaResource resource = *FilledAsset().MediaResources().Front();
  resource.Streams()[0] = StreamReference(StreamId("s"));
  EXPECT_TRUE(resource == *FilledAsset().MediaResources().Front()) << "by identifier while it isn't loaded";
  EXPECT_TRUE(Track("a", "z") < Track("b", "") && !(Track("a", "") < Track("a", "z")));
}

// A plain item asks for the asset alone, an angle for an angle of the same name.
TEST(EntitiesTest, ItemsCompareByTheOneThatIsAsked) {
  const std::shared_ptr<MediaAssetGroupItem> items[] = {Item("a"), Item("b"), Angle("a", "left"),
                                                        Angle("a", "right"), Angle("b", "left")};
  std::string isEqual;
  for (const auto& asked : items) {
    for (const auto& other : items) {
      isEqual += *asked == *other ? '1' : '0';
      EXPECT_NE(*asked == *other, *asked != *other);
    }
  }
  EXPECT_EQ(isEqual, "1011001001001000001000001");
}

TEST(EntitiesTest, ItemsAreFoundByAssetAndByIndex) {
  MediaAssetGroup group("g", "name");
  const auto asset = std::make_shared<MediaAsset>("b");
  group.Items() = {Item("a"), std::make_shared<MediaAssetGroupItem>(asset), Angle("b", "second")};
  EXPECT_TRUE(group.Find("b") == group.Items()[1] && group.Find("c") == nullptr);
  EXPECT_TRUE(group.ItemReference(2).Id() == "b" && !group.Asset(0) && group.Asset(1) == asset);
  EXPECT_THROW(group.Item(3), std::out_of_range);
  EXPECT_THROW(group.Asset(3), std::out_of_range);
}

TEST(EntitiesTest, AClonesPartsAreItsOwnWhateverHappensToTheOriginal) {
  for (uint64_t seed = 1; seed <= 20; ++seed) {
    TestSupport::RandomAssets random(seed);
    MediaAsset asset = random.Next();
    const auto clone = asset.Clone();
    random.Change(asset);
    EXPECT_TRUE(*clone == TestSupport::RandomAssets(seed).Next()) << seed;
  }
  const MediaAsset asset = FilledAsset(), copy = asset;
  EXPECT_TRUE(asset.Clone()->ObjectId() == 3 && copy.Annotations()[0] == asset.Annotations()[0]);
  AnglesMediaAssetGroup group("g", "name");
  group.Items() = {Angle("a", "left"), Item("b")};
  const std::unique_ptr<MediaAssetGroup> sameGroup = static_cast<const MediaAssetGroup&>(group).Clone();
  EXPECT_TRUE(*sameGroup == group && sameGroup->Items()[0] != group.Items()[0]);
  EXPECT_TRUE(dynamic_cast<AnglesMediaAssetGroup*>(sameGroup.get()));
  EXPECT_NE(MediaAssetGroup(group).Clone()->Items()[0], group.Items()[0]);
}

TEST(EntitiesTest, TheLinksInsideAnAssetLeadToTheCloneInAClone) {
  std::unique_ptr<MediaAsset> clone;
  {
    MediaAsset asset = FilledAsset();
    asset.MediaResources().Front()->Streams()[0]->Id("renamed");
    clone = asset.Clone();
  }
  const StreamReference& stream = clone->MediaResources().Front()->Streams()[0];
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
  const auto refuses = [](const std::string& reason) {
    return testing::ThrowsMessage<std::runtime_error>("Oru::DataModel::MediaAssets::" + reason);
  };
  MediaAsset asset;
  MediaResource resource;
  asset.CreationDate(100);
  resource.CreationDate(100);
  EXPECT_TRUE(asset.ModificationDate() == 100 && resource.ModificationDate() == 100);
  for (const int64_t date : {300, 200, 100})
    asset.ModificationDate(date);
  EXPECT_THAT([&] { asset.ModificationDate(99); },
              refuses("MediaAsset::ModificationDate: New modification Date < creation date"));
  resource.ModificationDate(300);
  EXPECT_THAT([&] { resource.ModificationDate(299); },
              refuses("MediaResource::ModificationDate: New modification Date < actual modification date"));
  resource.CreationDate(-50);
  EXPECT_TRUE(asset.ModificationDate() == 100 && resource.ModificationDate() == -50);
}

TEST(EntitiesTest, OperatorMetadataIsTheProfileOfItsClass) {
  MediaAsset asset;
  EXPECT_THROW(asset.DapOperatorMetadata(), std::out_of_range);
  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  asset.Metadata().Set(profile);
  EXPECT_TRUE(asset.HasDapOperatorMetadata() && &std::as_const(asset).DapOperatorMetadata() == profile.get());
  const auto angles = std::make_shared<AnglesDapOperatorMetadataProfile>();
  asset.Metadata().Set(angles);
  EXPECT_FALSE(asset.HasDapOperatorMetadata());
  EXPECT_THROW(asset.DapOperatorMetadata(), std::bad_cast);
  EXPECT_FALSE(profile->Equals(*angles) || angles->Equals(*profile));
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
  for (int sequence = 0; sequence < 1024; ++sequence) {
    DapOperatorMetadataProfile profile;
    bool user = false, interface = false;
    for (int calls = sequence | 1024; calls > 1; calls >>= 2) {
      const bool value = (calls & 1) != 0;
      if ((calls & 2) != 0) {
        profile.DapUIProtected(value);
        interface = value;
        user = user || value;
      } else {
        profile.UserProtected(value);
        user = value || (user && interface);
      }
      ASSERT_EQ(profile.IsUserProtected(), user) << sequence;
      ASSERT_EQ(profile.IsDapUiProtected(), interface) << sequence;
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
  EXPECT_EQ(TimeCodeString(TimePoints::TimeCodeBuilder().ClockTime(9, 8, 7, 6).Build()).Value(),
            "09:08:07:06");
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
