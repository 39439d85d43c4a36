#include "Oru/DataModel/MediaAssets/Database/TrackTable.h"

#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

using TestSupport::Channel;

class TrackTableTest : public TestSupport::OpenDatabase {
 protected:
  TrackTableTest() { EXPECT_TRUE(database.GetMediaResourceTable().Save(*TestSupport::MakeResource("r"))); }

  std::string StoredChannels() {
    return Value(
        "SELECT group_concat(refEssence || '.' || channelNr) FROM (SELECT * FROM TrackChannel ORDER BY "
        "refEssence)");
  }

  TrackTable& table = database.GetTrackTable();
  Track track{TrackId("track"), "name"};
};

TEST_F(TrackTableTest, ARefusedChannelLeavesThoseAheadOfIt) {
  struct {
    std::shared_ptr<TrackChannelToRemove> second;
    const char* message;
  } const cases[] = {{Channel("unknown", 0, 0), ""},
                     {Channel("r/stream", 3, 0), ""},
                     {Channel("r/stream", 1, -1), "CHECK constraint failed: channelNr >= 0"},
                     {Channel("r/stream", 0, 4), "UNIQUE constraint failed: TrackChannel.refTrack"}};
  for (const auto& [second, message] : cases) {
    log.Clear();
    track.Channels() = {Channel("r/stream", 0, 4), second, Channel("r/stream", 2, 0)};
    EXPECT_FALSE(table.Save(track));
    EXPECT_TRUE(log.Contains(message)) << log.Text();
    EXPECT_EQ(StoredChannels(), "1.4");
  }
  track.Channels() = {Channel("r/stream", 2, 2147483647), Channel("r/stream", 0, 0)};
  EXPECT_TRUE(table.Save(track));
  EXPECT_EQ(StoredChannels(), "1.0,3.2147483647");
}

TEST_F(TrackTableTest, ASaveReplacesTheChannelsOfThatTrackAlone) {
  Track other{TrackId("other")};
  other.Channels() = track.Channels() = {Channel("r/stream", 0, 0), Channel("r/stream", 1, 1)};
  ASSERT_TRUE(table.Save(track) && table.Save(other));
  Track same{TrackId("track"), "renamed"};
  ASSERT_TRUE(table.Save(same));
  EXPECT_EQ(same.ObjectId(), track.ObjectId());
  EXPECT_EQ(Count("Track"), 2);
  EXPECT_EQ(Count("TrackChannel WHERE refTrack = " + std::to_string(other.ObjectId())), 2);
  EXPECT_EQ(Count("TrackChannel"), 2);
  EXPECT_TRUE(table.Write({}));
}

TEST_F(TrackTableTest, EachChannelIsReadWithAStreamOfItsOwn) {
  track.Channels() = {Channel("r/stream", 0, 0), Channel("r/stream", 1, 1)};
  ASSERT_TRUE(table.Save(track));
  Track deep, lazy;
  deep.ObjectId(track.ObjectId());
  lazy.ObjectId(track.ObjectId());
  table.ReadTrackChannel(deep);
  table.ReadTrackChannelLazy(lazy);
  ASSERT_EQ(deep.Channels().size(), 2U);
  EXPECT_NE(deep.Channels()[0]->Stream().Pointer(), deep.Channels()[1]->Stream().Pointer());
  EXPECT_TRUE(deep.Channels()[0]->Stream()->Timebounds().Empty());
  EXPECT_FALSE(lazy.Channels()[0]->Stream());
  EXPECT_EQ(lazy.Channels()[1]->Stream().Id(), "r/stream");
  table.ReadTrackChannelLazy(lazy);
  EXPECT_EQ(lazy.Channels().size(), 4U);
}

}  // namespace Oru::DataModel::MediaAssets::Database
