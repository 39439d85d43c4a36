#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "support/CapturedLog.h"
#include "support/RandomAsset.h"
#include "support/RepositoryModel.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {
namespace {

using namespace TestSupport;
using BusinessEntityModel::BaseTypes::Identifier;
using Common::Databases::Sqlite::TransactionGuard;

// Any sequence of writes of the repository, some of which are refused, fail or are rolled back, against a
// plain map.
class RepositoryWalk {
 public:
  explicit RepositoryWalk(uint64_t seed, std::size_t connectionCount) : random(seed) {
    while (databases.size() < connectionCount) {
      databases.emplace_back(folder.File("clips.db"), log.Stream());
      databases.back().Open();
      EXPECT_TRUE(databases.back().ExecuteStatement("PRAGMA synchronous = off"));
      repositories.emplace_back(databases.back());
    }
  }

  void Step() {
    const std::size_t connection = random.Below(databases.size());
    repository = &repositories[connection];
    if (!random.Chance(6)) return Write();
    const RepositoryModel before = model;
    TransactionGuard transaction(databases[connection]);
    for (auto count = 1 + random.Below(3); count > 0; --count)
      Write();
    if (random.Chance(2)) {
      transaction.Commit();
    } else {
      model = before;
      transaction.Rollback();
    }
  }

  // The file's assets and the shared parts, and no other rows.
  void Check() {
    MediaAssetRepository& reader = repositories.back();
    DataModelDatabase& database = databases.back();
    for (const auto& clip : model.clips) {
      const auto stored = reader.Find(clip.first);
      ASSERT_TRUE(stored) << clip.first << " is lost after " << action;
      const MediaAsset expected = model.Asset(clip.first);
      ASSERT_TRUE(*stored == expected) << clip.first << " differs after " << action;
      ASSERT_EQ(RepositoryModel::Channels(*stored), RepositoryModel::Channels(expected)) << action;
    }
    const auto count = [&](const char* table) {
      return std::stoul(Value(database, std::string("SELECT count(*) FROM ") + table));
    };
    ASSERT_EQ(count("MediaAsset"), model.clips.size()) << action;
    ASSERT_EQ(count("MediaResource"), model.resources.size()) << action;
    ASSERT_EQ(count("Track"), model.tracks.size()) << action;
    ASSERT_TRUE(Column(database, "PRAGMA foreign_key_check").empty()) << action;
  }

  std::string LogText() const { return log.Text(); }

 private:
  using Operation = void (RepositoryWalk::*)();

  void Write() {
    const Operation operations[] = {&RepositoryWalk::Put,    &RepositoryWalk::Put,
                                    &RepositoryWalk::Put,    &RepositoryWalk::PutAgain,
                                    &RepositoryWalk::PutAll, &RepositoryWalk::Copy,
                                    &RepositoryWalk::Change, &RepositoryWalk::Change,
                                    &RepositoryWalk::Remove, &RepositoryWalk::RemoveAll};
    (this->*operations[random.Below(std::size(operations))])();
  }

  // A stored identifier three times out of four, if there is one.
  Identifier AnyId() {
    if (model.clips.empty() || model.clips.size() < 6 || random.Chance(4)) return random.Id();
    return std::next(model.clips.begin(), Place(model.clips.size()))->first;
  }
  std::ptrdiff_t Place(std::size_t count) { return static_cast<std::ptrdiff_t>(random.Below(count)); }

  // An asset of new content that shares some of what is stored, and now and then refers to what isn't.
  MediaAsset Make(const Identifier& id) {
    const auto stored = model.clips.find(id);
    MediaAsset asset = stored != model.clips.end() && random.Chance(2) ? model.Asset(id) : random.Next();
    asset.Id(id);
    if (!model.resources.empty() && random.Chance(2)) {
      const auto& shared = std::next(model.resources.begin(), Place(model.resources.size()))->second;
      Add(asset, std::shared_ptr<MediaResource>(shared->Clone()));
    }
    random.Change(asset);
    for (auto& resource : asset.MediaResources()) {
      auto& streams = resource->Streams();
      for (auto& stream : streams) {
        if (!stream->Essences().Empty() && random.Chance(4))
          stream->Essences().Erase(static_cast<int32_t>(random.Below(stream->Essences().Size())));
      }
      if (!streams.empty() && random.Chance(5)) streams.erase(streams.begin() + Place(streams.size()));
      if (random.Chance(4)) std::reverse(streams.begin(), streams.end());
    }
    if (!model.tracks.empty() && random.Chance(3)) {
      const auto& shared = std::next(model.tracks.begin(), Place(model.tracks.size()))->second;
      const std::shared_ptr<Track> track = shared->Clone();
      const bool isHeld = std::any_of(asset.Tracks().begin(), asset.Tracks().end(),
                                      [&](const auto& held) { return held->Id() == track->Id(); });
      if (!isHeld) asset.Tracks().Insert(track);
    }
    if (random.Chance(3)) {
      const bool isStored = !model.resources.empty() && !random.Chance(6);
      Add(asset, isStored ? std::next(model.resources.begin(), Place(model.resources.size()))->first
                          : Identifier(random.Id()));
    }
    if (!asset.Tracks().Empty() && random.Chance(5))
      asset.Tracks().Erase(random.Below(asset.Tracks().Size()));
    if (!asset.MediaResources().Empty() && random.Chance(5))
      asset.MediaResources().Erase(random.Below(asset.MediaResources().Size()));
    if (random.Chance(4)) asset.HeldParts(static_cast<MediaAssetParts>(random.Below(64)));
    return asset;
  }

  static void Add(MediaAsset& asset,
                  const BusinessEntityModel::BaseTypes::SharedReference<MediaResource>& reference) {
    if (asset.MediaResources().Find(reference) == asset.MediaResources().end())
      asset.MediaResources().Insert(reference);
  }

  // Whether the operation was done, and not refused.
  template <class Run>
  bool IsDone(Run run) {
    try {
      run();
      return true;
    } catch (const NotStoredException& exception) {
      action += std::string(", refused: ") + exception.what();
      return false;
    }
  }

  void Put() {
    MediaAsset asset = Make(AnyId());
    MediaAsset given = *asset.Clone();
    const bool isExpected = model.Put(asset, asset.Id());
    action = "put of " + asset.Id().Value();
    EXPECT_EQ(IsDone([&] { repository->Put(given); }), isExpected) << action;
    reused = std::move(given);
  }

  // The object of an earlier put, whose keys may since have gone to others: by a rollback, or by a removal on
  // another connection.
  void PutAgain() {
    if (!reused) return Put();
    if (random.Chance(2)) reused->Id(AnyId());
    reused->Name(random.Text());
    const bool isExpected = model.Put(*reused, reused->Id());
    action = "put again of an object, as " + reused->Id().Value();
    EXPECT_EQ(IsDone([&] { repository->Put(*reused); }), isExpected) << action;
  }

  void PutAll() {
    std::vector<MediaAsset> assets;
    std::vector<Identifier> refused, leftOut;
    for (auto count = random.Below(5); count > 0; --count) {
      assets.push_back(Make(AnyId()));
      if (!model.Put(assets.back(), assets.back().Id())) refused.push_back(assets.back().Id());
    }
    action = "put of " + std::to_string(assets.size());
    for (const NotStored& notStored : repository->PutAll(assets))
      leftOut.push_back(notStored.id);
    EXPECT_EQ(leftOut, refused) << action;
  }

  void Change() {
    const Identifier id = AnyId();
    const Identifier newId = random.Chance(3) ? AnyId() : id;
    const bool isThrown = random.Chance(6);
    MediaAsset content = Make(id);
    content.Id(newId);
    action = "change of " + id.Value() + " to " + newId.Value();
    const bool isFree = newId == id || model.clips.count(newId) == 0;
    const bool isExpected = !isThrown && model.clips.count(id) > 0 && isFree && model.Put(content, id);
    try {
      const bool isDone = IsDone([&] {
        repository->Change(id, [&](MediaAsset& asset) {
          EXPECT_TRUE(isExpected || asset == model.Asset(id));
          asset = *content.Clone();
          if (isThrown) throw std::length_error("by the caller");
        });
      });
      EXPECT_EQ(isDone, isExpected) << action;
    } catch (const std::length_error&) {
      EXPECT_TRUE(isThrown);
    }
  }

  void Copy() {
    const Identifier from = AnyId(), to = AnyId();
    const bool isOwn = random.Chance(2);
    action = "copy of " + from.Value() + " to " + to.Value();
    bool isExpected = model.clips.count(from) > 0 && model.clips.count(to) == 0;
    if (isExpected) {
      const RepositoryModel::Clip original = model.clips.at(from);
      MediaAsset copy = model.Asset(from);
      copy.Id(to);
      if (isOwn) Rename(copy, to.Value() + "/");
      isExpected = model.Put(copy, to);
    }
    EXPECT_EQ(IsDone([&] {
                const MediaAsset copy =
                    repository->Copy(from, to, isOwn ? CopyResources::Own : CopyResources::Share);
                EXPECT_TRUE(copy == model.Asset(to)) << action;
              }),
              isExpected)
        << action;
  }

  static void Rename(MediaAsset& asset, const std::string& start) {
    std::set<Identifier> streams;
    for (auto& resource : asset.MediaResources()) {
      for (auto& stream : resource->Streams()) {
        streams.insert(stream.Id());
        stream->Id(start + stream.Id().Value());
        stream.UpdateIdentifier();
      }
      resource->Id(start + resource.Id().Value());
      resource.UpdateIdentifier();
    }
    for (const auto& track : asset.Tracks()) {
      track->Id(start + track->Id().Value());
      for (const auto& channel : track->Channels()) {
        const Identifier stream = channel->Stream().Id();
        channel->Stream(Identifier(streams.count(stream) > 0 ? start + stream.Value() : stream.Value()));
      }
    }
  }

  void Remove() {
    const Identifier id = AnyId();
    action = "removal of " + id.Value();
    const auto clip = model.clips.find(id);
    const bool isProtected = clip != model.clips.end() && IsProtected(clip->second);
    const bool isIgnored = random.Chance(2);
    const RemoveOutcome outcome =
        repository->Remove(id, isIgnored ? Protection::Ignore : Protection::Respect);
    if (clip == model.clips.end()) {
      EXPECT_EQ(outcome, RemoveOutcome::Absent) << action;
    } else if (isProtected && !isIgnored) {
      EXPECT_EQ(outcome, RemoveOutcome::Protected) << action;
    } else {
      EXPECT_EQ(outcome, RemoveOutcome::Removed) << action;
      model.Remove(id);
    }
  }

  static bool IsProtected(const RepositoryModel::Clip& clip) {
    return clip.own.HasDapOperatorMetadata() && clip.own.DapOperatorMetadata().IsUserProtected();
  }

  void RemoveAll() {
    const auto length = static_cast<int64_t>(random.Below(4));
    const auto direction = random.Chance(2) ? Direction::Ascending : Direction::Descending;
    const bool isIgnored = random.Chance(2);
    action = "removal of " + std::to_string(length);
    std::vector<Identifier> ids;
    for (const auto& clip : model.clips)
      ids.push_back(clip.first);
    if (direction == Direction::Descending) std::reverse(ids.begin(), ids.end());
    ids.resize(std::min<std::size_t>(ids.size(), length));
    int64_t expected = 0;
    for (const Identifier& id : ids) {
      if (IsProtected(model.clips.at(id)) && !isIgnored) continue;
      model.Remove(id);
      ++expected;
    }
    const auto search = MediaAssetSearch().OrderBy(MediaAssetOrder::Identifier, direction).Limit(length);
    EXPECT_EQ(repository->RemoveAll(search, isIgnored ? Protection::Ignore : Protection::Respect), expected)
        << action;
  }

  TemporaryDirectory folder;
  RandomAssets random;
  CapturedLog log;
  std::deque<DataModelDatabase> databases;
  std::deque<MediaAssetRepository> repositories;
  MediaAssetRepository* repository = nullptr;
  RepositoryModel model;
  std::optional<MediaAsset> reused;
  std::string action;
};

TEST(MediaAssetRepositoryModelTest, AnySequenceOfWritesLeavesWhatAPlainMapHolds) {
  for (uint64_t seed = 1; seed <= 12; ++seed) {
    RepositoryWalk walk(seed, 1 + seed % 2);
    for (int step = 0; step < 60; ++step) {
      walk.Step();
      walk.Check();
      if (testing::Test::HasFailure())
        FAIL() << "seed " << seed << ", step " << step << "\n" << walk.LogText();
    }
  }
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets::Database
