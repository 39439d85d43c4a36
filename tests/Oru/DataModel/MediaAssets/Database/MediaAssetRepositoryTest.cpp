#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {
namespace {

using namespace TestSupport;
using BusinessEntityModel::BaseTypes::GenericMetadataProfile;
using BusinessEntityModel::BaseTypes::Identifier;
using Common::Databases::InvalidOperationException;
using Common::Databases::Sqlite::ReadGuard;
using Common::Databases::Sqlite::TransactionGuard;
using testing::ElementsAre;

class MediaAssetRepositoryTest : public OpenDatabase {
 protected:
  std::string ReasonOf(const std::function<void()>& operation) {
    try {
      operation();
      return "none";
    } catch (const NotStoredException& exception) {
      return exception.what();
    }
  }

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
}

TEST_F(MediaAssetRepositoryTest, AFileThatCantBeWrittenIsAnInvalidOperationWithAnEntry) {
  struct Case {
    const char* what;
    const char* options;
    std::function<std::shared_ptr<void>(DataModelDatabase&, DataModelDatabase&)> hinder;
    bool hindersRemovals;
  };
  const std::vector<Case> cases = {
      {"read only", "?mode=ro", [](auto&, auto&) { return nullptr; }, true},
      {"locked", "?_busy_timeout=0",
       [](auto&, auto& other) { return std::make_shared<TransactionGuard>(other); }, true},
      {"full", "?_busy_timeout=0",
       [](auto& limited, auto&) {
         EXPECT_TRUE(limited.ExecuteStatement("PRAGMA max_page_count = 1"));
         return nullptr;
       },
       false},
      {"a view", "", [](auto& viewed, auto&) { return std::make_shared<ReadGuard>(viewed); }, true},
      {"closed", "",
       [](auto& closed, auto&) {
         closed.Close();
         return nullptr;
       },
       true},
  };
  for (const Case& hindered : cases) {
    SCOPED_TRACE(hindered.what);
    const TemporaryDirectory folder;
    DataModelDatabase other(folder.File("clips.db"), nullptr);
    other.Open();
    MediaAsset clip = MakeClip("c");
    clip.Description(std::string(1 << 20, 'd'));
    MediaAssetRepository(other).Put(clip);
    DataModelDatabase hinderedDatabase("file:" + folder.File("clips.db") + hindered.options, log.Stream());
    hinderedDatabase.Open();
    MediaAssetRepository writer(hinderedDatabase);
    const std::shared_ptr<void> hindrance = hindered.hinder(hinderedDatabase, other);
    std::vector<MediaAsset> batch(2, clip);
    for (MediaAsset& asset : batch)
      asset.Description(std::string(2 << 20, 'e'));
    const auto change = [](MediaAsset& stored) { stored.Description(std::string(2 << 20, 'e')); };
    std::vector<std::function<void()>> operations = {
        [&] { writer.Put(batch.front()); }, [&] { writer.PutAll(batch); },
        [&] { writer.Change(clip.Id(), change); },
        [&] { writer.Copy(clip.Id(), Identifier("copy"), CopyResources::Own); }};
    if (hindered.hindersRemovals) {
      operations.emplace_back([&] { writer.Remove(clip.Id()); });
      operations.emplace_back([&] { writer.RemoveAll(MediaAssetSearch()); });
    }
    for (const auto& operation : operations) {
      log.Clear();
      EXPECT_THROW(operation(), InvalidOperationException);
      EXPECT_NE(log.Text(), "");
    }
    EXPECT_EQ(batch.front().ObjectId(), clip.ObjectId());
    EXPECT_EQ(MediaAssetRepository(other).Find(clip.Id()), clip);
  }
}

TEST_F(MediaAssetRepositoryTest, WhatCannotBeStoredIsNamedAndLeavesObjectsAndFileAsTheyWere) {
  MediaAsset other = MakeClip("other");
  repository.Put(other);
  struct Case {
    std::string reason;
    std::function<void(MediaAsset&)> spoil;
  };
  const auto profile = [](MediaAsset& clip) -> DapOperatorMetadataProfile& {
    return clip.DapOperatorMetadata();
  };
  const auto resource = [](MediaAsset& clip) { return clip.MediaResources().Front().Pointer(); };
  const auto stream = [](MediaAsset& clip) {
    return clip.MediaResources().Front()->Streams().front().Pointer();
  };
  const auto track = [](MediaAsset& clip) { return clip.Tracks().Front(); };
  const auto generic = [](const char* name) { return std::make_shared<GenericMetadataProfile>(name); };
  const TimePoints::TimeCode negative = TimePoints::TimeCodeBuilder().Year(1900).Sample(-1).Build();
  const std::vector<Case> cases = {
      {"the asset has no identifier", [](auto& clip) { clip.Id(Identifier()); }},
      {"c: page 10 is off the range from 0 to 9", [&](auto& clip) { profile(clip).Page(10); }},
      {"c: bank -1 is off the range from 0 to 9", [&](auto& clip) { profile(clip).Bank(-1); }},
      {"c: row 256 is off the range from 0 to 9", [&](auto& clip) { profile(clip).Row(256); }},
      {"c: camera 77 is none of the letters A to L", [&](auto& clip) { profile(clip).Camera('M'); }},
      {"c: the user's time code has the negative count -1",
       [&](auto& clip) { profile(clip).UserTimecode(negative); }},
      {"c: the time code of the time of day has the negative count -1",
       [&](auto& clip) { profile(clip).TodTimecode(negative); }},
      {"c: there is no table for the metadata profile oru.dapoperator of the asset",
       [&](auto& clip) { clip.Metadata().Set(generic("oru.dapoperator")); }},
      {"c: there is no table for the metadata profile oru.dapoperator of annotation 0",
       [&](auto& clip) {
         clip.Annotations()[0]->Metadata().Set(std::make_shared<DapOperatorMetadataProfile>());
       }},
      {"c: there is no table for the metadata profile oru.dapoperator of resource c/resource",
       [&](auto& clip) { resource(clip)->Metadata()->Set(generic("oru.dapoperator")); }},
      {"c: a resource has no identifier", [](auto& clip) { clip.MediaResources().Insert(Identifier()); }},
      {"c: a stream has no identifier", [&](auto& clip) { stream(clip)->Id(Identifier()); }},
      {"c: a track has no identifier", [&](auto& clip) { track(clip)->Id(Identifier()); }},
      {"c: stream c/resource/stream is there twice",
       [&](auto& clip) { resource(clip)->Add(Identifier("c/resource/stream")); }},
      {"c: track c/track is there twice",
       [](auto& clip) { clip.Tracks().Insert(std::make_shared<Track>(TrackId("c/track"), "again")); }},
      {"c: resource c/resource is there twice",
       [](auto& clip) {
         clip.MediaResources().Insert(MakeResource("x"));
         clip.MediaResources().Back()->Id(Identifier("c/resource"));
       }},
      {"c: it refers to resource none, which isn't stored",
       [](auto& clip) { clip.MediaResources().Insert(Identifier("none")); }},
      {"c: resource c/resource refers to stream none, which isn't stored",
       [&](auto& clip) { resource(clip)->Add(Identifier("none")); }},
      {"c: resource c/resource refers to stream other/resource/stream, which belongs to resource "
       "other/resource",
       [&](auto& clip) { resource(clip)->Add(Identifier("other/resource/stream")); }},
      {"c: stream other/resource/stream belongs to resource other/resource",
       [&](auto& clip) {
         resource(clip)->Adopt(std::make_unique<Stream>(StreamId("other/resource/stream")));
       }},
      {"c: essence 1 of stream c/resource/stream has the number 7",
       [&](auto& clip) { stream(clip)->Essences()[1].Nr(7); }},
      {"c: essence 1 of stream c/resource/stream has -2 channels",
       [&](auto& clip) { stream(clip)->Essences()[1].ChannelCount(-2); }},
      {"c: track c/track refers to essence 3 of stream c/resource/stream, which isn't stored",
       [&](auto& clip) { track(clip)->Channels().push_back(Channel("c/resource/stream", 3, 0)); }},
      {"c: track c/track refers to essence 0 of stream none, which isn't stored",
       [&](auto& clip) { track(clip)->Channels().push_back(Channel("none", 0, 0)); }},
      {"c: track c/track takes channel 1 of essence 1 of stream c/resource/stream twice",
       [&](auto& clip) { track(clip)->Channels().push_back(Channel("c/resource/stream", 1, 1)); }},
      {"c: track c/track takes channel -1 of essence 0 of stream c/resource/stream, which can't be",
       [&](auto& clip) { track(clip)->Channels().push_back(Channel("c/resource/stream", 0, -1)); }},
      {"c: a channel of track c/track is a null pointer",
       [&](auto& clip) { track(clip)->Channels().push_back(nullptr); }},
      {"c: annotation 1 is a null pointer", [](auto& clip) { clip.Annotations().push_back(nullptr); }},
      {"c: UNIQUE constraint failed: TimeBoundsMediaAsset.foreignKey, TimeBoundsMediaAsset.inBoundary, "
       "TimeBoundsMediaAsset.inBoundaryMoving, TimeBoundsMediaAsset.outBoundary, "
       "TimeBoundsMediaAsset.outBoundaryMoving",
       [](auto& clip) {
         clip.PhysicalTimebounds().Insert(BoundsOf(8, 9));
         *clip.PhysicalTimebounds().begin() = BoundsOf(8, 9);
       }},
  };
  for (const bool isStored : {false, true}) {
    MediaAsset stored = MakeClip("c", "stored");
    if (isStored) repository.Put(stored);
    for (const Case& refused : cases) {
      MediaAsset clip = MakeClip("c");
      refused.spoil(clip);
      EXPECT_EQ(ReasonOf([&] { repository.Put(clip); }), refused.reason);
      EXPECT_EQ(clip.ObjectId(), -1) << refused.reason;
      EXPECT_EQ(clip.Annotations()[0]->ObjectId(), -1) << refused.reason;
      if (clip.MediaResources().Front()) {
        EXPECT_EQ(clip.MediaResources().Front()->ObjectId(), -1) << refused.reason;
      }
      EXPECT_TRUE(!isStored || repository.Find(stored.Id()) == stored) << refused.reason;
      EXPECT_EQ(repository.Find(other.Id()), other) << refused.reason;
      EXPECT_EQ(Count("MediaAsset") + Count("MediaResource"), isStored ? 4 : 2) << refused.reason;
    }
  }
}

// Gives assets that can be walked once, each of them gone at the next.
class OnePass {
 public:
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = MediaAsset;
    using difference_type = std::ptrdiff_t;
    using pointer = MediaAsset*;
    using reference = MediaAsset&;

    Iterator(int first, int throwingNumber) : number(first), throwsAt(throwingNumber) { Make(); }
    MediaAsset& operator*() const { return *asset; }
    Iterator& operator++() {
      if (++number == throwsAt) throw std::length_error("by the range");
      Make();
      return *this;
    }
    bool operator!=(const Iterator& other) const { return number != other.number; }

   private:
    void Make() { asset = std::make_unique<MediaAsset>(MakeClip("one" + std::to_string(number))); }

    int number;
    int throwsAt;
    std::unique_ptr<MediaAsset> asset;
  };

  OnePass(int assetCount, int throwingNumber) : count(assetCount), throwsAt(throwingNumber) {}
  Iterator begin() const { return {0, throwsAt}; }
  Iterator end() const { return {count, -1}; }

 private:
  int count;
  int throwsAt;
};

TEST_F(MediaAssetRepositoryTest, ABatchLeavesOutWhatCannotBeStored) {
  std::list<MediaAsset> clips;
  for (const char* id : {"a", "bad", "b"})
    clips.push_back(MakeClip(id));
  std::next(clips.begin())->DapOperatorMetadata().Page(11);
  std::vector<std::pair<int64_t, int64_t>> calls;
  const auto count = [&](int64_t done, int64_t total) { return calls.emplace_back(done, total), true; };
  const std::vector<NotStored> leftOut = repository.PutAll(clips, count);
  ASSERT_EQ(leftOut.size(), 1U);
  EXPECT_EQ(leftOut[0].id, Identifier("bad"));
  EXPECT_EQ(leftOut[0].reason, "bad: page 11 is off the range from 0 to 9");
  EXPECT_THAT(calls, ElementsAre(std::pair<int64_t, int64_t>(1, 3), std::pair<int64_t, int64_t>(2, 3),
                                 std::pair<int64_t, int64_t>(3, 3)));
  EXPECT_TRUE(repository.Find("a") == clips.front() && repository.Find("b") == clips.back());
  EXPECT_EQ(std::next(clips.begin())->ObjectId(), -1);

  EXPECT_TRUE(repository.PutAll(std::vector<MediaAsset>()).empty());
  // What was handled is stored when the function ends the call.
  EXPECT_TRUE(repository
                  .PutAll(OnePass(5, -1),
                          [](int64_t done, int64_t total) {
                            EXPECT_EQ(total, -1);
                            return done < 2;
                          })
                  .empty());
  EXPECT_EQ(Count("MediaAsset WHERE id LIKE 'one%'"), 2);
}

TEST_F(MediaAssetRepositoryTest, AnExceptionRollsBackTheBlockOfABatchAndLeavesItsObjects) {
  std::vector<MediaAsset> clips;
  for (int i = 0; i < 300; ++i)
    clips.push_back(MediaAsset(MediaAssetId("clip" + std::to_string(i))));
  const auto throwAt = [](int64_t last) {
    return [last](int64_t done, int64_t) {
      if (done == last) throw std::length_error("by the caller");
      return true;
    };
  };
  EXPECT_THROW(repository.PutAll(clips, throwAt(290)), std::length_error);
  const int stored = Count("MediaAsset");
  EXPECT_TRUE(stored > 100 && stored < 290) << stored;
  for (int i = 0; i < 300; ++i)
    EXPECT_EQ(clips[static_cast<std::size_t>(i)].ObjectId() != -1, i < stored) << i;
  EXPECT_THROW(repository.PutAll(OnePass(5, 3)), std::length_error);
  EXPECT_EQ(Count("MediaAsset"), stored);
}

TEST_F(MediaAssetRepositoryTest, ForgottenKeysAreThoseOfAllParts) {
  MediaAsset clip = MakeClip("c");
  repository.Put(clip);
  MediaAssetRepository::ForgetKeys(clip);
  for (const std::string& line : Keys(clip))
    EXPECT_NE(line.find(" -1"), std::string::npos) << line;
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
  EXPECT_EQ(Count("MediaResource"), 1);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets::Database
