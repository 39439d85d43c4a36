#include "Oru/Common/Databases/Sqlite/TableStatementGenerator.h"

#include "support/DescribedTable.h"

#include <gtest/gtest.h>

namespace Oru::Common::Databases::Sqlite {

using TestSupport::NoteTable;

TEST(TableStatementGeneratorTest, TextsAreExactToTheCharacter) {
  const struct {
    const char* table;
    std::vector<std::string> columns;
    bool isAutoIncremented;
    const char *select, *insert, *update;
  } cases[] = {
      {"Track",
       {"key", "id", "name"},
       true,
       "SELECT key, id, name FROM Track",
       "INSERT INTO Track (id, name) VALUES (:id, :name);",
       "UPDATE Track SET id = :id, name = :name WHERE key = :key"},
      {"Link",
       {"refA", "refB"},
       false,
       "SELECT refA, refB FROM Link",
       "INSERT INTO Link (refA, refB) VALUES (:refA, :refB);",
       "UPDATE Link SET refA = :refA, refB = :refB WHERE refA = :refA"},
      {"One",
       {"k"},
       false,
       "SELECT k FROM One",
       "INSERT INTO One (k) VALUES (:k);",
       "UPDATE One SET k = :k WHERE k = :k"},
  };
  for (const auto& [name, columns, isAutoIncremented, select, insert, update] : cases) {
    NoteTable table;
    table.tableName = name;
    table.columns = columns;
    table.Regenerate(isAutoIncremented);
    EXPECT_EQ(table.GetSelectStatement(), select);
    EXPECT_EQ(table.GetInsertStatement(), insert);
    EXPECT_EQ(table.GetUpdateStatement(), update);
    EXPECT_EQ(table.StatementGenerator().GenerateCreateStatement(), "");
  }
}

}  // namespace Oru::Common::Databases::Sqlite
