#include "Oru/DataModel/MediaAssets/Track.h"

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
