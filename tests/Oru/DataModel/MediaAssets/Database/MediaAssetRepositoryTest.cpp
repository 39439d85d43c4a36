#include "Oru/DataModel/MediaAssets/Database/NotStoredException.h"

#include "support/DatabasePrelude.h"

#include <list>

namespace Oru::DataModel::MediaAssets::Database {
namespace {

using testing::ThrowsMessage;

class MediaAssetRepositoryTest : public OpenDatabase {
 protected:
  MediaAssetRepository repository{database};
};

TEST_F(MediaAssetRepositoryTest, AChangeHoldsTheLockFromItsReadOn) {
  const TemporaryDirectory folder;
  const std::string file = "file:" + folder.File("clips.db") + "?_busy_timeout=0";
  DataModelDatabase first(file, nullptr), second(file, nullptr);
  first.Open();
  second.Open();
  MediaAssetRepository one(first), other(second);
  MediaAsset clip = MakeClip("c");
  one.Put(clip);
  const MediaAsset changed = one.Change(clip.Id(), [&](MediaAsset& stored) {
    EXPECT_THROW(other.Change(clip.Id(), [](MediaAsset&) { FAIL() << "read without the lock"; }),
                 InvalidOperationException);
    stored.Name("by one");
    stored.Id(Identifier("renamed"));
  });
  EXPECT_EQ(changed.ObjectId(), clip.ObjectId());
  EXPECT_FALSE(other.Find(clip.Id()));
  EXPECT_EQ(other.Find(changed.Id()), changed);
  one.Put(clip = MakeClip("free"));
  EXPECT_THAT(
      [&] { one.Change("free", [](MediaAsset& stored) { stored.Id("renamed"); }); },
      ThrowsMessage<NotStoredException>("free: it can't be renamed to renamed, which is stored already"));
}

TEST_F(MediaAssetRepositoryTest, AFileThatCantBeWrittenIsAnInvalidOperationWithAnEntry) {
  using Hinder = std::function<std::shared_ptr<void>(DataModelDatabase&, DataModelDatabase&)>;
  const std::pair<const char*, Hinder> cases[] = {
      {"?mode=ro", [](auto&, auto&) { return nullptr; }},
      {"?_busy_timeout=0", [](auto&, auto& other) { return std::make_shared<TransactionGuard>(other); }},
      {"?", [](auto& viewed, auto&) { return std::make_shared<ReadGuard>(viewed); }},
      {"", [](auto& closed, auto&) { return closed.Close(), nullptr; }},
  };
  for (const auto& [options, hinder] : cases) {
    SCOPED_TRACE(options);
    const TemporaryDirectory folder;
    DataModelDatabase other(folder.File("clips.db"), nullptr);
    other.Open();
    MediaAsset clip = MakeClip("c"), again = MakeClip("c", "again");
    AnglesMediaAssetGroup group = MakeGroup("g", {"c"}), newGroup = MakeGroup("new", {"c"});
    MediaAssetRepository(other).Put(clip);
    MediaAssetGroupRepository(other).Put(group);
    DataModelDatabase hindered("file:" + folder.File("clips.db") + options, log.Stream());
    hindered.Open();
    MediaAssetRepository clips(hindered);
    MediaAssetGroupRepository groups(hindered);
    BusinessEntityModel::Edits::Edit edit("e");
    const std::shared_ptr<void> hindrance = hinder(hindered, other);
    std::vector<MediaAsset> batch{MakeClip("c", "again")};
    const std::function<void()> operations[] = {
        [&] { clips.Put(again); },
        [&] { clips.PutAll(batch); },
        [&] { clips.Change("c", [](MediaAsset& stored) { stored.Name("again"); }); },
        [&] { clips.Copy("c", "copy", CopyResources::Own); },
        [&] { clips.Remove("c"); },
        [&] { clips.RemoveAll(MediaAssetSearch()); },
        [&] { groups.Put(newGroup); },
        [&] { groups.Remove(group.Id()); },
        [&] { BusinessEntityModel::Edits::Database::EditRepository(hindered).Put(edit); }};
    for (const auto& operation : operations) {
      log.Clear();
      EXPECT_THROW(operation(), InvalidOperationException);
      EXPECT_NE(log.Text(), "");
    }
    EXPECT_EQ(again.ObjectId() + batch[0].ObjectId() + newGroup.ObjectId() + edit.ObjectId(), -4);
    EXPECT_EQ(MediaAssetRepository(other).Find(clip.Id()), clip);
    EXPECT_EQ(MediaAssetGroupRepository(other).FindAngles(group.Id()), group);
  }
  database.Close();
  EXPECT_THROW(repository.Find("c"), InvalidOperationException);
  EXPECT_THROW(repository.Count(MediaAssetSearch()), InvalidOperationException);
  EXPECT_THROW(MediaAssetGroupRepository(database).Find("g"), InvalidOperationException);
  EXPECT_THROW(BusinessEntityModel::Edits::Database::EditRepository(database).Find("e"),
               InvalidOperationException);
}

TEST_F(MediaAssetRepositoryTest, WhatCannotBeStoredIsNamedAndLeavesObjectsAndFileAsTheyWere) {
  MediaAsset other = MakeClip("other");
  repository.Put(other);
  struct Parts {
    MediaAsset& clip;
    MediaResource& resource = *clip.MediaResources().Front();
    Stream& stream = *resource.Streams().front();
    Track& track = *clip.Tracks().Front();
    DapOperatorMetadataProfile& profile = clip.DapOperatorMetadata();

    void Take(const char* id, int32_t essence, int32_t number) {
      track.Channels().push_back(Channel(id, essence, number));
    }
  };
  const auto named = std::make_shared<GenericMetadataProfile>("oru.dapoperator");
  const auto ofOperator = std::make_shared<DapOperatorMetadataProfile>();
  const TimePoints::TimeCode negative = TimePoints::TimeCodeBuilder().Year(1900).Sample(-1).Build();
  const std::string noTable = "there is no table for the metadata profile oru.dapoperator of ";
  const std::string taken = "stream other/resource/stream";
  const std::pair<std::string, std::function<void(Parts)>> cases[] = {
      {"page 10 is off the range from 0 to 9", [](Parts of) { of.profile.Page(10); }},
      {"bank -1 is off the range from 0 to 9", [](Parts of) { of.profile.Bank(-1); }},
      {"row 256 is off the range from 0 to 9", [](Parts of) { of.profile.Row(256); }},
      {"camera 77 is none of the letters A to L", [](Parts of) { of.profile.Camera('M'); }},
      {"the user's time code has the negative count -1",
       [&](Parts of) { of.profile.UserTimecode(negative); }},
      {"the time code of the time of day has the negative count -1",
       [&](Parts of) { of.profile.TodTimecode(negative); }},
      {noTable + "the asset", [&](Parts of) { of.clip.Metadata().Set(named); }},
      {noTable + "annotation 0", [&](Parts of) { of.clip.Annotations()[0]->Metadata().Set(ofOperator); }},
      {noTable + "resource c/resource", [&](Parts of) { of.resource.Metadata()->Set(named); }},
      {"a resource has no identifier", [](Parts of) { of.clip.MediaResources().Insert(Identifier()); }},
      {"a stream has no identifier", [](Parts of) { of.stream.Id(Identifier()); }},
      {"a track has no identifier", [](Parts of) { of.track.Id(Identifier()); }},
      {"stream c/resource/stream is there twice",
       [](Parts of) { of.resource.Add(Identifier("c/resource/stream")); }},
      {"track c/track is there twice",
       [](Parts of) { of.clip.Tracks().Insert(std::make_shared<Track>(TrackId("c/track"), "again")); }},
      {"resource c/resource is there twice",
       [](Parts of) {
         of.clip.MediaResources().Insert(MakeResource("x"));
         of.clip.MediaResources().Back()->Id(Identifier("c/resource"));
       }},
      {"it refers to resource none, which isn't stored",
       [](Parts of) { of.clip.MediaResources().Insert(Identifier("none")); }},
      {"resource c/resource refers to stream none, which isn't stored",
       [](Parts of) { of.resource.Add(Identifier("none")); }},
      {"resource c/resource refers to " + taken + ", which belongs to resource other/resource",
       [](Parts of) { of.resource.Add(Identifier("other/resource/stream")); }},
      {taken + " belongs to resource other/resource",
       [](Parts of) { of.resource.Adopt(std::make_unique<Stream>(StreamId("other/resource/stream"))); }},
      {"essence 1 of stream c/resource/stream has the number 7",
       [](Parts of) { of.stream.Essences()[1].Nr(7); }},
      {"essence 1 of stream c/resource/stream has -1 channels",
       [](Parts of) { of.stream.Essences()[1].ChannelCount(-1); }},
      {"track c/track refers to essence 3 of stream c/resource/stream, which isn't stored",
       [](Parts of) { of.Take("c/resource/stream", 3, 0); }},
      {"track c/track refers to essence 0 of stream none, which isn't stored",
       [](Parts of) { of.Take("none", 0, 0); }},
      {"track c/track takes channel 1 of essence 1 of stream c/resource/stream twice",
       [](Parts of) { of.Take("c/resource/stream", 1, 1); }},
      {"track c/track takes channel -1 of essence 0 of stream c/resource/stream, which can't be",
       [](Parts of) { of.Take("c/resource/stream", 0, -1); }},
      {"a channel of track c/track is a null pointer",
       [](Parts of) { of.track.Channels().push_back(nullptr); }},
      {"annotation 1 is a null pointer", [](Parts of) { of.clip.Annotations().push_back(nullptr); }},
      {"UNIQUE constraint failed: TimeBoundsMediaAsset.foreignKey",
       [](Parts of) {
         of.clip.PhysicalTimebounds().Insert(BoundsOf(8, 9));
         *of.clip.PhysicalTimebounds().begin() = BoundsOf(8, 9);
       }},
  };
  MediaAsset without;
  EXPECT_THAT([&] { repository.Put(without); },
              ThrowsMessage<NotStoredException>("the asset has no identifier"));
  for (const bool isStored : {false, true}) {
    MediaAsset stored = MakeClip("c", "stored");
    if (isStored) repository.Put(stored);
    for (const auto& [reason, spoil] : cases) {
      MediaAsset clip = MakeClip("c");
      spoil(Parts{clip});
      EXPECT_THAT([&] { repository.Put(clip); },
                  ThrowsMessage<NotStoredException>(testing::StartsWith("c: " + reason)));
      EXPECT_EQ(clip.ObjectId() + clip.Annotations()[0]->ObjectId() + clip.Tracks().Front()->ObjectId(), -3)
          << reason;
      EXPECT_TRUE(!isStored || repository.Find(stored.Id()) == stored) << reason;
      EXPECT_EQ(repository.Find(other.Id()), other) << reason;
      EXPECT_EQ(Count("MediaAsset") + Count("MediaResource"), isStored ? 4 : 2) << reason;
    }
  }
}

// Gives assets that can be walked once, each of them gone at the next.
struct OnePass {
  using iterator_category = std::input_iterator_tag;
  using value_type = MediaAsset;
  using difference_type = std::ptrdiff_t;
  using pointer = MediaAsset*;
  using reference = MediaAsset&;

  int count, throwsAt, number = 0;
  std::shared_ptr<MediaAsset> asset = std::make_shared<MediaAsset>("one0");

  OnePass begin() const { return *this; }
  OnePass end() const { return {count, throwsAt, count}; }
  MediaAsset& operator*() const { return *asset; }
  OnePass& operator++() {
    if (++number == throwsAt) throw std::length_error("by the range");
    asset = std::make_shared<MediaAsset>("one" + std::to_string(number));
    return *this;
  }
  bool operator!=(const OnePass& other) const { return number != other.number; }
};

TEST_F(MediaAssetRepositoryTest, ABatchLeavesOutWhatCannotBeStored) {
  std::list<MediaAsset> clips;
  for (const char* id : {"a", "bad", "b"})
    clips.push_back(MakeClip(id));
  std::next(clips.begin())->DapOperatorMetadata().Page(11);
  std::string calls;
  const auto note = [&calls](int64_t done, int64_t total) {
    calls += std::to_string(done) + "/" + std::to_string(total) + " ";
    return done != 2 || total != -1;
  };
  const std::vector<NotStored> leftOut = repository.PutAll(clips, note);
  ASSERT_EQ(leftOut.size(), 1U);
  EXPECT_EQ(leftOut[0].id, Identifier("bad"));
  EXPECT_EQ(leftOut[0].reason, "bad: page 11 is off the range from 0 to 9");
  EXPECT_EQ(std::next(clips.begin())->ObjectId(), -1);
  EXPECT_TRUE(repository.PutAll(std::vector<MediaAsset>()).empty());
  // What was handled is stored when the function ends the call.
  EXPECT_TRUE(repository.PutAll(OnePass{5, -1}, note).empty());
  EXPECT_EQ(Count("MediaAsset WHERE id LIKE 'one%'"), 2);
  EXPECT_EQ(calls, "1/3 2/3 3/3 1/-1 2/-1 ");
}

TEST_F(MediaAssetRepositoryTest, AnExceptionRollsBackTheBlockOfABatchAndLeavesItsObjects) {
  std::vector<MediaAsset> clips(300);
  for (MediaAsset& clip : clips)
    clip.Id("clip" + std::to_string(&clip - clips.data()));
  EXPECT_THROW(repository.PutAll(clips,
                                 [](int64_t done, int64_t) {
                                   return done < 290 ? true : throw std::length_error("by the caller");
                                 }),
               std::length_error);
  const int stored = Count("MediaAsset");
  EXPECT_TRUE(stored > 100 && stored < 290) << stored;
  for (int i = 0; i < 300; ++i)
    EXPECT_EQ(clips[static_cast<std::size_t>(i)].ObjectId() != -1, i < stored) << i;
  EXPECT_THROW(repository.PutAll(OnePass{5, 3}), std::length_error);
  EXPECT_EQ(Count("MediaAsset"), stored);
}

TEST_F(MediaAssetRepositoryTest, AStreamMovesBetweenTheResourcesOfAnAssetAndKeepsTheChannelsOnIt) {
  MediaAsset clip = MakeClip("c"), user{MediaAssetId("user")};
  repository.Put(clip);
  user.Tracks().Insert(std::make_shared<Track>(TrackId("user/track")));
  user.Tracks().Front()->Channels().push_back(Channel("c/resource/stream", 0, 5));
  repository.Put(user);
  const auto renamed = MakeResource("a");
  renamed->Streams().clear();
  renamed->Streams().push_back(clip.MediaResources().Front()->Streams().front());
  clip.MediaResources().Clear();
  clip.MediaResources().Insert(renamed);
  repository.Put(clip);
  EXPECT_EQ(repository.Find(clip.Id()), clip);
  EXPECT_EQ(Value("SELECT channelNr FROM TrackChannel WHERE channelNr = 5"), "5");
  repository.Remove(clip.Id());
  EXPECT_EQ(Count("MediaResource"), 1) << "a channel is on it";
  repository.Remove(user.Id());
  EXPECT_EQ(Count("MediaResource"), 0);
}

TEST_F(MediaAssetRepositoryTest, AGroupThatCannotBeStoredIsRefusedByName) {
  MediaAsset asset{MediaAssetId("a")};
  ASSERT_TRUE(assets.Save(asset));
  MediaAssetGroupRepository groups(database);
  AnglesMediaAssetGroup stored = MakeGroup("stored", {"a"});
  groups.Put(stored);
  const auto identity = [](int page, int bank, int clip) {
    auto made = std::make_shared<AnglesDapOperatorMetadataProfile>();
    made->Page(page);
    made->Bank(bank);
    made->Clip(clip);
    return made;
  };
  const auto generic = std::make_shared<GenericMetadataProfile>("notes");
  generic->Set("by", "Zoe");
  const struct {
    const char *id, *reason;
    bool isMultiAngle;
    std::vector<std::string> clips;
    std::shared_ptr<MetadataProfile> profile;
  } cases[] = {
      {"", "the group has no identifier", true, {}, {}},
      {"g", "g: item 1 refers to asset gone, which isn't stored", false, {"a", "gone"}, {}},
      {"g", "g: item 0 refers to asset , which isn't stored", true, {""}, {}},
      {"g", "g: item 0 is a null pointer", true, {"null"}, {}},
      {"stored",
       "stored: a multi-angle group of that identifier is stored, and this is a plain one",
       false,
       {},
       {}},
      {"g", "g: there is no table for the metadata profile notes", true, {}, generic},
      {"g", "g: there is no table for the metadata profile oru.dapoperator", false, {}, identity(1, 1, 1)},
      {"g", "g: page 10 is off the range from 0 to 9", true, {}, identity(10, 1, 1)},
      {"g", "g: bank -1 is off the range from 0 to 9", true, {}, identity(1, -1, 1)},
      {"g", "g: clip 256 is off the range from 0 to 9", true, {}, identity(1, 1, 256)},
  };
  for (const auto& [id, reason, isMultiAngle, clips, profile] : cases) {
    AnglesMediaAssetGroup multiAngle = MakeGroup(id, clips);
    if (clips == std::vector<std::string>{"null"}) multiAngle.Items() = {nullptr};
    if (profile) multiAngle.Metadata().Set(profile);
    MediaAssetGroup plain(static_cast<const MediaAssetGroup&>(multiAngle));
    MediaAssetGroup& group = isMultiAngle ? multiAngle : plain;
    EXPECT_THAT([&] { groups.Put(group); }, ThrowsMessage<NotStoredException>(reason));
    EXPECT_EQ(group.ObjectId(), -1);
  }
  EXPECT_EQ(groups.All().size(), 1U);
  EXPECT_FALSE(groups.Find(MediaAssetGroupId("")) || groups.FindAngles(MediaAssetGroupId("")) ||
               groups.Remove(MediaAssetGroupId("")));
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets::Database
