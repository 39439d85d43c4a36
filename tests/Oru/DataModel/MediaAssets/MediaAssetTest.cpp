#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/Changes.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <typeinfo>
#include <utility>

namespace Oru::DataModel::MediaAssets {
namespace {

using testing::ThrowsMessage;
using TimePoints::TimeBoundary;
using TimePoints::TimePoint;

TimeBoundary At(int64_t nanoseconds) {
  return TimeBoundary(TimePoint::FromNanoseconds(nanoseconds));
}

std::shared_ptr<Track> FilledTrack(const std::shared_ptr<Stream>& stream) {
  auto track = std::make_shared<Track>("t", "track");
  for (const int32_t channelNr : {0, 1}) {
    track->Channels().push_back(std::make_shared<TrackChannelToRemove>());
    track->Channels().back()->Stream(stream);
    track->Channels().back()->ChannelNr(channelNr);
  }
  return track;
}

std::shared_ptr<TrackLayout> LayoutOf(const std::shared_ptr<Track>& track) {
  TrackLayoutItem item("i", "item");
  item.Tracks().Insert(track);
  auto layout = std::make_shared<TrackLayout>("l", "layout");
  layout->TrackLayoutItems().Insert(item);
  return layout;
}

/// An asset with one of everything, whose track carries two channels of its resource's stream.
MediaAsset FilledAsset() {
  MediaAsset asset("a");
  asset.ObjectId(3);
  asset.Ancestor(MediaAssetId("ancestor"));
  asset.CreationDate(100);
  asset.PhysicalTimebounds().Insert(TimePoints::TimeBounds(At(0), At(1000)));
  asset.Metadata().Set(std::make_shared<DapOperatorMetadataProfile>());
  asset.Annotations().push_back(std::make_shared<Annotation>(AnnotationType::CuePoint, "cue"));
  auto stream = std::make_shared<Stream>("s");
  stream->Essences().Add(std::make_unique<VideoEssence>());
  auto resource = std::make_shared<MediaResource>("r");
  resource->Streams().emplace_back(stream);
  asset.MediaResources().Insert(resource);
  asset.MediaResources().Insert(MediaResourceId("known"));
  const auto track = FilledTrack(stream);
  asset.Tracks().Insert(track);
  asset.TrackLayouts().Insert(LayoutOf(track));
  return asset;
}

MediaResource& LoadedResource(MediaAsset& asset) {
  return *asset.MediaResources().At(1);
}

TEST(MediaAssetTest, TheModificationDateIsNeverAheadOfTheCreationDate) {
  MediaAsset asset;
  asset.CreationDate(100);
  EXPECT_EQ(asset.ModificationDate(), 100);
  asset.ModificationDate(300);
  asset.ModificationDate(200);
  asset.ModificationDate(100);
  EXPECT_THAT(
      [&] { asset.ModificationDate(99); },
      ThrowsMessage<std::runtime_error>("Oru::DataModel::MediaAssets::MediaAsset::ModificationDate: New "
                                        "modification Date < creation date"));
  EXPECT_EQ(asset.ModificationDate(), 100);
  asset.CreationDate(5000000000);
  EXPECT_EQ(asset.ModificationDate(), 5000000000);
}

TEST(MediaAssetTest, OperatorMetadataIsTheProfileOfItsClass) {
  MediaAsset asset;
  EXPECT_FALSE(asset.HasDapOperatorMetadata());
  EXPECT_THAT([&] { asset.DapOperatorMetadata(); }, ThrowsMessage<std::out_of_range>("map::at"));

  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  asset.Metadata().Set(profile);
  EXPECT_TRUE(asset.HasDapOperatorMetadata() && &std::as_const(asset).DapOperatorMetadata() == profile.get());
  asset.Metadata().Set(std::make_shared<AnglesDapOperatorMetadataProfile>());
  EXPECT_FALSE(asset.HasDapOperatorMetadata());
  EXPECT_THROW(asset.DapOperatorMetadata(), std::bad_cast);
}

TEST(MediaAssetTest, EveryFieldCounts) {
  TestSupport::ExpectEachChangeCounts<MediaAsset>(
      FilledAsset(),
      {
          [](MediaAsset& asset) { asset.Id("other"); },
          [](MediaAsset& asset) { asset.AssetType(AssetType::media); },
          [](MediaAsset& asset) { asset.Ancestor({}); },
          [](MediaAsset& asset) { asset.Parent(MediaAssetId("parent")); },
          [](MediaAsset& asset) { asset.Name("other"); },
          [](MediaAsset& asset) { asset.Description("other"); },
          [](MediaAsset& asset) { asset.CreationDate(99); },
          [](MediaAsset& asset) { asset.ModificationDate(101); },
          [](MediaAsset& asset) { asset.InBoundary(At(1)); },
          [](MediaAsset& asset) { asset.PhysicalTimebounds().Clear(); },
          [](MediaAsset& asset) { asset.DapOperatorMetadata().Rating(4); },
          [](MediaAsset& asset) { asset.Metadata().Clear(); },
          [](MediaAsset& asset) { asset.Tracks().Front() = std::make_shared<Track>("t", "renamed"); },
          [](MediaAsset& asset) { asset.TrackLayouts().Clear(); },
          [](MediaAsset& asset) { asset.MediaResources().Insert(MediaResourceId("third")); },
          [](MediaAsset& asset) { asset.MediaResources().At(1) = std::make_shared<MediaResource>("r"); },
          [](MediaAsset& asset) { asset.Annotations()[0] = std::make_shared<Annotation>(); },
          [](MediaAsset& asset) { asset.Annotations()[0] = nullptr; },
      });
  EXPECT_LT(MediaAsset("a"), MediaAsset("b"));
}

TEST(MediaAssetTest, ACopySharesWhatACloneHasOfItsOwn) {
  MediaAsset asset = FilledAsset();
  MediaAsset copy = asset;
  const auto clone = asset.Clone();
  asset.Annotations()[0]->Data("changed");
  LoadedResource(asset).Streams()[0]->Essences()[0].ChannelCount(2);
  asset.Tracks().Front()->Name("changed");
  asset.Tracks().Front()->Channels()[0]->EssenceNr(7);
  asset.DapOperatorMetadata().Rating(4);
  EXPECT_EQ(copy.Annotations()[0]->Data(), "changed");
  EXPECT_EQ(copy.Tracks().Front(), asset.Tracks().Front());
  EXPECT_EQ(copy.DapOperatorMetadata().Rating(), 0);
  EXPECT_TRUE(*clone == FilledAsset() && clone->ObjectId() == 3);
  EXPECT_EQ(clone->Tracks().Front()->Channels()[0]->EssenceNr(), 0);
}

TEST(MediaAssetTest, TheLinksInsideAnAssetLeadToTheCloneInAClone) {
  std::unique_ptr<MediaAsset> clone;
  {
    MediaAsset asset = FilledAsset();
    LoadedResource(asset).Streams()[0]->Id("renamed");
    clone = asset.Clone();
  }
  const StreamReference& stream = LoadedResource(*clone).Streams()[0];
  EXPECT_TRUE(stream.Id() == "s" && stream->Id() == "renamed");
  const auto& track = clone->Tracks().Front();
  for (const auto& channel : track->Channels())
    EXPECT_TRUE(channel->Stream().Pointer() == stream.Pointer() && channel->Stream().Id() == "s");
  EXPECT_EQ(clone->TrackLayouts().Front()->TrackLayoutItems().Front().Tracks().Front().lock(), track);
}

TEST(MediaAssetTest, ATrackAloneClonesItsStreamOnce) {
  const auto stream = std::make_shared<Stream>("s");
  const auto track = FilledTrack(stream);
  const auto clone = track->Clone();
  EXPECT_EQ(*clone->Channels()[1], *track->Channels()[1]);
  EXPECT_NE(clone->Channels()[0]->Stream().Pointer(), stream);
  EXPECT_EQ(clone->Channels()[0]->Stream().Pointer(), clone->Channels()[1]->Stream().Pointer());
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
