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

TEST(ViewStatementGeneratorTest, AFilterFollowsTheKeywordThatTheClausesNeedAndTwoBlanks) {
  const struct {
    const char *where, *groupBy;
    std::string keyword;
  } cases[] = {{"", "", "WHERE"}, {"a > 1", "", "AND"}, {"", "b", "HAVING"}, {"a > 1", "b", "HAVING"}};
  for (const auto& [where, groupBy, keyword] : cases) {
    NoteView view;
    view.whereClause = where;
    view.groupByClause = groupBy;
    view.SetSelect("S");
    const ViewStatementGenerator<TestSupport::Note>& generator = view.StatementGenerator();
    QuerySqlite query;
    EXPECT_EQ(generator.GenerateSelectStatement(query), "S");
    EXPECT_EQ(generator.GenerateSelectCountStatement(query), "SELECT COUNT(*) FROM (S)");
    query.OrderByAsc("a").OrderByDesc("b.c").Limit(3, 4);
    EXPECT_EQ(generator.GenerateSelectStatement(query), "S ORDER BY a ASC, b.c DESC LIMIT 3 OFFSET 4");
    query.Equals("a", 1);
    EXPECT_EQ(generator.GenerateSelectStatement("other", query),
              "other " + keyword + "  a = 1 ORDER BY a ASC, b.c DESC LIMIT 3 OFFSET 4");
    EXPECT_EQ(generator.GenerateSelectCountStatement(query),
              "SELECT COUNT(*) FROM (S " + keyword + "  a = 1)");
  }
}

TEST(ViewStatementGeneratorTest, AQueryNeedsASelectText) {
  NoteView view;
  QuerySqlite query;
  EXPECT_THROW(view.StatementGenerator().GenerateSelectStatement(query), ArgumentException);
}

}  // namespace Oru::Common::Databases::Sqlite
