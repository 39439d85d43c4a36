#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"
#include "support/RandomAsset.h"

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

TEST_F(MediaAssetRepositoryReadTest, WhatWasSavedIsFoundEqual) {
  TestSupport::RandomAssets maker(7);
  std::vector<MediaAsset> saved;
  for (int i = 0; i < 40; ++i) {
    saved.push_back(maker.Next());
    ASSERT_TRUE(assets.Save(saved.back())) << log.Text();
  }
  // Two assets that share a resource and a track get objects of their own.
  saved.push_back(MakeClip("clip"));
  ASSERT_TRUE(assets.Save(saved.back()));
  saved.push_back(saved.back());
  saved.back().Id(MediaAssetId("sharing"));
  saved.back().ObjectId(-1);
  ASSERT_TRUE(assets.Save(saved.back()));

  const auto page = repository.Find(MediaAssetSearch(), MediaAssetParts::All);
  ASSERT_EQ(page.assets.size(), saved.size());
  EXPECT_EQ(page.total, static_cast<int64_t>(saved.size()));
  for (std::size_t i = 0; i < saved.size(); ++i) {
    EXPECT_EQ(page.assets[i], saved[i]);
    EXPECT_EQ(repository.Find(saved[i].Id()), saved[i]);
    for (std::size_t track = 0; track < saved[i].Tracks().Size(); ++track) {
      const auto& stored = saved[i].Tracks()[track]->Channels();
      const auto& channels = page.assets[i].Tracks()[track]->Channels();
      EXPECT_TRUE(std::equal(stored.begin(), stored.end(), channels.begin(), channels.end(),
                             [](const auto& left, const auto& right) { return *left == *right; }));
    }
  }
  const MediaAsset& last = page.assets.back();
  const MediaAsset& before = page.assets[page.assets.size() - 2];
  EXPECT_NE(last.MediaResources()[0].Pointer(), before.MediaResources()[0].Pointer());
  EXPECT_NE(last.Tracks()[0], before.Tracks()[0]);
}

TEST_F(MediaAssetRepositoryReadTest, PartsComeAsAskedFor) {
  MediaAsset clip = MakeClip("clip");
  ASSERT_TRUE(assets.Save(clip));
  for (const auto part : {MediaAssetParts::Row, MediaAssetParts::TimeBounds, MediaAssetParts::Metadata,
                          MediaAssetParts::Operator, MediaAssetParts::Annotations, MediaAssetParts::Resources,
                          MediaAssetParts::Tracks, MediaAssetParts::All}) {
    const MediaAsset found = repository.Find(clip.Id(), part).value();
    const auto holds = [part](MediaAssetParts sought) { return (part & sought) == sought; };
    EXPECT_EQ(found.HeldParts(), part);
    EXPECT_EQ(found.Name(), clip.Name());
    EXPECT_NE(found.PhysicalTimebounds().Empty(), holds(MediaAssetParts::TimeBounds));
    EXPECT_EQ(found.HasDapOperatorMetadata(), holds(MediaAssetParts::Operator));
    EXPECT_EQ(found.Metadata().Size(),
              (holds(MediaAssetParts::Operator) ? 1U : 0U) + (holds(MediaAssetParts::Metadata) ? 1U : 0U));
    EXPECT_NE(found.Annotations().empty(), holds(MediaAssetParts::Annotations));
    EXPECT_NE(found.MediaResources().Empty(), holds(MediaAssetParts::Resources));
    EXPECT_NE(found.Tracks().Empty(), holds(MediaAssetParts::Tracks));
  }
  EXPECT_FALSE(repository.Find(MediaAssetId("")).has_value());
  EXPECT_FALSE(repository.Find(MediaAssetId("another")).has_value());
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

 private:
  // No duration first, then by length.
  static std::pair<bool, int64_t> DurationOf(const MediaAsset& asset) {
    const auto unset = TimePoints::TimePoint::Empty();
    const auto in = asset.InBoundary().TimePoint(), out = asset.OutBoundary().TimePoint();
    if (in == unset || out == unset) return {false, 0};
    return {true, (out - in).ToNanoseconds()};
  }

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
    for (int i = 0; i < 120; ++i)
      Store(i);
    Run("INSERT INTO MediaAssetGroup(id) VALUES ('group')");
    Run("INSERT INTO MediaAssetGroupItem(refMediaAssetGroup, refMediaAsset)"
        " SELECT 1, key FROM MediaAsset WHERE key % 3 = 0");
  }

  // Values from small ranges, so that there are ties and things that aren't set.
  void Store(int number) {
    MediaAsset asset{MediaAssetId("id" + std::to_string(Below(1000)) + "-" + std::to_string(number))};
    asset.Name(std::string(AnyOf({"Goal", "goalkeeper", "Corner", "", "a%b", "Zoë's interview"})));
    asset.Description(std::string(AnyOf({"", "the goal", "INTERVIEW"})));
    asset.CreationDate(Below(6));
    asset.ModificationDate(asset.CreationDate() + Below(3));
    if (Below(4) != 0) asset.InBoundary(TimePoints::TimePoint::FromNanoseconds(Below(3)));
    if (Below(4) != 0) asset.OutBoundary(TimePoints::TimePoint::FromNanoseconds(Below(4)));
    if (Below(4) != 0) {
      auto profile = std::make_shared<DapOperatorMetadataProfile>();
      if (Below(3) != 0) profile->ServerId(ZuServerId(10 * (1 + Below(3))));
      if (Below(3) != 0) profile->Page(Below(3));
      if (Below(3) != 0) profile->Bank(1 + Below(3));
      if (Below(3) != 0) profile->Row(Below(3));
      if (Below(3) != 0) profile->Camera(static_cast<char>('A' + Below(3)));
      profile->UserProtected(Below(3) == 0);
      profile->DapUIProtected(Below(5) == 0);
      if (Below(2) == 0) profile->Keyword(0, std::string(AnyOf({"Replay", "replay", "slow"})));
      asset.Metadata().Set(profile);
    }
    if (Below(3) == 0)
      asset.MediaResources().Insert(std::make_shared<MediaResource>(MediaResourceId("shared")));
    ASSERT_TRUE(assets.Save(asset)) << log.Text();
    stored.push_back(std::move(asset));
  }

  int Below(int end) { return static_cast<int>(random.Below(static_cast<std::size_t>(end))); }
  const char* AnyOf(std::vector<const char*> values) { return values[random.Below(values.size())]; }

  static Condition OfProfile(std::function<bool(const DapOperatorMetadataProfile&)> holds, bool without) {
    return [holds = std::move(holds), without](const MediaAsset& asset) {
      return asset.HasDapOperatorMetadata() ? holds(asset.DapOperatorMetadata()) : without;
    };
  }

  // A place of 3 is unset.
  static Condition AddPlace(MediaAssetSearch& search, MediaAssetSearch& (MediaAssetSearch::*add)(int),
                            int32_t (DapOperatorMetadataProfile::*get)() const, int number) {
    const int place = number == 3 ? DapId::Unset : number;
    (search.*add)(place);
    return OfProfile([get, place](const auto& profile) { return (profile.*get)() == place; },
                     place == DapId::Unset);
  }

  // Adds one of the conditions to the search and gives the same condition in C++.
  Condition AddAnyCondition(MediaAssetSearch& search) {
    const int number = Below(4);
    switch (Below(16)) {
      case 0: {
        search.Typed("go INTER");
        return [](const MediaAsset& asset) {
          const std::string text = SearchModel::Lower(asset.Name() + " " + asset.Description());
          return text.find("go") != std::string::npos && text.find("inter") != std::string::npos;
        };
      }
      case 1:
        search.NameContains("A%");
        return [](const MediaAsset& asset) { return asset.Name() == "a%b"; };
      case 2:
        search.Keyword("REPLAY");
        return OfProfile(
            [](const auto& profile) {
              return !profile.Keywords().empty() && SearchModel::Lower(profile.Keywords()[0]) == "replay";
            },
            false);
      case 3: {
        const ZuServerId server = number == 0 ? ZuServerId() : ZuServerId(10 * number);
        search.OnServer(server);
        return OfProfile([server](const auto& profile) { return profile.ServerId() == server; }, number == 0);
      }
      case 4:
        return AddPlace(search, &MediaAssetSearch::OnPage, &DapOperatorMetadataProfile::Page, number);
      case 5:
        return AddPlace(search, &MediaAssetSearch::OnBank, &DapOperatorMetadataProfile::Bank, number);
      case 6:
        return AddPlace(search, &MediaAssetSearch::OnRow, &DapOperatorMetadataProfile::Row, number);
      case 7: {
        const char camera = number == 3 ? char{0} : static_cast<char>('A' + number);
        search.OnCamera(camera);
        return OfProfile([camera](const auto& profile) { return profile.Camera() == camera; }, camera == 0);
      }
      case 8: {
        const bool isProtected = number % 2 == 0;
        search.Protected(isProtected);
        return OfProfile(
            [isProtected](const auto& profile) { return profile.IsUserProtected() == isProtected; },
            !isProtected);
      }
      case 9:
        search.CreatedFrom(number);
        return [number](const MediaAsset& asset) { return asset.CreationDate() >= number; };
      case 10:
        search.CreatedBefore(number);
        return [number](const MediaAsset& asset) { return asset.CreationDate() < number; };
      case 11:
        search.ModifiedFrom(number).ModifiedBefore(number + 3);
        return [number](const MediaAsset& asset) {
          return asset.ModificationDate() >= number && asset.ModificationDate() < number + 3;
        };
      case 12:
        search.LastsAtLeast(TimePoints::Duration::FromNanoseconds(0))
            .LastsAtMost(TimePoints::Duration::FromNanoseconds(number));
        return [number](const MediaAsset& asset) {
          const auto unset = TimePoints::TimePoint::Empty();
          const auto in = asset.InBoundary().TimePoint(), out = asset.OutBoundary().TimePoint();
          return in != unset && out != unset && in <= out && (out - in).ToNanoseconds() <= number;
        };
      case 13:
        search.InGroup(MediaAssetGroupId("group"));
        return [](const MediaAsset& asset) { return asset.ObjectId() % 3 == 0; };
      case 14:
        search.UsesResource(MediaResourceId("shared"));
        return [](const MediaAsset& asset) { return !asset.MediaResources().Empty(); };
      default: {
        const auto query = database.NewQuery();
        query->Match("MediaAssetFts", "goal").Equals("creationDate", 1);
        search.Where(*query);
        return [](const MediaAsset& asset) {
          const std::string text = SearchModel::Lower(asset.Name() + " " + asset.Description());
          return asset.CreationDate() == 1 &&
                 (text.find("the goal") != std::string::npos || asset.Name() == "Goal");
        };
      }
    }
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

TEST_F(MediaAssetSearchModelTest, ThePageOfASearchIsRemoved) {
  const auto oldest = MediaAssetSearch().OrderBy(MediaAssetOrder::CreationDate).Limit(30);
  const auto isProtected = [](const MediaAsset& asset) {
    return asset.HasDapOperatorMetadata() && asset.DapOperatorMetadata().IsUserProtected();
  };
  const auto page = repository.Find(oldest, MediaAssetParts::All).assets;
  const auto kept = std::count_if(page.begin(), page.end(), isProtected);
  ASSERT_GT(kept, 0);
  EXPECT_EQ(repository.RemoveAll(oldest), 30 - kept);
  for (const MediaAsset& asset : page)
    EXPECT_EQ(repository.Find(asset.Id()).has_value(), isProtected(asset));
  EXPECT_EQ(repository.RemoveAll(MediaAssetSearch(), Protection::Ignore), 90 + kept);
}

TEST_F(MediaAssetRepositoryReadTest, AClosedDatabaseIsAnInvalidOperation) {
  database.Close();
  EXPECT_THROW(repository.Find(MediaAssetId("clip")), Common::Databases::InvalidOperationException);
  EXPECT_THROW(repository.Count(MediaAssetSearch()), Common::Databases::InvalidOperationException);
}

TEST_F(MediaAssetRepositoryReadTest, ReadsWorkWithinTheCallersView) {
  MediaAsset clip = MakeClip("clip");
  ASSERT_TRUE(assets.Save(clip));
  const Common::Databases::Sqlite::ReadGuard guard(database);
  EXPECT_EQ(repository.Find(clip.Id()), clip);
  EXPECT_EQ(repository.Find(MediaAssetSearch()).total, 1);
}

}  // namespace Oru::DataModel::MediaAssets::Database
