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

TEST_F(MediaResourceTableTest, AWriteStopsAtTheFirstRefusalAndPassesOverBareReferences) {
  MediaResourceReferenceVector references;
  for (const char* id : {"a", "c", "d"})
    references.Insert(MakeResource(id));
  references.Insert(MediaResourceId("b"));
  Run("CREATE TRIGGER Injected BEFORE INSERT ON MediaResource WHEN NEW.id = 'c' BEGIN SELECT RAISE(ABORT, "
      "'no'); END");
  EXPECT_FALSE(table.Write(references, true));
  EXPECT_EQ(TestSupport::Column(database, "SELECT id FROM MediaResource"), std::vector<std::string>{"a"});
  Run("DROP TRIGGER Injected");
  EXPECT_TRUE(table.Write(references, true));
  EXPECT_EQ(Value("SELECT group_concat(id, '') FROM MediaResource"), "acd");
  MediaResourceReferenceVector none;
  EXPECT_TRUE(table.Write(none, true));
}

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
  EXPECT_EQ(bare.ObjectId(), resource->ObjectId());
  const MediaResource reading = Read(bare.ObjectId());
  ASSERT_EQ(reading.Streams().size(), 1U);
  EXPECT_EQ(Count("Essence"), 3);
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

  MediaResource lazy;
  lazy.ObjectId(second->ObjectId());
  table.ReadStreamsLazy(lazy);
  EXPECT_EQ(lazy.Streams().front().Id(), "first/stream");
  EXPECT_TRUE(lazy.Streams().front()->Essences().Empty());
}

TEST_F(MediaResourceTableTest, APairLinkedTwiceIsTwoRowsAndOneResource) {
  MediaAsset clip = TestSupport::MakeClip("clip");
  ASSERT_TRUE(assets.Save(clip));
  RelationMedias link{clip.ObjectId(), clip.MediaResources().Front()->ObjectId()};
  RelationMediasTable& links = database.GetRelationMediaAssetMediaResource();
  EXPECT_TRUE(links.Save(link) && links.Delete(link));
  EXPECT_EQ(Count("RelationMediaAssetMediaResource"), 2);
  MediaAsset reading;
  reading.ObjectId(clip.ObjectId());
  assets.ReadMediaResources(reading);
  EXPECT_EQ(reading.MediaResources().Size(), 1U);
  EXPECT_TRUE(table.Delete(link.mediaResource));
  EXPECT_EQ(Count("RelationMediaAssetMediaResource"), 0);
}

}  // namespace Oru::DataModel::MediaAssets::Database
