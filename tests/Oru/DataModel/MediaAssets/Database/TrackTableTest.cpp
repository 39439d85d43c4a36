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
  } const cases[] = {
      {Channel("unknown", 0, 0), "essence 0 of stream unknown, which a track refers to, isn't stored"},
      {Channel("r/stream", 3, 0), "essence 3 of stream r/stream, which a track refers to, isn't stored"},
      {Channel("r/stream", 1, -1), "CHECK constraint failed: channelNr >= 0"},
      {Channel("r/stream", 0, 4), "UNIQUE constraint failed: TrackChannel.refTrack"}};
  for (const auto& [second, message] : cases) {
    log.Clear();
    track.Channels() = {Channel("r/stream", 0, 4), second, Channel("r/stream", 2, 0)};
    EXPECT_FALSE(table.Save(track));
    EXPECT_TRUE(log.Lines().size() == 1 && log.Contains(message)) << log.Text();
    EXPECT_EQ(StoredChannels(), "1.4");
  }
  track.Channels() = {Channel("r/stream", 2, 2147483647), Channel("r/stream", 0, 0)};
  EXPECT_TRUE(table.Save(track));
  EXPECT_EQ(StoredChannels(), "1.0,3.2147483647");
}

TEST_F(TrackTableTest, EachChannelIsReadWithAStreamOfItsOwn) {
  track.Channels() = {Channel("r/stream", 0, 0), Channel("r/stream", 1, 1)};
  ASSERT_TRUE(table.Save(track));
  Track reading;
  reading.ObjectId(track.ObjectId());
  table.ReadTrackChannel(reading);
  table.ReadTrackChannelLazy(reading);
  const auto& channels = reading.Channels();
  ASSERT_EQ(channels.size(), 4U) << "a second reading adds";
  EXPECT_NE(channels[0]->Stream().Pointer(), channels[1]->Stream().Pointer());
  EXPECT_TRUE(channels[0]->Stream()->Timebounds().Empty());
  EXPECT_TRUE(!channels[2]->Stream() && channels[3]->Stream().Id() == "r/stream");
}

}  // namespace Oru::DataModel::MediaAssets::Database
