#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using TestSupport::Column;
using TestSupport::Value;

namespace {

// A statement with single blanks between its words, and none at the inner side of parentheses.
std::string WithSingleBlanks(const std::string& text) {
  std::istringstream words(text);
  std::string result, word;
  while (words >> word) {
    const bool isApart = !result.empty() && result.back() != '(' && word[0] != ')';
    result += (isApart ? " " : "") + word;
  }
  return result;
}

}  // namespace

class DataModelDatabaseScriptsTest : public testing::Test {
 protected:
  DataModelDatabaseScriptsTest() { database.Open(); }

  TestSupport::TemporaryDirectory directory;
  TestSupport::CapturedLog log;
  DataModelDatabase database{directory.File("clips.db"), log.Stream()};
};

// The tables with their columns and constraints, in order; the full-text index and the triggers that write
// it; the indexes.
TEST_F(DataModelDatabaseScriptsTest, TheFileHasTheSchemaThatStandsInTheFileBeside) {
  std::vector<std::string> expected, made;
  std::istringstream schema(TestSupport::FileContent(SCHEMA_FILE));
  for (std::string statement; std::getline(schema, statement, ';');) {
    // A trigger has semicolons of its own.
    if (statement.find("CREATE TRIGGER") != std::string::npos) {
      for (std::string more; statement.find("\nEND") == std::string::npos && std::getline(schema, more, ';');)
        statement += ";" + more;
    }
    if (const std::string text = WithSingleBlanks(statement); !text.empty()) expected.push_back(text);
  }
  // The last two conditions pass over the inner tables of the full-text index and those of SQLite.
  for (const std::string& sql :
       Column(database,
              "SELECT sql FROM sqlite_master WHERE sql IS NOT NULL AND name NOT LIKE "
              "'MediaAssetFts\\_%' ESCAPE '\\' AND name NOT LIKE 'sqlite%'"))
    made.push_back(WithSingleBlanks(sql));
  EXPECT_THAT(made, testing::UnorderedElementsAreArray(expected));
  EXPECT_EQ(Value(database, "SELECT count(*) FROM sqlite_temp_master"), "0");
  EXPECT_EQ(Value(database, "PRAGMA foreign_keys"), "1");
}

TEST_F(DataModelDatabaseScriptsTest, TheFullTextIndexFollowsItsTable) {
  const auto found = [&](const std::string& term) {
    return Value(database,
                 "SELECT group_concat(rowid) FROM MediaAssetFts WHERE MediaAssetFts MATCH '" + term + "'");
  };
  ASSERT_TRUE(
      database.ExecuteStatement("INSERT INTO MediaAsset(key, name, description) VALUES"
                                "(7, 'Opening', 'fireworks'), (8, 'Closing', 'fireworks');"
                                "UPDATE MediaAsset SET name = 'Second half' WHERE key = 7"));
  EXPECT_EQ(found("fireworks") + found("opening") + found("half"), "7,87");
  ASSERT_TRUE(database.ExecuteStatement("DELETE FROM MediaAsset WHERE key = 7"));
  EXPECT_EQ(found("fireworks"), "8");
}

TEST_F(DataModelDatabaseScriptsTest, EveryReadByOwnerGoesThroughAnIndex) {
  const auto keys = Column(database,
                           "SELECT m.name || ' WHERE ' || f.\"from\" FROM sqlite_master m, "
                           "pragma_foreign_key_list(m.name) f WHERE m.type = 'table'");
  EXPECT_EQ(keys.size(), 31U);
  for (const std::string& key : keys) {
    Common::Databases::Sqlite::CursorSqlite plan(database,
                                                 "EXPLAIN QUERY PLAN SELECT * FROM " + key + " = 5");
    ASSERT_TRUE(plan.Step()) << key;
    EXPECT_THAT(plan.GetString("detail"), testing::StartsWith("SEARCH")) << key;
  }
}

// SQLite counts the version up with each change of the schema, and each opening sets it back.
TEST_F(DataModelDatabaseScriptsTest, OpeningAgainChangesNothingButTheSchemaVersion) {
  EXPECT_GT(std::stoi(Value(database, "PRAGMA schema_version")), 2);
  ASSERT_TRUE(database.ExecuteStatement("INSERT INTO MediaAsset(id, name) VALUES ('a', 'kept')"));
  const std::string schema = "SELECT type || name || coalesce(sql, '') FROM sqlite_master ORDER BY rowid";
  const auto before = Column(database, schema);
  for (int i = 0; i < 2; ++i) {
    database.Close();
    database.Open();
    EXPECT_EQ(Value(database, "PRAGMA schema_version"), "2");
    EXPECT_EQ(Column(database, schema), before);
    EXPECT_EQ(Value(database, "SELECT name FROM MediaAsset"), "kept");
  }
  EXPECT_EQ(Value(database, "PRAGMA integrity_check"), "ok");
  EXPECT_EQ(log.Text(), "");
}

}  // namespace Oru::DataModel::MediaAssets::Database
