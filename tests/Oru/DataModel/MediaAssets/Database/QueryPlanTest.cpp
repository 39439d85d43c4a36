#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"
#include "support/StoredGroups.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using TestSupport::MakeClip;
using TestSupport::ReadDeep;
using TestSupport::ReadLazy;

namespace {

// Those that the full-text index runs for itself: what they cost depends on when it merges its words.
bool IsOfFullTextIndex(const std::string& text) {
  return text.find("MediaAssetFts_") != std::string::npos;
}

std::shared_ptr<AnglesDapOperatorMetadataProfile> GroupIdentity() {
  return std::make_shared<AnglesDapOperatorMetadataProfile>(DapId(ZuServerId(110), 1, 2, 3));
}

BusinessEntityModel::Edits::Sequence MakeSequence(const std::string& id) {
  BusinessEntityModel::Edits::Sequence sequence{BusinessEntityModel::Edits::SequenceId(id)};
  TestSupport::SetOneEntry(sequence.Metadata(), "of the sequence");
  auto profile = std::make_shared<BusinessEntityModel::Edits::DapOperatorMetadataProfile>();
  profile->ServerId(ZuServerId(110));
  sequence.Metadata().Set(std::move(profile));
  return sequence;
}

}  // namespace

// Sees every statement that runs on the connection, and counts the steps that it takes.
class QueryPlanTest : public TestSupport::StoredGroups {
 public:
  ~QueryPlanTest() override { sqlite3_trace_v2(database.Handle(), 0, nullptr, nullptr); }

 protected:
  QueryPlanTest() {
    sqlite3_trace_v2(database.Handle(), SQLITE_TRACE_STMT | SQLITE_TRACE_PROFILE, &QueryPlanTest::Trace,
                     this);
  }

  // The steps of SQLite's machine, cascades and triggers included.
  template <class Job>
  int64_t StepsOf(Job job) {
    steps = 0;
    job();
    return steps;
  }

  // The lines of a plan that walk a table.
  std::vector<std::string> ScansOf(const std::string& text) {
    std::vector<std::string> scans;
    sqlite3_stmt* plan = nullptr;
    const std::string explain = "EXPLAIN QUERY PLAN " + text;
    if (sqlite3_prepare_v2(database.Handle(), explain.c_str(), -1, &plan, nullptr) != SQLITE_OK) return scans;
    while (sqlite3_step(plan) == SQLITE_ROW) {
      const std::string line = reinterpret_cast<const char*>(sqlite3_column_text(plan, 3));
      if (line.rfind("SCAN ", 0) == 0) scans.push_back(line);
    }
    sqlite3_finalize(plan);
    return scans;
  }

  // Every save, look-up and read of clips and their groups.
  void SaveAndReadClips() {
    for (int round = 0; round < 2; ++round) {
      for (const char* id : {"one", "two", "three"}) {
        MediaAsset clip = MakeClip(id);
        ASSERT_TRUE(assets.Save(clip, true) && assets.Save(clip, true));
      }
      auto group = Group("group", {{"one", "wide"}, {"two", "close"}});
      group.Metadata().Set(GroupIdentity());
      ASSERT_TRUE(angles.Save(group, true) && angles.Save(group, true));
    }
    const int64_t key = assets.GetObjectIdFromIdentifier(MediaAssetId("one"));
    ReadDeep(database, key);
    ReadLazy(database, key);
    EXPECT_TRUE(assets.Exists(key));
    AnglesMediaAssetGroup group;
    ASSERT_TRUE(angles.GetObject(angles.GetObjectIdFromIdentifier(MediaAssetGroupId("group")), group));
    groups.ReadAnglesMediaAssetGroupItems(group, false);
    groups.ReadAnglesMediaAssetGroupItems(group, true);
    angles.ReadDapOperatorProfileTable(group);
  }

  void SaveReadAndDeleteEdits() {
    namespace Edits = BusinessEntityModel::Edits;
    auto& edits = database.GetEditTable();
    auto& sequences = database.GetSequenceTable();
    for (int round = 0; round < 2; ++round) {
      Edits::Edit edit{Edits::EditId("edit")};
      TestSupport::SetOneEntry(edit.Metadata(), "of the edit");
      ASSERT_TRUE(edits.Save(edit, true));
      for (const char* id : {"first", "second"}) {
        Edits::Sequence sequence = MakeSequence(id);
        Edits::Database::SequenceEncapsulated row(sequence);
        row.editFk = edit.ObjectId();
        ASSERT_TRUE(sequences.Save(row, true));
        sequences.ReadMetadata(sequence);
        sequences.ReadDapOperatorProfileTable(sequence);
      }
      edits.ReadMetadata(edit);
      EXPECT_TRUE(sequences.Delete(Edits::SequenceId("first")) &&
                  sequences.DeleteByServerId(ZuServerId(110)) && edits.Delete(edit));
    }
  }

  void DeleteClips() {
    MediaAsset clip;
    ASSERT_TRUE(assets.GetObject(assets.GetObjectIdFromIdentifier(MediaAssetId("one")), clip));
    EXPECT_TRUE(assets.Delete(clip));
    EXPECT_TRUE(assets.Delete(assets.GetObjectIdFromIdentifier(MediaAssetId("two"))));
    EXPECT_TRUE(angles.Delete(MediaAssetGroupId("group")));
    EXPECT_TRUE(assets.DeleteByServerId(ZuServerId(110)));
  }

  // Clips up to a number of them, each on a server of its own, and a group for every fourth.
  void FillUpTo(int count) {
    database.BeginTransaction();
    for (; filled < count; ++filled) {
      MediaAsset clip = MakeClip("clip" + std::to_string(filled));
      clip.DapOperatorMetadata().ServerId(ServerOf(filled));
      ASSERT_TRUE(assets.Save(clip)) << log.Text();
      if (filled % 4 != 0) continue;
      auto group = Group("group" + std::to_string(filled), {{clip.Id().Value(), "wide"}});
      ASSERT_TRUE(angles.Save(group, true)) << log.Text();
    }
    database.EndTransaction(true);
  }
  static ZuServerId ServerOf(int number) { return ZuServerId(1000 + 10 * number); }

  std::set<std::string> texts;

 private:
  static int Trace(unsigned event, void* context, void* statement, void*) {
    auto& self = *static_cast<QueryPlanTest*>(context);
    auto* running = static_cast<sqlite3_stmt*>(statement);
    const std::string text = sqlite3_sql(running);
    if (event == SQLITE_TRACE_STMT) {
      self.texts.insert(text);
    } else if (!IsOfFullTextIndex(text)) {
      self.steps += sqlite3_stmt_status(running, SQLITE_STMTSTATUS_VM_STEP, 1);
    }
    return 0;
  }

  int64_t steps = 0;
  int filled = 0;
};

TEST_F(QueryPlanTest, NoQueryWalksATableWhereItCanSearchByKey) {
  SaveAndReadClips();
  SaveReadAndDeleteEdits();
  DeleteClips();

  // What may be walked: the notes of what has changed since the last clean-up, which are no longer than that;
  // a constant row; the full-text index, by the row that the other side of the join gives.
  const std::regex allowed(
      "SCAN (temp\\.)?(Unlinked\\w+|Known\\w+|sqlite_master|CONSTANT ROW|\\d+ CONSTANT ROWS"
      "|MediaAssetFts VIRTUAL TABLE INDEX 0:=.*)");
  // The first clean-up of a connection knows nothing yet, and has to look at all shared rows.
  const std::regex looksAtAll(
      "DELETE FROM (MediaResource|Track|MediaAssetGroup) WHERE NOT \\(key IN \\(SELECT .*\\)\\)");
  int lookingAtAll = 0;
  for (const std::string& text : texts) {
    if (std::regex_match(text, looksAtAll)) {
      ++lookingAtAll;
      continue;
    }
    for (const std::string& scan : ScansOf(text))
      EXPECT_TRUE(std::regex_match(scan, allowed)) << scan << "\n  in: " << text;
  }
  EXPECT_EQ(lookingAtAll, 3);
  // Each table is written, read by its owner and cleared by it.
  EXPECT_GT(texts.size(), 100U);
}

TEST_F(QueryPlanTest, ASearchWalksWhatTheFullTextIndexFinds) {
  FillUpTo(50);
  texts.clear();
  for (const char* order : {"MediaAssetFts.rank", "MediaAsset.name"}) {
    const auto query = database.NewQuery();
    query->Match("MediaAssetFts", "first").Equals("assetType", 0).OrderByAsc(order);
    const auto cursor = assets.OpenObjectCursor(*query);
    cursor->Next();
    cursor->GetTotalItemsCount();
  }
  int searches = 0;
  for (const std::string& text : texts) {
    if (text.find(" MATCH ") == std::string::npos) continue;
    ++searches;
    const std::vector<std::string> scans = ScansOf(text);
    ASSERT_EQ(scans.size(), 1U) << text;
    EXPECT_TRUE(std::regex_match(scans[0], std::regex("SCAN MediaAssetFts VIRTUAL TABLE INDEX \\d+:M2")))
        << scans[0] << "\n  in: " << text;
  }
  // The count is the same whatever the order.
  EXPECT_EQ(searches, 3);
}

TEST_F(QueryPlanTest, TheStepsOfAJobDoNotGrowWithTheFile) {
  const auto stepsOfJobs = [this](int number) {
    std::vector<std::pair<std::string, int64_t>> jobs;
    const auto count = [&](const std::string& name, auto job) { jobs.emplace_back(name, StepsOf(job)); };
    MediaAsset clip = MakeClip("another");
    clip.Name("sought");
    auto group = Group("another group", {{"another", "wide"}, {"a", "close"}});
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
        "INSERT INTO DapOperatorMetadata(refMediaAsset, zuServerId, dapIdPage) SELECT key, 100 + key % 10, "
        "key % 9 FROM MediaAsset "
        "WHERE key NOT IN (SELECT refMediaAsset FROM DapOperatorMetadata);");
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
  };
  const auto measure = [&] {
    std::vector<int64_t> all;
    for (const auto& [name, ask] : lists) {
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
      }));
    }
    return all;
  };
  grow(100);
  const auto few = measure();
  grow(100000);
  for (const bool isAnalysed : {false, true}) {
    // What somebody's ANALYZE has spoilt, the next opening mends.
    if (isAnalysed) {
      Run("ANALYZE");
      database.Create();
    }
    const auto many = measure();
    for (std::size_t i = 0; i < few.size(); ++i) {
      EXPECT_GT(few[i], 0) << lists[i].first;
      EXPECT_LE(many[i], few[i] * 11 / 10) << lists[i].first << ", among a hundred " << few[i];
    }
  }
}

}  // namespace Oru::DataModel::MediaAssets::Database
