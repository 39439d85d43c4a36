#include "Oru/DataModel/MediaAssets/Database/MediaResourceTable.h"

#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

using TestSupport::MakeResource;

class MediaResourceTableTest : public TestSupport::OpenDatabase {
 protected:
  MediaResource Read(int64_t key) {
    MediaResource resource;
    EXPECT_TRUE(table.GetObject(key, resource));
    table.ReadStreams(resource);
    return resource;
  }

  MediaResourceTable& table = database.GetMediaResourceTable();
};

TEST_F(MediaResourceTableTest, StreamsAndEssencesThatWereTakenOutInMemoryStay) {
  const auto resource = MakeResource("a");
  ASSERT_TRUE(table.Save(*resource));
  EssenceArray& essences = resource->Streams().front()->Essences();
  essences.Erase(2);
  EXPECT_TRUE(table.Save(*resource));
  EXPECT_EQ(Read(resource->ObjectId()).Streams().front()->Essences().Size(), 3);
  // The audio essence takes the number of the video essence, whose row stands in the way.
  essences.Erase(0);
  EXPECT_FALSE(table.Save(*resource));
  EXPECT_TRUE(log.Contains("UNIQUE constraint failed: Essence.nr")) << log.Text();
  MediaResource bare{MediaResourceId("a")};
  ASSERT_TRUE(table.Save(bare));
  EXPECT_EQ(Read(resource->ObjectId()).Streams().size(), 1U);
  EXPECT_EQ(Count("MetadataMediaResource"), 0);
}

TEST_F(MediaResourceTableTest, AStreamMovesToTheResourceThatSavesIt) {
  const auto first = MakeResource("first");
  const auto second = std::make_shared<MediaResource>(MediaResourceId("second"));
  second->Adopt(std::make_unique<Stream>(StreamId("first/stream")));
  second->Streams().front()->Locations().Add(Location());
  ASSERT_TRUE(table.Save(*first) && table.Save(*second));
  EXPECT_EQ(second->Streams().front()->ObjectId(), first->Streams().front()->ObjectId());
  EXPECT_TRUE(Read(first->ObjectId()).Streams().empty());
  const MediaResource reading = Read(second->ObjectId());
  ASSERT_EQ(reading.Streams().size(), 1U);
  EXPECT_EQ(reading.Streams().front()->Essences().Size(), 3);
  EXPECT_TRUE(reading.Streams().front()->Locations().Empty());
}

}  // namespace Oru::DataModel::MediaAssets::Database
