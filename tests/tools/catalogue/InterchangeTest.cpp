#include "Interchange.h"

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"

#include "support/Prelude.h"
#include "tests/support/AssetReading.h"
#include "tests/support/ClipBuilder.h"
#include "tests/support/EditFields.h"
#include "tests/support/RandomAsset.h"
#include "tests/support/SqlValues.h"
#include "tests/support/StoredHash.h"

namespace Catalogue {
namespace {

namespace Edits = Oru::BusinessEntityModel::Edits;
using namespace Oru::DataModel::MediaAssets;
using Oru::TestSupport::RandomAssets;

std::string Exported(ClipStore& from) {
  std::ostringstream lines;
  EXPECT_TRUE(Export(from, lines));
  return lines.str();
}

/// Stores clips. A track of the first one leads to the streams of a later one, and of one that is gone.
std::vector<MediaAsset> PutClips(ClipStore& store, RandomAssets& random) {
  std::vector<MediaAsset> clips;
  const auto track = std::make_shared<Track>(random.Id());
  for (int n = 0; n < 5; ++n) {
    store.Clips().Put(clips.emplace_back(random.Next()));
    for (auto& resource : clips.back().MediaResources()) {
      for (auto& stream : resource->Streams()) {
        if (n < 3 || stream->Essences().Empty()) continue;
        track->Channels().push_back(std::make_shared<TrackChannelToRemove>());
        track->Channels().back()->Stream(stream);
      }
    }
  }
  clips.front().Tracks().Insert(track);
  store.Clips().Put(clips.front());
  store.Clips().Remove(clips.back().Id());
  clips.pop_back();
  return clips;
}

void PutGroup(ClipStore& store, RandomAssets& random, const std::vector<MediaAsset>& clips) {
  AnglesMediaAssetGroup group(random.Id(), random.Text());
  Oru::TestSupport::SetFields<MediaAssetGroup>(group, random);
  for (const MediaAsset& clip : clips) {
    if (random.Chance(2))
      group.Items().push_back(std::make_shared<AnglesMediaAssetGroupItem>(random.Text(), clip.Id()));
  }
  MediaAssetGroup plain(static_cast<const MediaAssetGroup&>(group));
  if (random.Chance(2)) return store.Groups().Put(plain);
  if (random.Chance(2))
    group.Metadata().Set(std::make_shared<AnglesDapOperatorMetadataProfile>(DapId(ZuServerId(110), 1, 2, 3)));
  store.Groups().Put(group);
}

void PutEdit(ClipStore& store, RandomAssets& random) {
  Edits::Edit edit(random.Id());
  SetFields(edit, random);
  for (auto count = random.Below(4); count > 0; --count)
    SetFields(edit.Sequences()[edit.Sequences().Add(Edits::Sequence(random.Id()))], random);
  store.Edits().Put(edit);
}

TEST(InterchangeTest, WhatIsExportedComesBackTheSameAndIsExportedAsTheSameText) {
  bool hasLonelyResources = false;
  for (uint64_t seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    ClipStore from(":memory:", nullptr), into(":memory:", nullptr);
    RandomAssets random(seed);
    const std::vector<MediaAsset> clips = PutClips(from, random);
    for (int n = 0; n < 3; ++n) {
      PutGroup(from, random, clips);
      PutEdit(from, random);
    }
    const std::string text = Exported(from);
    std::istringstream lines(text);
    const ImportResult result = Import(into, lines, Known::Refuse, UnknownFields::Refuse);
    ASSERT_TRUE(result.refused.empty()) << result.refused[0].line << ": " << result.refused[0].reason;
    ASSERT_EQ(Exported(into), text);
    hasLonelyResources = hasLonelyResources || text.find("{\"resource\":") != std::string::npos;
    for (const MediaAsset& clip : clips) {
      const auto before = from.Clips().Find(clip.Id()), after = into.Clips().Find(clip.Id());
      EXPECT_EQ(*after, *before);
      EXPECT_EQ(Oru::TestSupport::Channels(*after), Oru::TestSupport::Channels(*before));
    }
    for (const MediaAssetGroup& group : from.Groups().All()) {
      EXPECT_EQ(*into.Groups().Find(group.Id()), group);
      EXPECT_EQ(into.Groups().FindAngles(group.Id()), from.Groups().FindAngles(group.Id()));
    }
    EXPECT_EQ(into.Edits().All(), from.Edits().All());
  }
  EXPECT_TRUE(hasLonelyResources);
}

// Names of columns and what they mean are part of the format: each holds a number of its own, and it must come out
// under its own name.
TEST(InterchangeTest, EachColumnIsWhatItWasInStoredFiles) {
  ClipStore store(":memory:", nullptr);
  MediaAsset clip = Oru::TestSupport::MakeClip("clip");
  store.Clips().Put(clip);
  AnglesMediaAssetGroup group = Oru::TestSupport::MakeGroup("group", {"clip"});
  group.Metadata().Set(std::make_shared<AnglesDapOperatorMetadataProfile>(DapId(ZuServerId(110), 1, 2, 3)));
  store.Groups().Put(group);
  Edits::Edit edit("edit");
  edit.Sequences().Add(Edits::Sequence("sequence"));
  const auto profile = std::make_shared<Edits::DapOperatorMetadataProfile>();
  profile->ServerId(ZuServerId(10));
  edit.Sequences()[0].Metadata().Set(profile);
  store.Edits().Put(edit);
  for (
      const std::string& update : Oru::TestSupport::Column(
          store.Database(),
          "SELECT 'UPDATE ' || m.name || ' SET ' || c.name || ' = ' || CASE WHEN c.name LIKE 'dapId%' THEN"
          " c.cid + 65 * (c.name = 'dapIdCamera') WHEN c.name = 'creationDate' THEN 1 WHEN c.name LIKE 'in%Moving' OR c.name = 'dapUIProtected' THEN 0 ELSE 10 * c.cid END"
          " FROM sqlite_master m, pragma_table_info(m.name) c WHERE m.type = 'table' AND m.name NOT LIKE '%Fts%'"
          " AND m.name NOT LIKE 'sqlite%' AND c.name NOT LIKE 'ref%' AND c.name NOT IN ('key', 'id', 'foreignKey',"
          " 'nr', 'editRef')"))
    EXPECT_TRUE(store.Database().ExecuteStatement(update)) << update;
  const std::string text = Exported(store);
  EXPECT_EQ(Oru::TestSupport::StoredHash(text), 12867155077545615035U) << text;
}

TEST(InterchangeTest, EndsWhenAskedAndKeepsWhatWasHandled) {
  ClipStore store(":memory:", nullptr);
  std::stringstream lines;
  lines << "{\"format\":\"oru-interchange\",\"version\":1}\n";
  for (int n = 0; n < 600; ++n)
    lines << R"({"clip":{"id":")" << n << "\"}}\n";
  const auto size = static_cast<int64_t>(lines.str().size());
  int64_t calls = 0;
  const auto progress = [&](int64_t done, int64_t total) {
    return done <= total && total == size && ++calls < 300;
  };
  EXPECT_FALSE(Import(store, lines, Known::Refuse, UnknownFields::Refuse, progress).isComplete);
  EXPECT_EQ(store.Clips().Count({}), 300);
  EXPECT_FALSE(Export(store, lines, [](int64_t done, int64_t) { return done < 7; }));
}

}  // namespace
}  // namespace Catalogue
