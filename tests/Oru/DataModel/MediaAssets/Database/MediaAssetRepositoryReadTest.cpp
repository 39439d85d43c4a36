#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"
#include "support/RandomAsset.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using TestSupport::MakeClip;

class MediaAssetRepositoryReadTest : public TestSupport::OpenDatabase {
 protected:
  static std::vector<std::string> Ids(const std::vector<MediaAsset>& found) {
    std::vector<std::string> ids;
    for (const MediaAsset& asset : found)
      ids.push_back(asset.Id().Value());
    return ids;
  }

  MediaAssetRepository repository{database};
};

// Two assets that share a resource and a track get objects of their own, also within a view of the caller's.
TEST_F(MediaAssetRepositoryReadTest, WhatAssetsShareIsReadForEach) {
  MediaAsset clip = MakeClip("clip");
  repository.Put(clip);
  repository.Copy(clip.Id(), MediaAssetId("sharing"), CopyResources::Share);
  const Common::Databases::Sqlite::ReadGuard guard(database);
  const auto found = repository.Find(MediaAssetSearch(), MediaAssetParts::All).assets;
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0], clip);
  EXPECT_NE(found[0].MediaResources()[0].Pointer(), found[1].MediaResources()[0].Pointer());
  EXPECT_NE(found[0].Tracks()[0], found[1].Tracks()[0]);
}

// A search by the side of the same search in plain C++.
class SearchModel {
 public:
  using Condition = std::function<bool(const MediaAsset&)>;

  explicit SearchModel(const std::vector<MediaAsset>& stored) : assets(stored) {}

  static std::string Lower(std::string text) {
    for (char& c : text) {
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
  }

  std::vector<std::string> Find(MediaAssetOrder order, Direction direction,
                                const std::vector<Condition>& all) const {
    std::vector<const MediaAsset*> found;
    for (const MediaAsset& asset : assets) {
      const auto holds = [&](const Condition& condition) { return condition(asset); };
      if (std::all_of(all.begin(), all.end(), holds)) found.push_back(&asset);
    }
    std::sort(found.begin(), found.end(), [&](const MediaAsset* left, const MediaAsset* right) {
      return direction == Direction::Ascending ? IsBefore(*left, *right, order)
                                               : IsBefore(*right, *left, order);
    });
    std::vector<std::string> ids;
    for (const MediaAsset* asset : found)
      ids.push_back(asset->Id().Value());
    return ids;
  }

  // No duration first, then by length.
  static std::pair<bool, int64_t> DurationOf(const MediaAsset& asset) {
    const auto unset = TimePoints::TimePoint::Empty();
    const auto in = asset.InBoundary().TimePoint(), out = asset.OutBoundary().TimePoint();
    if (in == unset || out == unset) return {false, 0};
    return {true, (out - in).ToNanoseconds()};
  }

 private:
  static std::tuple<bool, int, int, int, int, int> PlaceOf(const MediaAsset& asset) {
    if (!asset.HasDapOperatorMetadata()) return {};
    const auto& profile = asset.DapOperatorMetadata();
    const int server = profile.ServerId().SerialNumber(), unset = 1 << 30;
    return {true,           server == 0 ? unset : server,
            profile.Page(), profile.Bank(),
            profile.Row(),  profile.Camera() == 0 ? unset : profile.Camera()};
  }

  static bool IsBefore(const MediaAsset& left, const MediaAsset& right, MediaAssetOrder order) {
    const auto by = [&](const auto& of) {
      return std::make_pair(of(left), left.ObjectId()) < std::make_pair(of(right), right.ObjectId());
    };
    switch (order) {
      case MediaAssetOrder::Identifier:
        return left.Id().Value() < right.Id().Value();
      case MediaAssetOrder::Name:
        return by([](const auto& asset) { return std::string(asset.Name()); });
      case MediaAssetOrder::CreationDate:
        return by([](const auto& asset) { return asset.CreationDate(); });
      case MediaAssetOrder::ModificationDate:
        return by([](const auto& asset) { return asset.ModificationDate(); });
      case MediaAssetOrder::Duration:
        return by(DurationOf);
      case MediaAssetOrder::Place:
        return by(PlaceOf);
      case MediaAssetOrder::Key:
      case MediaAssetOrder::Relevance:
        break;
    }
    return left.ObjectId() < right.ObjectId();
  }

  const std::vector<MediaAsset>& assets;
};

class MediaAssetSearchModelTest : public MediaAssetRepositoryReadTest {
 protected:
  using Condition = SearchModel::Condition;

  MediaAssetSearchModelTest() {
    for (int i = 0; i < 120; ++i) {
      stored.push_back(random.Similar());
      EXPECT_TRUE(assets.Save(stored.back())) << log.Text();
    }
    Run("INSERT INTO MediaAssetGroup(id) VALUES ('group')");
    Run("INSERT INTO MediaAssetGroupItem(refMediaAssetGroup, refMediaAsset)"
        " SELECT 1, key FROM MediaAsset WHERE key % 3 = 0");
  }

  int Below(int end) { return static_cast<int>(random.Below(static_cast<std::size_t>(end))); }

  static bool Has(const MediaAsset& asset, const std::string& text) {
    return SearchModel::Lower(asset.Name() + " " + asset.Description()).find(text) != std::string::npos;
  }

  // Adds one of the conditions to the search and gives the same condition in C++. An asset without a profile has
  // what a new profile has.
  Condition AddAnyCondition(MediaAssetSearch& search) {
    using Profile = DapOperatorMetadataProfile;
    const int number = Below(4), place = number == 3 ? DapId::Unset : number;
    const ZuServerId server = number == 0 ? ZuServerId() : ZuServerId(10 * number);
    const char camera = number == 3 ? char{0} : static_cast<char>('A' + number);
    const bool isProtected = number % 2 == 0;
    const auto query = database.NewQuery();
    query->Match("MediaAssetFts", "goal").Equals("creationDate", 1);
    using TimePoints::Duration;
    const auto of = [](auto holds) {
      return [holds](const MediaAsset& asset) {
        return holds(asset.HasDapOperatorMetadata() ? asset.DapOperatorMetadata() : Profile());
      };
    };
    const std::pair<std::function<void()>, Condition> all[] = {
        {[&] { search.Typed("go INTER"); },
         [](auto& asset) { return Has(asset, "go") && Has(asset, "inter"); }},
        {[&] { search.NameContains("A%"); }, [](auto& asset) { return asset.Name() == "a%b"; }},
        {[&] { search.Keyword("REPLAY"); }, of([](const Profile& profile) {
           return !profile.Keywords().empty() && SearchModel::Lower(profile.Keywords()[0]) == "replay";
         })},
        {[&] { search.OnServer(server); }, of([=](auto& profile) { return profile.ServerId() == server; })},
        {[&] { search.OnPage(place); }, of([=](auto& profile) { return profile.Page() == place; })},
        {[&] { search.OnBank(place); }, of([=](auto& profile) { return profile.Bank() == place; })},
        {[&] { search.OnRow(place); }, of([=](auto& profile) { return profile.Row() == place; })},
        {[&] { search.OnCamera(camera); }, of([=](auto& profile) { return profile.Camera() == camera; })},
        {[&] { search.Protected(isProtected); },
         of([=](auto& profile) { return profile.IsUserProtected() == isProtected; })},
        {[&] { search.CreatedFrom(number); }, [=](auto& asset) { return asset.CreationDate() >= number; }},
        {[&] { search.CreatedBefore(number); }, [=](auto& asset) { return asset.CreationDate() < number; }},
        {[&] { search.ModifiedFrom(number).ModifiedBefore(number + 3); },
         [=](auto& asset) {
           return asset.ModificationDate() >= number && asset.ModificationDate() < number + 3;
         }},
        {[&] {
           search.LastsAtLeast(Duration::FromNanoseconds(0)).LastsAtMost(Duration::FromNanoseconds(number));
         },
         [=](auto& asset) {
           const auto [isSet, length] = SearchModel::DurationOf(asset);
           return isSet && length >= 0 && length <= number;
         }},
        {[&] { search.InGroup(MediaAssetGroupId("group")); },
         [](auto& asset) { return asset.ObjectId() % 3 == 0; }},
        {[&] { search.UsesResource(MediaResourceId("shared")); },
         [](auto& asset) { return !asset.MediaResources().Empty(); }},
        {[&] { search.Where(*query); },
         [](auto& asset) {
           return asset.CreationDate() == 1 &&
                  (Has(asset, "the goal") || Has(asset, "goal and") || asset.Name() == "Goal");
         }},
    };
    const auto& [add, condition] = all[random.Below(std::size(all))];
    add();
    return condition;
  }

  TestSupport::RandomAssets random{3};
  std::vector<MediaAsset> stored;
};

TEST_F(MediaAssetSearchModelTest, SearchesFindWhatPlainCodeFinds) {
  const SearchModel model(stored);
  for (int round = 0; round < 600; ++round) {
    MediaAssetSearch search;
    std::vector<Condition> conditions;
    for (int count = Below(3); count > 0; --count)
      conditions.push_back(AddAnyCondition(search));
    const auto order = static_cast<MediaAssetOrder>(Below(7));
    const auto direction = Below(2) == 0 ? Direction::Ascending : Direction::Descending;
    search.OrderBy(order, direction);
    const auto expected = model.Find(order, direction, conditions);
    const auto total = static_cast<int64_t>(expected.size());
    SCOPED_TRACE(testing::Message() << "round " << round << ", order " << static_cast<int>(order));

    ASSERT_EQ(Ids(repository.Find(search).assets), expected) << log.Text();
    EXPECT_EQ(repository.Count(search), total);
    std::vector<MediaAsset> walked;
    for (MediaAsset& asset : repository.Each(search))
      walked.push_back(std::move(asset));
    EXPECT_EQ(Ids(walked), expected);

    // Page by page, by places and each page after the last asset of the one before.
    const int64_t length = 1 + Below(40);
    const auto parts = Below(2) == 0 ? MediaAssetParts::Row : MediaAssetParts::All;
    std::vector<std::string> byPlace, byPosition;
    MediaAssetSearch next = search;
    next.Limit(length);
    for (int64_t place = 0; place <= total; place += length) {
      const auto at = repository.Find(MediaAssetSearch(search).Limit(length, place), parts);
      const auto after = repository.Find(next, parts);
      EXPECT_EQ(at.total, total);
      EXPECT_EQ(after.total, total);
      for (const std::string& id : Ids(at.assets))
        byPlace.push_back(id);
      for (const std::string& id : Ids(after.assets))
        byPosition.push_back(id);
      if (after.assets.empty()) break;
      next.After(after.assets.back());
    }
    EXPECT_EQ(byPlace, expected);
    EXPECT_EQ(byPosition, expected);
  }
}

TEST_F(MediaAssetSearchModelTest, RelevancePagesFollowOnEachOther) {
  for (const auto direction : {Direction::Ascending, Direction::Descending}) {
    MediaAssetSearch search;
    search.Typed("goal").OrderBy(MediaAssetOrder::Relevance, direction);
    const auto all = Ids(repository.Find(search).assets);
    ASSERT_GT(all.size(), 20U);
    std::vector<std::string> paged;
    search.Limit(7);
    for (auto page = repository.Find(search); !page.assets.empty(); page = repository.Find(search)) {
      for (const std::string& id : Ids(page.assets))
        paged.push_back(id);
      search.After(page.assets.back());
    }
    EXPECT_EQ(paged, all);
  }
  EXPECT_EQ(
      Ids(repository.Find(MediaAssetSearch().Typed("goal")).assets),
      Ids(repository.Find(MediaAssetSearch().Typed("goal").OrderBy(MediaAssetOrder::Relevance)).assets));
  EXPECT_EQ(repository.Count(MediaAssetSearch().Typed("")), 120);
  EXPECT_EQ(repository.Count(MediaAssetSearch().Typed(" - ")), 0);
}

TEST_F(MediaAssetSearchModelTest, APageAfterAnUnknownAssetIsRefused) {
  MediaAsset unknown{MediaAssetId("id")};
  EXPECT_THROW(repository.Find(MediaAssetSearch().After(unknown)), Common::Databases::ArgumentException);
  unknown.ObjectId(10000);
  unknown.HeldParts(MediaAssetParts::Row);
  EXPECT_THROW(repository.Find(MediaAssetSearch().After(unknown).OrderBy(MediaAssetOrder::Place)),
               Common::Databases::ArgumentException);
  EXPECT_TRUE(repository.Find(MediaAssetSearch().After(unknown)).assets.empty());
}

TEST_F(MediaAssetSearchModelTest, AWalkPassesEachAssetOnceWhateverIsWritten) {
  const Common::Databases::Sqlite::TransactionGuard guard(database);
  int count = 0;
  for (MediaAsset& asset : repository.Each(MediaAssetSearch().OrderBy(MediaAssetOrder::Name))) {
    // Its new name moves it to the end of the order, a copy appears there, and the asset after it is gone or
    // changed.
    EXPECT_EQ(asset.Description().find("written"), std::string::npos);
    asset.Name("zzz" + asset.Name());
    asset.Description("written");
    ASSERT_TRUE(assets.Save(asset)) << log.Text();
    asset.Id(MediaAssetId("copy " + std::to_string(count)));
    asset.ObjectId(-1);
    ASSERT_TRUE(assets.Save(asset)) << log.Text();
    ++count;
  }
  EXPECT_EQ(count, 120);

  count = 0;
  for (MediaAsset& asset : repository.Each(MediaAssetSearch())) {
    EXPECT_EQ(Value("SELECT name FROM MediaAsset WHERE key = " + std::to_string(asset.ObjectId())),
              asset.Name());
    const std::string next = std::to_string(asset.ObjectId() + 1);
    Run("DELETE FROM MediaAsset WHERE key = " + next);
    Run("UPDATE MediaAsset SET name = 'changed' WHERE key > " + next);
    ++count;
  }
  EXPECT_EQ(count, 120);
}

TEST_F(MediaAssetRepositoryReadTest, AClosedDatabaseIsAnInvalidOperation) {
  database.Close();
  EXPECT_THROW(repository.Find(MediaAssetId("clip")), Common::Databases::InvalidOperationException);
  EXPECT_THROW(repository.Count(MediaAssetSearch()), Common::Databases::InvalidOperationException);
}

TEST(MediaAssetPlaceTest, APageByPlaceFollowsEachWayInWhichAProfileGoes) {
  const TestSupport::TemporaryDirectory folder;
  DataModelDatabase database(folder.File("clips.db"), nullptr), other(folder.File("clips.db"), nullptr);
  database.Open();
  other.Open();
  MediaAssetRepository repository(database);
  for (const char* id : {"a", "b", "c"}) {
    MediaAsset clip = MakeClip(id);
    repository.Put(clip);
  }
  const auto page = [&] {
    std::string ids;
    for (const MediaAsset& asset : repository.Find(MediaAssetSearch().OrderBy(MediaAssetOrder::Place)).assets)
      ids += asset.Id().Value();
    return ids;
  };
  const auto takeFrom = [](DataModelDatabase& by, const std::string& id) {
    by.ExecuteStatement(
        "DELETE FROM DapOperatorMetadata WHERE refMediaAsset = "
        "(SELECT key FROM MediaAsset WHERE id = '" +
        id + "')");
  };
  EXPECT_EQ(page(), "abc");
  {
    const Common::Databases::Sqlite::TransactionGuard rolledBack(database);
    takeFrom(database, "b");
    EXPECT_EQ(page(), "bac");
  }
  EXPECT_EQ(page(), "abc");
  takeFrom(database, "c");
  EXPECT_EQ(page(), "cab");
  MediaAsset clip = MakeClip("c");
  repository.Put(clip);
  EXPECT_EQ(page(), "abc");
  takeFrom(other, "b");
  EXPECT_EQ(page(), "bac");
  other.GetMediaAssetTable().Save(clip = MakeClip("b"));
  EXPECT_EQ(page(), "abc");
  database.Close();
  takeFrom(other, "c");
  database.Open();
  EXPECT_EQ(page(), "cab");
}

}  // namespace Oru::DataModel::MediaAssets::Database
