#include "Oru/Common/Databases/Sqlite/TableStatementGenerator.h"

#include "support/DescribedTable.h"

#include <gtest/gtest.h>

namespace Oru::Common::Databases::Sqlite {

using TestSupport::NoteTable;

struct TableTextsCase {
  const char* table;
  std::vector<std::string> columns;
  bool isAutoIncremented;
  const char *select, *insert, *update;
};

class TableStatementGeneratorTexts : public testing::TestWithParam<TableTextsCase> {};

TEST_P(TableStatementGeneratorTexts, AreExactToTheCharacter) {
  NoteTable table;
  table.tableName = GetParam().table;
  table.columns = GetParam().columns;
  table.Regenerate(GetParam().isAutoIncremented);
  EXPECT_EQ(table.GetSelectStatement(), GetParam().select);
  EXPECT_EQ(table.GetInsertStatement(), GetParam().insert);
  EXPECT_EQ(table.GetUpdateStatement(), GetParam().update);
  EXPECT_EQ(table.StatementGenerator().GenerateCreateStatement(), "");
}

INSTANTIATE_TEST_SUITE_P(
    All, TableStatementGeneratorTexts,
    testing::Values(
        TableTextsCase{"Track",
                       {"key", "id", "name"},
                       true,
                       "SELECT key, id, name FROM Track",
                       "INSERT INTO Track (id, name) VALUES (:id, :name);",
                       "UPDATE Track SET id = :id, name = :name WHERE key = :key"},
        TableTextsCase{
            "RelationAssetTrack",
            {"refMediaAsset", "refTrack"},
            false,
            "SELECT refMediaAsset, refTrack FROM RelationAssetTrack",
            "INSERT INTO RelationAssetTrack (refMediaAsset, refTrack) VALUES (:refMediaAsset, :refTrack);",
            "UPDATE RelationAssetTrack SET refMediaAsset = :refMediaAsset, refTrack = :refTrack WHERE "
            "refMediaAsset = :refMediaAsset"},
        TableTextsCase{"One",
                       {"k"},
                       false,
                       "SELECT k FROM One",
                       "INSERT INTO One (k) VALUES (:k);",
                       "UPDATE One SET k = :k WHERE k = :k"}));

TEST(TableStatementGeneratorTest, SelectColumnsAndClausesShapeTheSelectAlone) {
  NoteTable table;
  table.selectColumns = {"key", "upper(text)", "count(*)"};
  table.aliases = {"", "loud", "n"};
  table.fromClause = "Note JOIN More ON Note.key == More.key";
  table.whereClause = "weight > 1";
  table.groupByClause = "loud";
  table.Regenerate();
  EXPECT_EQ(table.GetSelectStatement(),
            "SELECT key, upper(text) AS loud, count(*) AS n FROM Note JOIN More ON Note.key == More.key "
            "WHERE weight > 1 GROUP BY loud");
  EXPECT_EQ(table.GetInsertStatement(), "INSERT INTO Note (text, weight) VALUES (:text, :weight);");
  EXPECT_EQ(table.GetUpdateStatement(), "UPDATE Note SET text = :text, weight = :weight WHERE key = :key");
}

}  // namespace Oru::Common::Databases::Sqlite
