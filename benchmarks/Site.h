#pragma once

#include "Connection.h"
#include "Library.h"
#include "Rival.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace Oru::Benchmarks {

/// A file that the library keeps, and the library's side of the jobs on it.
class LibrarySite {
 public:
  explicit LibrarySite(const std::string& file = ":memory:")
      : database(file, nullptr), side(MakeLibrarySide(database)) {
    database.Open();
  }

  Side& Jobs() { return *side; }
  sqlite3* Handle() const { return database.Handle(); }
  DataModel::MediaAssets::Database::DataModelDatabase& Database() { return database; }

 private:
  DataModel::MediaAssets::Database::DataModelDatabase database;
  std::unique_ptr<Side> side;
};

/// A plain connection to a file with the library's tables, and the rival's side of the jobs on it.
class RivalSite {
 public:
  /// On tables of its own, in memory.
  RivalSite() : connection(":memory:") {
    CopyTables(LibrarySite().Handle(), connection);
    side = std::make_unique<Rival>(connection.Handle());
  }
  /// On a file that has the tables.
  explicit RivalSite(const std::string& file)
      : connection(file), side(std::make_unique<Rival>(connection.Handle())) {}

  Side& Jobs() { return *side; }
  sqlite3* Handle() const { return connection.Handle(); }

 private:
  // The tables that SQLite and the full-text index make for themselves come with the others.
  static void CopyTables(sqlite3* from, Connection& to) {
    Statement schema(
        from,
        "SELECT sql FROM sqlite_master WHERE sql IS NOT NULL AND name NOT LIKE 'sqlite\\_%' ESCAPE "
        "'\\' AND name NOT LIKE 'MediaAssetFts\\_%' ESCAPE '\\' ORDER BY rowid");
    for (Rows row(schema); row.Next();)
      to.Execute(row->Text(0));
  }

  Connection connection;
  std::unique_ptr<Side> side;
};

}  // namespace Oru::Benchmarks
