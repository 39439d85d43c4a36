#include "Oru/DataModel/MediaAssets/Database/EssenceTable.h"

#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/Database/VideoEssenceTable.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

class EssenceTableTest : public TestSupport::OpenDatabase {
 protected:
  EssenceTableTest() { EXPECT_TRUE(database.GetMediaResourceTable().Save(*resource)); }

  Stream& StoredStream() { return *resource->Streams().front(); }
  int64_t Key() { return StoredStream().ObjectId(); }
  // The kinds of the stored essences in the order in which they are read: V, A, D.
  std::string Kinds() {
    Stream reading;
    reading.ObjectId(Key());
    database.GetStreamTable().ReadEssences(reading);
    std::string kinds;
    for (const auto& essence : reading.Essences())
      kinds += "ADV"[static_cast<int>(essence->GetType())];
    return kinds;
  }
  bool Write(std::unique_ptr<Essence> essence, int32_t number) {
    essences.Clear();
    essence->Nr(number);
    essences.Add(std::move(essence));
    essences[0].Nr(number);
    return table.Write(essences, Key());
  }

  EssenceTable& table = database.GetEssenceTable();
  std::shared_ptr<MediaResource> resource = TestSupport::MakeResource("resource");
  EssenceArray essences;
};

TEST_F(EssenceTableTest, EssencesComeBackByTheirNumbersAndAreNumberedAnew) {
  EXPECT_EQ(Kinds(), "VAD");
  ASSERT_TRUE(Write(std::make_unique<AudioEssence>(), 7) && Write(std::make_unique<VideoEssence>(), 5) &&
              Write(std::make_unique<DataEssence>(), -3));
  EXPECT_EQ(Kinds(), "DVADVA");
  Stream reading;
  reading.ObjectId(Key());
  database.GetStreamTable().ReadEssences(reading);
  EXPECT_EQ(reading.Essences()[5].Nr(), 5);
  EXPECT_EQ(reading.Essences()[5].ObjectId(), table.GetObjectIdFromEssenceNr(Key(), 7));
  EXPECT_EQ(table.GetObjectIdFromEssenceNr(Key(), 6), -1);
  EXPECT_EQ(table.GetObjectIdFromEssenceNr(Key() + 1, 7), -1);
}

TEST_F(EssenceTableTest, AStoredNumberTakesItsRowOverAndKeepsItsKind) {
  const int64_t key = table.GetObjectIdFromEssenceNr(Key(), 0);
  auto video = std::make_unique<VideoEssence>();
  auto audio = std::make_unique<AudioEssence>();
  video->Height(1080);
  audio->ChannelCount(16);
  ASSERT_TRUE(Write(std::move(video), 0));
  EXPECT_EQ(essences[0].ObjectId(), key);
  EXPECT_EQ(Count("MetadataEssence WHERE foreignKey = " + std::to_string(key)), 0);
  ASSERT_TRUE(Write(std::move(audio), 0));
  EXPECT_EQ(essences[0].ObjectId(), key);
  EXPECT_EQ(Value("SELECT height || ' ' || channelCount FROM VideoEssence JOIN Essence ON key = refEssence"),
            "1080 16");
  EXPECT_EQ(Kinds(), "VAD");
}

}  // namespace Oru::DataModel::MediaAssets::Database
