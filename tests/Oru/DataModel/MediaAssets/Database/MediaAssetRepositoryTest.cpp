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
#include <set>
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

using Lines = std::multiset<std::string>;

class MediaAssetRepositoryTest : public OpenDatabase {
 protected:
  // Whether the file gives back what an object holds, with its keys and channels.
  testing::AssertionResult Holds(const MediaAsset& asset) {
    const auto found = repository.Find(asset.Id());
    if (!found) return testing::AssertionFailure() << asset.Id() << " isn't stored";
    if (*found != asset) return testing::AssertionFailure() << asset.Id() << " differs";
    const Lines expected = KeysAndChannels(asset, true), stored = KeysAndChannels(*found, true);
    if (stored == expected) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << testing::PrintToString(stored) << " instead of " << testing::PrintToString(expected);
  }

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

TEST_F(MediaAssetRepositoryTest, StreamsAndChannelsKeepTheOrderInWhichTheyWereFirstStored) {
  MediaAsset clip = MakeClip("c");
  repository.Put(clip);
  const auto reverse = [&](std::vector<std::string> streams, std::vector<std::string> channels) {
    std::reverse(clip.MediaResources().Front()->Streams().begin(),
                 clip.MediaResources().Front()->Streams().end());
    std::reverse(clip.Tracks().Front()->Channels().begin(), clip.Tracks().Front()->Channels().end());
    repository.Put(clip);
    const MediaAsset found = *repository.Find(clip.Id());
    std::vector<std::string> foundStreams, foundChannels;
    for (const auto& stream : found.MediaResources().Front()->Streams())
      foundStreams.push_back(stream.Id().Value());
    for (const auto& channel : found.Tracks().Front()->Channels())
      foundChannels.push_back(std::to_string(channel->EssenceNr()) + "." +
                              std::to_string(channel->ChannelNr()));
    EXPECT_EQ(foundStreams, streams);
    EXPECT_EQ(foundChannels, channels);
  };
  reverse({"c/resource/stream"}, {"0.0", "1.1"});
  clip.MediaResources().Front()->Adopt(std::make_unique<Stream>(StreamId("another")));
  clip.Tracks().Front()->Channels().push_back(Channel("c/resource/stream", 0, 7));
  reverse({"c/resource/stream", "another"}, {"0.0", "1.1", "0.7"});
}

// The links are those of the original, and its row stays its own.
TEST_F(MediaAssetRepositoryTest, ACloneUnderAnotherIdentifierIsAnotherClip) {
  MediaAsset clip = MakeClip("c");
  repository.Put(clip);
  const auto clone = clip.Clone();
  clone->Id(Identifier("clone"));
  repository.Put(*clone);
  EXPECT_TRUE(Holds(clip) && Holds(*clone));
  EXPECT_NE(clip.ObjectId(), clone->ObjectId());
}

TEST_F(MediaAssetRepositoryTest, TwoDesksThatChangeOneClipLoseNeitherChange) {
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
  other.Change(changed.Id(), [](MediaAsset& stored) { stored.Description("by the other"); });
  const auto found = one.Find(changed.Id());
  EXPECT_EQ(found->Name() + ", " + found->Description(), "by one, by the other");
  EXPECT_FALSE(one.Find(clip.Id()));

  // A clip that the other has removed is stored again, as a new one.
  MediaAsset held = *one.Find(changed.Id());
  other.Remove(changed.Id());
  one.Put(held);
  EXPECT_EQ(other.Find(changed.Id()), held);
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

TEST_F(MediaAssetRepositoryTest, PartsThatAnObjectDoesNotHoldStayAsTheyAre) {
  MediaAsset clip = MakeClip("c");
  repository.Put(clip);
  for (const uint32_t part : {0U, 1U, 2U, 4U, 8U, 16U, 32U}) {
    auto found = repository.Find(clip.Id(), static_cast<MediaAssetParts>(part));
    ASSERT_TRUE(found);
    found->Name("part " + std::to_string(part));
    repository.Put(*found);
    clip.Name(found->Name());
    EXPECT_EQ(*repository.Find(clip.Id()), clip) << part;
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
      if (isStored) {
        EXPECT_TRUE(Holds(stored)) << refused.reason;
      }
      EXPECT_TRUE(Holds(other)) << refused.reason;
      EXPECT_EQ(Count("MediaAsset"), isStored ? 2 : 1) << refused.reason;
      EXPECT_EQ(Count("MediaResource"), isStored ? 2 : 1) << refused.reason;
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
  EXPECT_TRUE(Holds(clips.front()) && Holds(clips.back()));
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

TEST_F(MediaAssetRepositoryTest, AnOperationIsAPartOfTheCallersTransaction) {
  MediaAsset good = MakeClip("good"), bad = MakeClip("bad");
  bad.Tracks().Front()->Channels().push_back(Channel("none", 0, 0));
  {
    TransactionGuard transaction(database);
    repository.Put(good);
    EXPECT_THROW(repository.Put(bad), NotStoredException);
    transaction.Commit();
  }
  EXPECT_TRUE(Holds(good));
  // The keys that objects got in a transaction that was rolled back are void, and do no harm.
  MediaAsset late = MakeClip("late"), meanwhile = MakeClip("meanwhile");
  {
    TransactionGuard transaction(database);
    repository.Put(late);
  }
  repository.Put(meanwhile);
  EXPECT_EQ(meanwhile.ObjectId(), late.ObjectId());
  repository.Put(late);
  EXPECT_TRUE(Holds(late) && Holds(meanwhile) && Holds(good));
  MediaAssetRepository::ForgetKeys(late);
  for (const std::string& line : KeysAndChannels(late, true))
    EXPECT_TRUE(line.find("late/") == 0 || line.find(" -1") != std::string::npos) << line;

  const ReadGuard view(database);
  EXPECT_THROW(repository.Put(good), InvalidOperationException);
  EXPECT_THROW(repository.Remove(good.Id()), InvalidOperationException);
  EXPECT_TRUE(Holds(good));
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
  EXPECT_TRUE(Holds(clip) && Holds(user));
  EXPECT_EQ(Count("MediaResource"), 1);
  // A resource stays while a channel takes one of its streams, and goes with the last one.
  EXPECT_EQ(repository.Remove(clip.Id()), RemoveOutcome::Removed);
  EXPECT_TRUE(Holds(user));
  EXPECT_EQ(repository.Remove(user.Id()), RemoveOutcome::Removed);
  EXPECT_EQ(Count("MediaResource") + Count("Track"), 0);
}

TEST_F(MediaAssetRepositoryTest, ARemovalTakesGroupsWhoseLastItemItWasAndRespectsProtection) {
  MediaAsset clip = MakeClip("c"), kept = MakeClip("kept");
  kept.DapOperatorMetadata().UserProtected(true);
  repository.Put(clip);
  repository.Put(kept);
  Run("INSERT INTO MediaAssetGroup(id) VALUES('alone'), ('both'), ('empty')");
  Run("INSERT INTO MediaAssetGroupItem(refMediaAssetGroup, refMediaAsset) SELECT g.key, m.key"
      " FROM MediaAssetGroup g JOIN MediaAsset m WHERE g.id = 'both' OR (g.id = 'alone' AND m.id = 'c')");
  Run("INSERT INTO MediaResource(id) VALUES('loose')");
  repository.Copy(clip.Id(), Identifier("copy"), CopyResources::Share);
  EXPECT_EQ(Count("MediaAssetGroupItem"), 3) << "a copy is in no group";
  EXPECT_EQ(repository.Remove(Identifier("copy")), RemoveOutcome::Removed);
  EXPECT_EQ(repository.Remove(Identifier("none")), RemoveOutcome::Absent);
  EXPECT_EQ(repository.Remove(Identifier()), RemoveOutcome::Absent);
  EXPECT_EQ(repository.Remove(kept.Id()), RemoveOutcome::Protected);
  EXPECT_EQ(repository.Remove(clip.Id()), RemoveOutcome::Removed);
  EXPECT_EQ(Column(database, "SELECT id FROM MediaAssetGroup ORDER BY id"),
            (std::vector<std::string>{"both", "empty"}));
  EXPECT_EQ(Column(database, "SELECT id FROM MediaResource ORDER BY id"),
            (std::vector<std::string>{"kept/resource", "loose"}));
  EXPECT_EQ(repository.Remove(kept.Id(), Protection::Ignore), RemoveOutcome::Removed);
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets::Database
