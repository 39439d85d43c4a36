#pragma once

#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "support/OpenSqlite.h"

namespace Oru::TestSupport {

/// A test with an open database in memory, a log to read back, and plain SQL beside the tables.
class OpenDatabase : public testing::Test {
 protected:
  OpenDatabase() { database.Open(); }
  void TearDown() override { ExpectNoReadUnderWay(database); }

  void Run(const std::string& sql) { ASSERT_TRUE(database.ExecuteStatement(sql)) << log.Text(); }
  std::string Value(const std::string& select) { return TestSupport::Value(database, select); }
  int Count(const std::string& tableAndCondition) {
    return std::stoi(Value("SELECT count(*) FROM " + tableAndCondition));
  }

  CapturedLog log;
  DataModel::MediaAssets::Database::DataModelDatabase database{":memory:", log.Stream()};
  DataModel::MediaAssets::Database::MediaAssetTable& assets = database.GetMediaAssetTable();
};

}  // namespace Oru::TestSupport
