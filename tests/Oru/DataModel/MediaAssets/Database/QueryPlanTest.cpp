#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/OpenDatabase.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using TestSupport::MakeClip;
using TestSupport::ReadDeep;
using TestSupport::ReadLazy;

// Counts the steps that each statement on the connection takes.
class QueryPlanTest : public TestSupport::OpenDatabase {
 public:
  ~QueryPlanTest() override { sqlite3_trace_v2(database.Handle(), 0, nullptr, nullptr); }

 protected:
  QueryPlanTest() { sqlite3_trace_v2(database.Handle(), SQLITE_TRACE_PROFILE, &QueryPlanTest::Trace, this); }

  // The steps of SQLite's machine, cascades and triggers included.
  template <class Job>
  int64_t StepsOf(Job job) {
    steps = 0;
    job();
    return steps;
  }

  // Clips up to a number of them, each on a server of its own, and a group for every fourth.
  void FillUpTo(int count) {
    database.BeginTransaction();
    for (; filled < count; ++filled) {
      MediaAsset clip = MakeClip("clip" + std::to_string(filled));
      clip.DapOperatorMetadata().ServerId(ServerOf(filled));
      ASSERT_TRUE(assets.Save(clip)) << log.Text();
      if (filled % 4 != 0) continue;
      auto group = TestSupport::MakeGroup("group" + std::to_string(filled), {clip.Id().Value()});
      ASSERT_TRUE(angles.Save(group, true)) << log.Text();
    }
    database.EndTransaction(true);
  }
  static ZuServerId ServerOf(int number) { return ZuServerId(1000 + 10 * number); }

  // Of the statements that ran.
  std::set<std::string> texts;
  AnglesMediaAssetGroupTable& angles = database.GetAnglesMediaAssetGroupTable();

 private:
  static int Trace(unsigned, void* context, void* statement, void*) {
    auto& self = *static_cast<QueryPlanTest*>(context);
    auto* running = static_cast<sqlite3_stmt*>(statement);
    const std::string text = sqlite3_sql(running);
    // What the full-text index runs for itself costs more when it merges its words.
    if (text.find("MediaAssetFts_") != std::string::npos) return 0;
    self.steps += sqlite3_stmt_status(running, SQLITE_STMTSTATUS_VM_STEP, 1);
    self.texts.insert(text);
    return 0;
  }

  int64_t steps = 0;
  int filled = 0;
};

TEST_F(QueryPlanTest, NothingIsDeletedOrLookedUpBelowARowThatIsNew) {
  texts.clear();
  MediaAsset clip = MakeClip("one");
  ASSERT_TRUE(assets.Save(clip));
  for (const std::string& text : texts) {
    EXPECT_NE(text.rfind("DELETE ", 0), 0U) << text;
    for (const char* look : {" FROM Essence WHERE ", " FROM DapOperatorMetadata WHERE "})
      EXPECT_EQ(text.find(look), std::string::npos) << text;
  }
  EXPECT_GT(texts.size(), 15U);
}

TEST_F(QueryPlanTest, TheStepsOfAJobDoNotGrowWithTheFile) {
  const auto stepsOfJobs = [this](int number) {
    std::vector<std::pair<std::string, int64_t>> jobs;
    const auto count = [&](const std::string& name, auto job) { jobs.emplace_back(name, StepsOf(job)); };
    MediaAsset clip = MakeClip("another");
    clip.Name("sought");
    auto group = TestSupport::MakeGroup("another group", {"another", "clip1"});
    count("save new", [&] { EXPECT_TRUE(assets.Save(clip)); });
    count("save again", [&] { EXPECT_TRUE(assets.Save(clip)); });
    count("search", [&] {
      const auto query = database.NewQuery();
      query->Match("MediaAssetFts", "sought").OrderByAsc("MediaAssetFts.rank");
      const auto cursor = assets.OpenObjectCursor(*query);
      EXPECT_TRUE(cursor->Next() && !cursor->Next() && cursor->GetTotalItemsCount() == 1);
    });
    count("find", [&] { EXPECT_NE(assets.GetObjectIdFromIdentifier(clip.Id()), -1); });
    count("read deep", [&] { ReadDeep(database, clip.ObjectId()); });
    count("read lazily", [&] { ReadLazy(database, clip.ObjectId()); });
    count("save a group", [&] { EXPECT_TRUE(angles.Save(group, true)); });
    count("delete a group", [&] { EXPECT_TRUE(angles.Delete(group)); });
    count("delete", [&] { EXPECT_TRUE(assets.Delete(clip)); });
    count("delete by server", [&] { EXPECT_TRUE(assets.DeleteByServerId(ServerOf(number))); });
    count("clean up", [&] { EXPECT_TRUE(assets.CleanUpDependentData()); });
    return jobs;
  };

  FillUpTo(100);
  // The first clean-up of a connection looks at everything.
  ASSERT_TRUE(assets.CleanUpDependentData());
  const auto early = stepsOfJobs(50);
  FillUpTo(2000);
  ASSERT_TRUE(assets.CleanUpDependentData());
  const auto late = stepsOfJobs(1050);
  for (std::size_t i = 0; i < early.size(); ++i) {
    EXPECT_GT(early[i].second, 0) << early[i].first;
    EXPECT_LE(late[i].second, early[i].second * 11 / 10) << late[i].first << ", at first " << early[i].second;
  }
}

// Among 100 clips and among 100,000, with the steps of a page of 50 in place of its time.
TEST_F(QueryPlanTest, APageOfAListTakesTheSameStepsHoweverManyClipsThereAre) {
  const auto grow = [this](int count) {
    Run("WITH RECURSIVE n(i) AS (SELECT 1 + (SELECT count(*) FROM MediaAsset) UNION ALL SELECT i + 1 FROM n "
        "WHERE i < " +
        std::to_string(count) +
        ") INSERT INTO MediaAsset(id, name, creationDate, modificationDate) SELECT 'id' || i, CASE WHEN i <= "
        "60 THEN "
        "'goal ' ELSE 'corner ' END || i, i * 7919 % 100003, i * 7919 % 100003 FROM n;"
        "INSERT INTO DapOperatorMetadata(refMediaAsset, zuServerId, dapIdPage) SELECT key, CASE WHEN key <= 60 "
        "THEN 7 ELSE 100 + key % 10 END, key % 9 FROM MediaAsset "
        "WHERE key NOT IN (SELECT refMediaAsset FROM DapOperatorMetadata);"
        "INSERT OR IGNORE INTO DapOperatorKeywords(refDapOperatorMetadata, nr, keyword) SELECT refMediaAsset, 0, "
        "iif(refMediaAsset <= 60, 'corner ', 'goal ') || refMediaAsset FROM DapOperatorMetadata;");
  };
  using Ask = void (*)(Common::Databases::Query&);
  const std::pair<const char*, Ask> lists[] = {
      {"by key", [](auto& query) { query.OrderByAsc("MediaAsset.key"); }},
      {"by key, last first", [](auto& query) { query.OrderByDesc("MediaAsset.key"); }},
      {"by name", [](auto& query) { query.OrderByAsc("MediaAsset.name"); }},
      {"by name, last first", [](auto& query) { query.OrderByDesc("MediaAsset.name"); }},
      {"oldest first", [](auto& query) { query.OrderByAsc("creationDate"); }},
      {"newest first", [](auto& query) { query.OrderByDesc("creationDate"); }},
      {"changed last", [](auto& query) { query.OrderByDesc("modificationDate"); }},
      {"a match by rank",
       [](auto& query) { query.Match("MediaAssetFts", "goal").OrderByAsc("MediaAssetFts.rank"); }},
      {"a match by key",
       [](auto& query) { query.Match("MediaAssetFts", "goal").OrderByAsc("MediaAsset.key"); }},
      {"a match by date",
       [](auto& query) { query.Match("MediaAssetFts", "goal").OrderByDesc("creationDate"); }},
      {"of a beginning of a keyword",
       [](auto& query) {
         Common::Databases::Sqlite::QuerySqlite begins;
         begins.BeginWith("keyword", "Cor");
         query.In("MediaAsset.key", "DapOperatorKeywords", "refDapOperatorMetadata", begins);
       }},
      {"of a server by date",
       [](auto& query) {
         Common::Databases::Sqlite::QuerySqlite ofServer;
         ofServer.Equals("zuServerId", 7);
         query.In("MediaAsset.key", "DapOperatorMetadata", "refMediaAsset", ofServer)
             .OrderByDesc("creationDate");
       }},
  };
  MediaAssetRepository repository(database);
  std::vector<std::string> names;
  const auto measure = [&] {
    std::vector<int64_t> all;
    names.clear();
    for (const auto& [name, ask] : lists) {
      names.push_back(name);
      all.push_back(StepsOf([&, ask = ask, name = name] {
        const auto query = database.NewQuery();
        ask(*query);
        query->Limit(50, 0);
        const auto cursor = assets.OpenObjectCursor(*query);
        MediaAsset asset;
        int count = 0;
        while (cursor->Next(asset))
          ++count;
        EXPECT_EQ(count, 50) << name;
        if (!query->IsEmpty()) {
          EXPECT_GE(cursor->GetTotalItemsCount(), 50) << name;
        }
      }));
    }
    names.emplace_back("at a place");
    all.push_back(StepsOf([&] {
      auto search = MediaAssetSearch().OnServer(ZuServerId(100)).OnPage(1).OnBank(2).OnRow(3);
      EXPECT_EQ(repository.Find(search.Limit(50)).total, 0);
    }));
    for (const auto order :
         {MediaAssetOrder::Duration, MediaAssetOrder::Place, MediaAssetOrder::ModificationDate}) {
      for (const auto direction : {Direction::Ascending, Direction::Descending}) {
        names.push_back("by order " + std::to_string(static_cast<int>(order)));
        all.push_back(StepsOf([&] {
          auto search = MediaAssetSearch().OrderBy(order, direction).Limit(25);
          const auto first = repository.Find(search).assets;
          EXPECT_EQ(first.size() + repository.Find(search.After(first.back())).assets.size(), 50U);
        }));
      }
    }
    return all;
  };
  grow(100);
  const auto few = measure();
  grow(100000);
  const auto expectAsFew = [&](std::size_t count, const char* when) {
    const auto many = measure();
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_GT(few[i], 0) << names[i];
      EXPECT_LE(many[i], few[i] * 11 / 10) << names[i] << when << ", among a hundred " << few[i];
    }
  };
  expectAsFew(few.size(), "");
  // A list without a condition goes by its index whatever numbers ANALYZE has left. What else that has spoilt, the
  // next opening mends.
  Run("ANALYZE");
  expectAsFew(7, " after ANALYZE");
  database.Create();
  expectAsFew(few.size(), " after the next opening");
}

}  // namespace Oru::DataModel::MediaAssets::Database
