#include "support/DatabasePrelude.h"
#include "support/RandomAsset.h"
#include "support/SearchPages.h"

namespace Oru::DataModel::MediaAssets::Database {

class MediaAssetRepositoryReadTest : public TestSupport::OpenDatabase {
 protected:
  MediaAssetRepository repository{database};
};

// Two assets that share a resource and a track get objects of their own, also within a view of the caller's.
TEST_F(MediaAssetRepositoryReadTest, WhatAssetsShareIsReadForEach) {
  MediaAsset clip = MakeClip("clip");
  repository.Put(clip);
  repository.Copy(clip.Id(), MediaAssetId("sharing"), CopyResources::Share);
  const ReadGuard guard(database);
  const auto found = repository.Find(MediaAssetSearch(), MediaAssetParts::All).assets;
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0], clip);
  EXPECT_NE(found[0].MediaResources()[0].Pointer(), found[1].MediaResources()[0].Pointer());
  EXPECT_NE(found[0].Tracks()[0], found[1].Tracks()[0]);
}

// Searches beside the same searches in plain C++.
class MediaAssetSearchModelTest : public MediaAssetRepositoryReadTest {
 protected:
  using Condition = std::function<bool(const MediaAsset&)>;

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

  static std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
  }
  static bool Has(const MediaAsset& asset, const std::string& text) {
    return Lower(asset.Name() + " " + asset.Description()).find(text) != std::string::npos;
  }

  // No duration first, then by length.
  static std::pair<bool, int64_t> DurationOf(const MediaAsset& asset) {
    const auto unset = TimePoints::TimePoint::Empty();
    const auto in = asset.InBoundary().TimePoint(), out = asset.OutBoundary().TimePoint();
    if (in == unset || out == unset) return {false, 0};
    return {true, (out - in).ToNanoseconds()};
  }

  // What an order compares, before the key.
  static std::pair<std::string, std::vector<int64_t>> RankOf(const MediaAsset& asset, MediaAssetOrder order) {
    const auto [hasDuration, duration] = DurationOf(asset);
    if (order == MediaAssetOrder::Identifier) return {asset.Id().Value(), {}};
    if (order == MediaAssetOrder::Name) return {asset.Name(), {}};
    if (order == MediaAssetOrder::CreationDate) return {"", {asset.CreationDate()}};
    if (order == MediaAssetOrder::ModificationDate) return {"", {asset.ModificationDate()}};
    if (order == MediaAssetOrder::Duration) return {"", {hasDuration, duration}};
    if (order == MediaAssetOrder::Place) return {"", TestSupport::PlaceOf(asset)};
    return {};
  }

  void Keep(const Condition& condition) {
    found.erase(std::remove_if(found.begin(), found.end(), std::not_fn(condition)), found.end());
  }

  // Adds one of the conditions to the search, and keeps the assets of which it holds. An asset without a profile has
  // what a new profile has.
  void AddAnyCondition(MediaAssetSearch& search) {
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
           return !profile.Keywords().empty() && Lower(profile.Keywords()[0]) == "replay";
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
        {[&] { search.ModifiedFrom(number); },
         [=](auto& asset) { return asset.ModificationDate() >= number; }},
        {[&] { search.ModifiedBefore(number); },
         [=](auto& asset) { return asset.ModificationDate() < number; }},
        {[&] { search.LastsAtLeast(Duration::FromNanoseconds(number - 1)); },
         [=](auto& asset) { return DurationOf(asset) >= std::pair(true, int64_t{number - 1}); }},
        {[&] { search.LastsAtMost(Duration::FromNanoseconds(number - 1)); },
         [=](auto& asset) { return DurationOf(asset).first && DurationOf(asset).second < number; }},
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
    Keep(condition);
  }

  TestSupport::RandomAssets random{3};
  std::vector<MediaAsset> stored;
  // By plain code.
  std::vector<MediaAsset> found;
};

TEST_F(MediaAssetSearchModelTest, SearchesFindWhatPlainCodeFinds) {
  for (int round = 0; round < 600; ++round) {
    MediaAssetSearch search;
    found = stored;
    for (int count = Below(3); count > 0; --count)
      AddAnyCondition(search);
    const auto order = static_cast<MediaAssetOrder>(Below(8));
    const auto direction = Below(2) == 0 ? Direction::Ascending : Direction::Descending;
    search.OrderBy(order, direction);
    if (order == MediaAssetOrder::Relevance) {
      search.Typed("goal");
      Keep([](auto& asset) { return Has(asset, "goal"); });
    }
    std::sort(found.begin(), found.end(), [&](const MediaAsset& left, const MediaAsset& right) {
      const auto one = std::pair(RankOf(left, order), left.ObjectId());
      const auto other = std::pair(RankOf(right, order), right.ObjectId());
      return direction == Direction::Ascending ? one < other : other < one;
    });
    auto expected = Ids(found);
    SCOPED_TRACE(testing::Message() << "round " << round << ", order " << static_cast<int>(order));

    const auto all = Ids(repository.Find(search).assets);
    if (order == MediaAssetOrder::Relevance) {
      // What is relevant SQLite says.
      ASSERT_TRUE(all.size() == expected.size() &&
                  std::is_permutation(all.begin(), all.end(), expected.begin()));
      expected = all;
    }
    ASSERT_EQ(all, expected) << log.Text();
    EXPECT_EQ(repository.Count(search), static_cast<int64_t>(expected.size()));
    std::vector<MediaAsset> walked;
    for (MediaAsset& asset : repository.Each(search))
      walked.push_back(std::move(asset));
    EXPECT_EQ(Ids(walked), expected);

    const auto parts = Below(2) == 0 ? MediaAssetParts::Row : MediaAssetParts::All;
    const auto limited = [&](auto length, auto offset) {
      return MediaAssetSearch(search).Limit(length, offset);
    };
    TestSupport::ExpectPages(
        expected, 1 + Below(40), Below(3),
        [&](auto... limit) { return repository.Find(limited(limit...), parts); },
        [&](auto& last, auto... limit) { return repository.Find(limited(limit...).After(last), parts); });
  }
}

TEST_F(MediaAssetSearchModelTest, WhatIsTypedIsFoundByRelevance) {
  const auto goal = MediaAssetSearch().Typed("goal");
  EXPECT_EQ(Ids(repository.Find(goal).assets),
            Ids(repository.Find(MediaAssetSearch(goal).OrderBy(MediaAssetOrder::Relevance)).assets));
  EXPECT_EQ(repository.Count(MediaAssetSearch().Typed("")), 120);
  EXPECT_EQ(repository.Count(MediaAssetSearch().Typed(" - ")), 0);
}

TEST_F(MediaAssetSearchModelTest, APageAfterAnUnknownAssetIsRefused) {
  MediaAsset unknown{MediaAssetId("id")};
  EXPECT_THROW(repository.Find(MediaAssetSearch().After(unknown)), ArgumentException);
  unknown.ObjectId(10000);
  unknown.HeldParts(MediaAssetParts::Row);
  EXPECT_THROW(repository.Find(MediaAssetSearch().After(unknown).OrderBy(MediaAssetOrder::Place)),
               ArgumentException);
  EXPECT_TRUE(repository.Find(MediaAssetSearch().After(unknown)).assets.empty());
}

TEST_F(MediaAssetSearchModelTest, AWalkPassesEachAssetOnceWhateverIsWritten) {
  const TransactionGuard guard(database);
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

}  // namespace Oru::DataModel::MediaAssets::Database
