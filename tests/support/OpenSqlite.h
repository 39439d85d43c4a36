#pragma once

#include "support/Prelude.h"

namespace Oru::TestSupport {

/// A read that has returned must not keep another connection from writing.
inline void ExpectNoReadUnderWay(const Common::Databases::Sqlite::DatabaseSqlite& db) {
  sqlite3_stmt* kept = nullptr;
  while (db.IsOpen() && (kept = sqlite3_next_stmt(db.Handle(), kept)))
    EXPECT_EQ(sqlite3_stmt_busy(kept), 0) << sqlite3_sql(kept);
}

/// A test with an open database in a file of its own, a log to read back, and plain SQL beside the classes under test.
class OpenSqlite : public testing::Test {
 protected:
  OpenSqlite() { db.Open(); }
  void TearDown() override { ExpectNoReadUnderWay(db); }

  void Run(const std::string& sql) { ASSERT_TRUE(db.ExecuteStatement(sql)) << sql << ": " << log.Text(); }

  const TemporaryDirectory directory;
  const std::string path = directory.File("clips.db");
  CapturedLog log;
  Common::Databases::Sqlite::DatabaseSqlite db{"file:" + path + "?_busy_timeout=50&_synchronous=off",
                                               log.Stream()};
};

}  // namespace Oru::TestSupport
