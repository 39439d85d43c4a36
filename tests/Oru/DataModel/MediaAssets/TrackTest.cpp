#include "Oru/DataModel/MediaAssets/Track.h"

#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorSharedPointer.h"
#include "Oru/DataModel/MediaAssets/TrackChannel.h"
#include "Oru/DataModel/MediaAssets/TrackLayout.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace Oru::DataModel::MediaAssets {
namespace {

TEST(TrackTest, IdentifierAndNameDecideAndChannelsDoNot) {
  Track track("t", "name");
  Track same("t", "name");
  same.Channels().push_back(std::make_shared<TrackChannelToRemove>());
  EXPECT_TRUE(track == same);
  EXPECT_TRUE(track != Track("t", "other") && track != Track("u", "name"));
  EXPECT_FALSE(track < Track("t", "other"));
  EXPECT_LT(track, Track("u", ""));
}

TEST(TrackTest, ChannelsCompareByStreamAndNumbers) {
  TrackChannelToRemove channel;
  EXPECT_TRUE(channel.Stream().IsEmpty());
  channel.Stream(StreamId("s"));
  channel.EssenceNr(1);
  channel.ChannelNr(2);
  for (const auto& change : {+[](TrackChannelToRemove& other) { other.Stream(StreamId("other")); },
                             +[](TrackChannelToRemove& other) { other.EssenceNr(2); },
                             +[](TrackChannelToRemove& other) { other.ChannelNr(1); }}) {
    TrackChannelToRemove other = channel;
    EXPECT_TRUE(other == channel);
    change(other);
    EXPECT_TRUE(other != channel);
  }
}

TEST(TrackTest, ChannelsOfAnEssenceStandByNumber) {
  BaseTypes::SortedVectorSharedPointer<TrackChannel> channels;
  channels.Insert(std::make_shared<TrackChannel>("t", 2));
  channels.Insert(std::make_shared<TrackChannel>("t", -1));
  channels.Insert(std::make_shared<TrackChannel>("u", 2));
  EXPECT_THROW(channels.Insert(std::make_shared<TrackChannel>("u", 2)), std::runtime_error);
  EXPECT_EQ(channels.Front()->ChannelNr(), -1);
  EXPECT_EQ(channels.Size(), 3U);
}

TEST(TrackTest, LayoutsCompareTheirTracksWhileTheseLive) {
  auto track = std::make_shared<Track>("t");
  TrackLayout layout("l");
  TrackLayoutItem item("i");
  item.Tracks().Insert(track);
  layout.TrackLayoutItems().Insert(item);
  const auto clone = layout.Clone();
  EXPECT_TRUE(*clone == layout);
  EXPECT_TRUE(TrackLayout("l") != layout && TrackLayout("l", "name") != TrackLayout("l"));
  clone->TrackLayoutItems().Front().Name("other");
  EXPECT_TRUE(*clone != layout);

  track.reset();
  EXPECT_TRUE(layout.TrackLayoutItems().Front().Tracks().Front().expired());
  EXPECT_THROW(static_cast<void>(layout == TrackLayout(layout)), std::runtime_error);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
