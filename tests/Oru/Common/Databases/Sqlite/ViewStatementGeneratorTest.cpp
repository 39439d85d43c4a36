#include "Oru/Common/Databases/Sqlite/ViewStatementGenerator.h"

#include "support/DescribedTable.h"

#include <gtest/gtest.h>

namespace Oru::Common::Databases::Sqlite {

using TestSupport::NoteTable;
using TestSupport::NoteView;

TEST(ViewStatementGeneratorTest, AViewSelectsByAliasAndIsCreatedWithIt) {
  NoteView view;
  view.columns = {"a", "b", "c"};
  view.aliases = {"", "x"};
  view.joinClause = "FROM T JOIN U ON T.k == U.k";
  EXPECT_EQ(view.StatementGenerator().GenerateSelectStatement(), "SELECT a, x, c FROM Note");
  EXPECT_EQ(view.StatementGenerator().GenerateCreateStatement(),
            "CREATE VIEW IF NOT EXISTS Note AS SELECT a, b AS x, c FROM T JOIN U ON T.k == U.k");
  view.whereClause = "a > 1";
  view.groupByClause = "b";
  view.fromClause = "Other";
  EXPECT_EQ(view.StatementGenerator().GenerateSelectStatement(), "SELECT a, x, c FROM Other WHERE a > 1");
}

struct ClausesCase {
  const char *where, *groupBy, *keyword;
};

class ViewStatementGeneratorClauses : public testing::TestWithParam<ClausesCase> {};

TEST_P(ViewStatementGeneratorClauses, AFilterFollowsTheKeywordThatTheClausesNeedAndTwoBlanks) {
  NoteView view;
  view.whereClause = GetParam().where;
  view.groupByClause = GetParam().groupBy;
  view.SetSelect("S");
  const ViewStatementGenerator<TestSupport::Note>& generator = view.StatementGenerator();
  QuerySqlite query;
  EXPECT_EQ(generator.GenerateSelectStatement(query), "S");
  EXPECT_EQ(generator.GenerateSelectCountStatement(), "SELECT COUNT(*) FROM (S)");
  EXPECT_EQ(generator.GenerateSelectCountStatement(query), "SELECT COUNT(*) FROM (S)");
  query.OrderByAsc("a").OrderByDesc("b.c").Limit(3, 4);
  EXPECT_EQ(generator.GenerateSelectStatement(query), "S ORDER BY a ASC, b.c DESC LIMIT 3 OFFSET 4");
  query.Equals("a", 1);
  const std::string keyword = GetParam().keyword;
  EXPECT_EQ(generator.GenerateSelectStatement(query),
            "S " + keyword + "  a = 1 ORDER BY a ASC, b.c DESC LIMIT 3 OFFSET 4");
  EXPECT_EQ(generator.GenerateSelectStatement("other", query),
            "other " + keyword + "  a = 1 ORDER BY a ASC, b.c DESC LIMIT 3 OFFSET 4");
  EXPECT_EQ(generator.GenerateSelectCountStatement(query), "SELECT COUNT(*) FROM (S " + keyword + "  a = 1)");
}

INSTANTIATE_TEST_SUITE_P(All, ViewStatementGeneratorClauses,
                         testing::Values(ClausesCase{"", "", "WHERE"}, ClausesCase{"a > 1", "", "AND"},
                                         ClausesCase{"", "b", "HAVING"},
                                         ClausesCase{"a > 1", "b", "HAVING"}));

TEST(ViewStatementGeneratorTest, AQueryNeedsASelectText) {
  NoteView view;
  QuerySqlite query;
  EXPECT_THROW(view.StatementGenerator().GenerateSelectStatement(query), ArgumentException);
}

}  // namespace Oru::Common::Databases::Sqlite
