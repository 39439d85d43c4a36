#include "support/DatabasePrelude.h"

namespace Oru::DataModel::MediaAssets::Database {

// Counts the steps that each statement on the connection takes.
class QueryPlanTest : public TestSupport::OpenDatabase {
 public:
  ~QueryPlanTest() override { sqlite3_trace_v2(database.Handle(), 0, nullptr, nullptr); }

 protected:
  QueryPlanTest() {
    const auto trace = [](unsigned, void* context, void* statement, void*) {
      auto& self = *static_cast<QueryPlanTest*>(context);
      auto* running = static_cast<sqlite3_stmt*>(statement);
      const std::string text = sqlite3_sql(running);
      // What the full-text index runs for itself costs more when it merges its words.
      if (text.find("MediaAssetFts_") != std::string::npos) return 0;
      self.steps += sqlite3_stmt_status(running, SQLITE_STMTSTATUS_VM_STEP, 1);
      self.texts.insert(text);
      return 0;
    };
    sqlite3_trace_v2(database.Handle(), SQLITE_TRACE_PROFILE, trace, this);
  }

  // The steps of SQLite's machine, cascades and triggers included.
  template <class Job>
  void Count(const std::string& name, Job job) {
    steps = 0;
    job();
    EXPECT_GT(steps, 0) << name;
    counts[name] = steps;
  }
  static void ExpectAsFew(const std::map<std::string, int64_t>& many,
                          const std::map<std::string, int64_t>& few) {
    for (const auto& [name, count] : many)
      EXPECT_LE(count, few.at(name) * 11 / 10) << name << ", at first " << few.at(name);
  }

  static ZuServerId ServerOf(int number) { return ZuServerId(1000 + 10 * number); }

  std::map<std::string, int64_t> counts;
  // Of the statements that ran.
  std::set<std::string> texts;
  AnglesMediaAssetGroupTable& angles = database.GetAnglesMediaAssetGroupTable();
  int64_t steps = 0;
};

TEST_F(QueryPlanTest, NothingIsDeletedOrLookedUpBelowARowThatIsNew) {
  texts.clear();
  MediaAsset clip = MakeClip("one"), other = MakeClip("two");
  ASSERT_TRUE(assets.Save(clip));
  MediaAssetRepository(database).Put(other);
  for (const std::string& text : texts) {
    EXPECT_NE(text.rfind("DELETE ", 0), 0U) << text;
    for (const char* look : {" FROM Essence WHERE ", " FROM DapOperatorMetadata WHERE "})
      EXPECT_EQ(text.find(look), std::string::npos) << text;
  }
  EXPECT_GT(texts.size(), 15U);
}

TEST_F(QueryPlanTest, TheStepsOfAJobDoNotGrowWithTheFile) {
  const auto stepsOfJobs = [this](int number) {
    counts.clear();
    MediaAsset clip = MakeClip("another");
    clip.Name("sought");
    auto group = TestSupport::MakeGroup("another group", {"another", "clip1"});
    Count("save new", [&] { EXPECT_TRUE(assets.Save(clip)); });
    Count("save again", [&] { EXPECT_TRUE(assets.Save(clip)); });
    Count("search", [&] {
      const auto query = database.NewQuery();
      query->Match("MediaAssetFts", "sought").OrderByAsc("MediaAssetFts.rank");
      const auto cursor = assets.OpenObjectCursor(*query);
      EXPECT_TRUE(cursor->Next() && !cursor->Next() && cursor->GetTotalItemsCount() == 1);
    });
    Count("find", [&] { EXPECT_NE(assets.GetObjectIdFromIdentifier(clip.Id()), -1); });
    Count("read deep", [&] { ReadDeep(database, clip.ObjectId()); });
    Count("read lazily", [&] { ReadLazy(database, clip.ObjectId()); });
    Count("save a group", [&] { EXPECT_TRUE(angles.Save(group, true)); });
    Count("delete a group", [&] { EXPECT_TRUE(angles.Delete(group)); });
    Count("delete", [&] { EXPECT_TRUE(assets.Delete(clip)); });
    Count("delete by server", [&] { EXPECT_TRUE(assets.DeleteByServerId(ServerOf(number))); });
    Count("clean up", [&] { EXPECT_TRUE(assets.CleanUpDependentData()); });
    return counts;
  };

  // Each clip is on a server of its own, and there is a group for every fourth.
  const auto fill = [this](int from, int end) {
    TransactionGuard transaction(database);
    for (int number = from; number < end; ++number) {
      MediaAsset clip = MakeClip("clip" + std::to_string(number));
      clip.DapOperatorMetadata().ServerId(ServerOf(number));
      ASSERT_TRUE(assets.Save(clip)) << log.Text();
      auto group = TestSupport::MakeGroup("group" + std::to_string(number), {clip.Id().Value()});
      ASSERT_TRUE(number % 4 != 0 || angles.Save(group, true)) << log.Text();
    }
    transaction.Commit();
  };
  fill(0, 100);
  // The first clean-up of a connection looks at everything.
  ASSERT_TRUE(assets.CleanUpDependentData());
  const auto early = stepsOfJobs(50);
  fill(100, 2000);
  ASSERT_TRUE(assets.CleanUpDependentData());
  const auto late = stepsOfJobs(1050);
  ExpectAsFew(late, early);
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
  using Ask = std::function<void(Query&)>;
  const std::pair<const char*, Ask> lists[] = {
      {"a match by rank",
       [](auto& query) { query.Match("MediaAssetFts", "goal").OrderByAsc("MediaAssetFts.rank"); }},
      {"a match by key",
       [](auto& query) { query.Match("MediaAssetFts", "goal").OrderByAsc("MediaAsset.key"); }},
      {"a match by date",
       [](auto& query) { query.Match("MediaAssetFts", "goal").OrderByDesc("creationDate"); }},
      {"of a beginning of a keyword",
       [](auto& query) {
         QuerySqlite begins;
         begins.BeginWith("keyword", "Cor");
         query.In("MediaAsset.key", "DapOperatorKeywords", "refDapOperatorMetadata", begins);
       }},
      {"of a server by date",
       [](auto& query) {
         QuerySqlite ofServer;
         ofServer.Equals("zuServerId", 7);
         query.In("MediaAsset.key", "DapOperatorMetadata", "refMediaAsset", ofServer)
             .OrderByDesc("creationDate");
       }},
  };
  MediaAssetRepository repository(database);
  const auto list = [&](const std::string& name, const Ask& ask) {
    Count(name, [&] {
      const auto query = database.NewQuery();
      ask(*query);
      const auto cursor = assets.OpenObjectCursor(query->Limit(50, 0));
      int count = 0;
      for (MediaAsset asset; cursor->Next(asset);)
        ++count;
      EXPECT_EQ(count, 50) << name;
      EXPECT_TRUE(query->IsEmpty() || cursor->GetTotalItemsCount() >= 50) << name;
    });
  };
  const auto measure = [&](bool isOfAll = true) {
    counts.clear();
    for (const std::string column :
         {"MediaAsset.key", "MediaAsset.name", "creationDate", "modificationDate"}) {
      list(column, [&](auto& query) { query.OrderByAsc(column); });
      list(column + ", last first", [&](auto& query) { query.OrderByDesc(column); });
    }
    if (!isOfAll) return counts;
    for (const auto& [name, ask] : lists)
      list(name, ask);
    Count("at a place", [&] {
      auto search = MediaAssetSearch().OnServer(ZuServerId(100)).OnPage(1).OnBank(2).OnRow(3);
      EXPECT_EQ(repository.Find(search.Limit(50)).total, 0);
    });
    for (const auto order :
         {MediaAssetOrder::Duration, MediaAssetOrder::Place, MediaAssetOrder::ModificationDate}) {
      for (const auto direction : {Direction::Ascending, Direction::Descending}) {
        Count(std::to_string(static_cast<int>(order)) + ' ' + std::to_string(static_cast<int>(direction)),
              [&] {
                auto search = MediaAssetSearch().OrderBy(order, direction).Limit(25);
                const auto first = repository.Find(search).assets;
                EXPECT_EQ(first.size() + repository.Find(search.After(first.back())).assets.size(), 50U);
              });
      }
    }
    return counts;
  };
  grow(100);
  const auto few = measure();
  grow(100000);
  ExpectAsFew(measure(), few);
  // A list without a condition goes by its index whatever numbers ANALYZE has left. What else that has spoilt, the
  // next opening mends.
  Run("ANALYZE");
  ExpectAsFew(measure(false), few);
  database.Create();
  ExpectAsFew(measure(), few);
}

}  // namespace Oru::DataModel::MediaAssets::Database
