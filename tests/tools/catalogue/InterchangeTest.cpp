#include "Interchange.h"

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"

#include "tests/support/AssetReading.h"
#include "tests/support/EditFields.h"
#include "tests/support/RandomAsset.h"

#include <gtest/gtest.h>

#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace Catalogue {
namespace {

namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
namespace Edits = Oru::BusinessEntityModel::Edits;
using namespace Oru::DataModel::MediaAssets;
using Oru::TestSupport::RandomAssets;

class InterchangeTest : public testing::Test {
 protected:
  static std::string Exported(ClipStore& from) {
    std::ostringstream lines;
    EXPECT_TRUE(Export(from, lines));
    return lines.str();
  }
  static ImportResult Imported(ClipStore& into, const std::string& text, Known known = Known::Refuse,
                               UnknownFields unknown = UnknownFields::Refuse) {
    std::istringstream lines(text);
    return Import(into, lines, known, unknown);
  }
  static std::string Line(const std::string& entity) {
    return "{\"format\":\"oru-interchange\",\"version\":1}\n" + entity + "\n";
  }

  ClipStore store{":memory:", nullptr};
  ClipStore other{":memory:", nullptr};
};

void PutGroup(ClipStore& store, RandomAssets& random, const std::vector<MediaAsset>& clips) {
  AnglesMediaAssetGroup group(random.Id(), random.Text());
  group.Type(random.Text());
  for (const MediaAsset& clip : clips) {
    if (random.Chance(2))
      group.Items().push_back(std::make_shared<AnglesMediaAssetGroupItem>(random.Text(), clip.Id()));
  }
  if (random.Chance(2)) {
    MediaAssetGroup plain = group;
    return store.Groups().Put(plain);
  }
  if (random.Chance(2)) {
    group.Metadata().Set(std::make_shared<AnglesDapOperatorMetadataProfile>(DapId(ZuServerId(110), 1, 2, 3)));
  }
  store.Groups().Put(group);
}

void PutEdit(ClipStore& store, RandomAssets& random) {
  Edits::Edit edit(random.Id());
  SetFields(edit, random);
  for (auto count = random.Below(4); count > 0; --count) {
    edit.Sequences().Add(std::make_unique<Edits::Sequence>(random.Id()));
    SetFields(edit.Sequences()[edit.Sequences().Size() - 1], random);
  }
  store.Edits().Put(edit);
}

TEST_F(InterchangeTest, WhatIsExportedComesBackTheSameAndIsExportedAsTheSameText) {
  for (uint64_t seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    ClipStore from(":memory:", nullptr), into(":memory:", nullptr);
    RandomAssets random(seed);
    std::vector<MediaAsset> clips;
    for (int n = 0; n < 5; ++n)
      from.Clips().Put(clips.emplace_back(random.Next()));
    for (int n = 0; n < 3; ++n) {
      PutGroup(from, random, clips);
      PutEdit(from, random);
    }

    const std::string text = Exported(from);
    const ImportResult result = Imported(into, text);
    ASSERT_TRUE(result.refused.empty()) << result.refused[0].line << ": " << result.refused[0].reason;
    EXPECT_EQ(result.stored, 11);
    ASSERT_EQ(Exported(into), text);
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
}

TEST_F(InterchangeTest, TracksFindStreamsOfLaterClipsAndResourcesThatNoClipHas) {
  const auto resourceOf = [](const std::string& id) {
    const auto resource = std::make_shared<MediaResource>(id);
    resource->Adopt(std::make_unique<Stream>(id + "/stream"));
    resource->Streams()[0]->Essences().Add(std::make_unique<AudioEssence>());
    return resource;
  };
  MediaAsset gone(MediaAssetId("gone")), first(MediaAssetId("first")), second(MediaAssetId("second"));
  gone.MediaResources().Insert(resourceOf("tape"));
  second.MediaResources().Insert(resourceOf("later"));
  for (MediaAsset* clip : {&first, &gone, &second})
    store.Clips().Put(*clip);
  const auto track = std::make_shared<Track>("track");
  for (const char* stream : {"tape/stream", "later/stream"}) {
    track->Channels().push_back(std::make_shared<TrackChannelToRemove>());
    track->Channels().back()->Stream(BaseTypes::Identifier(stream));
  }
  first.Tracks().Insert(track);
  store.Clips().Put(first);
  store.Clips().Remove(gone.Id());

  const std::string text = Exported(store);
  EXPECT_NE(text.find("{\"resource\":{\"id\":\"tape\""), std::string::npos);
  EXPECT_TRUE(Imported(other, text).refused.empty());
  EXPECT_EQ(Exported(other), text);
}

TEST_F(InterchangeTest, KnownClipsGroupsAndEditsAreRefusedKeptOrReplaced) {
  MediaAsset clip(MediaAssetId("clip"));
  store.Clips().Put(clip);
  AnglesMediaAssetGroup group("group", "");
  store.Groups().Put(group);
  Edits::Edit edit("edit");
  store.Edits().Put(edit);
  const std::string stored = Exported(store);
  const std::string text = Line(
      "{\"clip\":{\"id\":\"clip\",\"name\":\"new\"}}\n{\"group\":{\"id\":\"group\",\"name\":\"new\"}}\n"
      "{\"edit\":{\"id\":\"edit\",\"name\":\"new\"}}");

  const ImportResult refused = Imported(store, text);
  ASSERT_EQ(refused.refused.size(), 3u);
  EXPECT_EQ(refused.refused[0].line, 2);
  EXPECT_EQ(refused.refused[0].reason, "clip clip is stored already");
  EXPECT_EQ(Imported(store, text, Known::Keep).kept, 3);
  EXPECT_EQ(Exported(store), stored);
  EXPECT_EQ(Imported(store, text, Known::Replace).stored, 3);
  const std::string replaced = Exported(store);
  EXPECT_EQ(std::regex_replace(replaced, std::regex("[^\n]*\"name\":\"new\"[^\n]*\n"), "").find('\n'),
            replaced.find('\n'));
  EXPECT_NE(replaced.find("\"isAngles\":false"), std::string::npos);
}

TEST_F(InterchangeTest, SaysWhatIsWrongWithALineAndStoresTheOthers) {
  const std::pair<const char*, const char*> cases[] = {
      {"{\"clip\":{\"id\":\"x\",\"nam\":\"\"}}", "clip: there is no field 'nam'"},
      {"{\"clip\":{\"id\":\"x\",\"name\":7}}",
       "clip.name: a text is expected, or {\"hex\": ...} for one that is no UTF-8"},
      {"{\"clip\":{\"id\":\"x\",\"name\":{\"hex\":\"f\"}}}",
       "clip.name: pairs of the digits 0 to 9 and a to f are expected in 'hex'"},
      {"{\"clip\":{\"id\":\"x\",\"type\":\"film\"}}", "clip.type: 'film' is no value of this field"},
      {"{\"clip\":{\"id\":\"x\",\"created\":9223372036854775808}}",
       "clip.created: a whole number from -9223372036854775808 to 9223372036854775807 is expected"},
      {"{\"clip\":{\"id\":\"x\",\"bounds\":[{\"in\":1}]}}",
       "clip.bounds: an object of 'in', 'out' is expected"},
      {"{\"clip\":{\"id\":\"x\",\"operator\":{\"keywords\":[1]}}}",
       "clip.operator.keywords: a text is expected, or {\"hex\": ...} for one that is no UTF-8"},
      {"{\"clip\":{\"id\":\"x\",\"resources\":[{\"id\":\"r\"},{\"id\":\"s\",\"streams\":[{\"id\":\"t\",\"essences\":"
       "[{\"kind\":\"smell\"}]}]}]}}",
       "clip.resources[1].streams[0].essences[0]: 'kind' must be 'video', 'audio' or 'data'"},
      {"{\"clip\":{\"id\":\"x\",\"tracks\":[{\"id\":\"t\"},{\"id\":\"t\"}]}}", ""},
      {"{\"clip\":{\"id\":\"\"}}", ""},
      {"{\"clip\":[]}", "clip: an object is expected"},
      {"{\"group\":{\"id\":\"g\",\"items\":[{\"clip\":\"nothing\"}]}}", ""},
      {"{\"film\":{}}", "there is no kind of line 'film'"},
      {"{\"clip\":{}, \"edit\":{}}", "a line is an object of one clip, resource, group or edit"},
      {"{\"clip\":", ""},
  };
  std::string text = Line("{\"clip\":{\"id\":\"good\"}}");
  for (const auto& [line, reason] : cases)
    text += std::string(line) + '\n';
  text += "{\"edit\":{\"id\":\"good\"}}\n";
  const ImportResult result = Imported(store, text);
  EXPECT_EQ(result.stored, 2);
  ASSERT_EQ(result.refused.size(), std::size(cases));
  for (size_t n = 0; n < result.refused.size(); ++n) {
    EXPECT_EQ(result.refused[n].line, static_cast<int64_t>(n) + 3);
    const std::string reason = cases[n].second;
    EXPECT_FALSE(result.refused[n].reason.empty());
    if (!reason.empty()) {
      EXPECT_EQ(result.refused[n].reason, reason) << cases[n].first;
    }
  }
  EXPECT_FALSE(store.Clips().Find(MediaAssetId("x")));
  EXPECT_TRUE(Imported(other, Line(cases[0].first), Known::Refuse, UnknownFields::PassOver).refused.empty());
}

TEST_F(InterchangeTest, TakesNothingButItsOwnFormatAndVersion) {
  for (const char* text : {"", "{\"clip\":{\"id\":\"x\"}}", "{\"format\":\"oru-interchange\"}",
                           "{\"format\":\"oru-interchange\",\"version\":2}", "[1]", "ID NAME"})
    EXPECT_THROW(Imported(store, text), std::invalid_argument) << text;
}

TEST_F(InterchangeTest, EndsWhenAskedAndKeepsWhatWasHandled) {
  std::string text = "{\"format\":\"oru-interchange\",\"version\":1}\n";
  for (int n = 0; n < 600; ++n)
    text += "{\"clip\":{\"id\":\"" + std::to_string(n) + "\"}}\n";
  int calls = 0;
  std::istringstream lines(text);
  const ImportResult result =
      Import(store, lines, Known::Refuse, UnknownFields::Refuse, [&](int64_t done, int64_t total) {
        EXPECT_LE(done, total);
        EXPECT_EQ(total, static_cast<int64_t>(text.size()));
        return ++calls < 300;
      });
  EXPECT_FALSE(result.isComplete);
  EXPECT_EQ(store.Clips().Count({}), 300);
  std::ostringstream exported;
  EXPECT_FALSE(Export(store, exported, [](int64_t done, int64_t) { return done < 7; }));
}

}  // namespace
}  // namespace Catalogue
