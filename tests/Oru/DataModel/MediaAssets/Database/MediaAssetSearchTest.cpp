#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/Common/Databases/Sqlite/RawReadSqlite.h"

#include "support/OpenDatabase.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::Query;
using Common::Databases::Sqlite::FullTextExpression;

namespace {

constexpr char Index[] = "MediaAssetFts";

}  // namespace

class MediaAssetSearchTest : public TestSupport::OpenDatabase {
 protected:
  MediaAssetSearchTest() {
    Save("a", "MATCH_CAM-1", "Kick-off, and a goal after a long and rather dull first half");
    Save("b", "Goal", "The goal");
    Save("c", "MATCH_CAM-2", "A goal");
    Save("d", "Interview", "");
  }

  void Save(const std::string& id, const std::string& name, const std::string& description) {
    MediaAsset clip(id);
    clip.Name(name);
    clip.Description(description);
    ASSERT_TRUE(assets.Save(clip)) << log.Text();
  }

  // The identifiers of the assets that a query finds, in its order. The total must agree.
  std::string Found(Query& query, bool isLimited = false) {
    std::string found;
    const auto cursor = assets.OpenObjectCursor(query);
    for (MediaAsset clip; cursor->Next(clip);)
      found += clip.Id().Value();
    EXPECT_TRUE(isLimited || cursor->GetTotalItemsCount() == static_cast<int>(found.size()));
    return found;
  }

  std::unique_ptr<Query> Matching(const std::string& text) {
    auto query = database.NewQuery();
    query->Match(Index, FullTextExpression::AllWords(text));
    return query;
  }

  // A match in a selection of its own.
  std::unique_ptr<Query> Among(const std::string& text) {
    auto query = database.NewQuery();
    query->In("key", Index, "rowid", *Matching(text));
    return query;
  }
};

TEST_F(MediaAssetSearchTest, CombinesWithOtherConditionsOrdersAndLimits) {
  EXPECT_EQ(Found(Matching("goal")->OrderByAsc("id")), "abc");
  EXPECT_EQ(Found(Matching("goal")->OrderByAsc("MediaAssetFts.rank")), "bca");
  EXPECT_EQ(Found(Matching("goal")->OrderByDesc("MediaAssetFts.rank")), "acb");
  EXPECT_EQ(Found(Matching("goal")->OrderByAsc("MediaAssetFts.rank").Limit(1, 1), true), "c");
  EXPECT_EQ(assets.OpenObjectCursor(Matching("goal")->Limit(1, 1))->GetTotalItemsCount(), 3);
  EXPECT_EQ(Found(*Matching("MATCH_CAM-1")), "a");
  EXPECT_EQ(Found(*Matching("match cam")), "ac");
  EXPECT_EQ(Found(*Matching("")), "");

  const auto isC = database.NewQuery();
  isC->Equals("id", "c");
  EXPECT_EQ(Found(Matching("goal")->Equals("id", "b")), "b");
  EXPECT_EQ(Found(Matching("goal")->Match(Index, "match")), "ac");
  EXPECT_EQ(Found(Matching("goal")->And(*Matching("match")).OrderByDesc("id")), "ca");
  EXPECT_EQ(Found(Matching("goal")->And(*isC)), "c");
  EXPECT_EQ(Found(Matching("goal")->Not(*isC).OrderByAsc("id")), "ab");
  EXPECT_EQ(Found(Matching("goal")->In("id", std::vector<std::string>{"d", "b"})), "b");
  EXPECT_EQ(Found(Matching("goal")->Contains("MediaAsset.name", "cam").OrderByAsc("id")), "ac");

  EXPECT_EQ(Found(Among("match")->Or(*Among("interview")).OrderByAsc("id")), "acd");
  EXPECT_EQ(Found(database.NewQuery()->Not(*Among("goal"))), "d");
  EXPECT_EQ(Found(isC->Or(*Among("interview")).OrderByAsc("id")), "cd");
  EXPECT_EQ(log.Text(), "");
}

TEST_F(MediaAssetSearchTest, ARawCursorMarksWhatMatched) {
  const auto marked = [this](const std::string& expression) {
    std::string texts;
    const auto query = database.NewQuery();
    query->Match(Index, expression).OrderByAsc("id");
    Common::Databases::Sqlite::RawReadSqlite row;
    for (const auto cursor = assets.OpenRawCursor(*query); cursor->Next(row);)
      texts +=
          row.GetString("id") + ":" + row.GetString("nameFts") + ":" + row.GetString("descriptionFts") + ";";
    return texts;
  };
  EXPECT_EQ(marked(FullTextExpression::AnyWord("THE interview")),
            "b:Goal:<b>The</b> goal;d:<b>Interview</b>:;");
  EXPECT_EQ(marked(FullTextExpression::AllWordsAsTyped("a goal cam-2")),
            "c:MATCH_<b>CAM-2</b>:<b>A</b> <b>goal</b>;");
  EXPECT_EQ(marked(FullTextExpression::InColumn("name", FullTextExpression::Phrase("goal"))),
            "b:<b>Goal</b>:The goal;");
}

}  // namespace Oru::DataModel::MediaAssets::Database
