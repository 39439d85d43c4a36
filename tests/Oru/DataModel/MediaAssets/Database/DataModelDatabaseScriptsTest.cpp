#include "support/DatabasePrelude.h"
#include "support/StoredHash.h"

namespace Oru::DataModel::MediaAssets::Database {

class DataModelDatabaseScriptsTest : public TestSupport::OpenDatabase {};

// The tables with their columns and constraints, the full-text index with its triggers, the indexes: all of it is part
// of the format of the file, and so is each change. Without the inner tables of the full-text index and SQLite's own.
TEST_F(DataModelDatabaseScriptsTest, TheSchemaIsThatOfStoredFiles) {
  std::string schema;
  for (const std::string& sql :
       TestSupport::Column(database,
                           "SELECT sql || char(10) FROM sqlite_master WHERE sql IS NOT NULL AND name NOT"
                           " LIKE 'MediaAssetFts\\_%' ESCAPE '\\' AND name NOT LIKE 'sqlite%'"))
    schema += sql;
  EXPECT_EQ(TestSupport::StoredHash(schema), 16119954110362503358U) << schema;
  EXPECT_EQ(Value("SELECT count(*) FROM sqlite_temp_master"), "0");
  EXPECT_EQ(Value("PRAGMA foreign_keys"), "1");
}

TEST_F(DataModelDatabaseScriptsTest, EveryReadByOwnerGoesThroughAnIndex) {
  const auto keys = TestSupport::Column(database,
                                        "SELECT m.name || ' WHERE ' || f.\"from\" FROM sqlite_master m, "
                                        "pragma_foreign_key_list(m.name) f WHERE m.type = 'table'");
  EXPECT_FALSE(keys.empty());
  for (const std::string& key : keys) {
    CursorSqlite plan(database, "EXPLAIN QUERY PLAN SELECT * FROM " + key + " = 5");
    ASSERT_TRUE(plan.Step()) << key;
    EXPECT_THAT(plan.GetString("detail"), testing::StartsWith("SEARCH")) << key;
  }
}

}  // namespace Oru::DataModel::MediaAssets::Database
