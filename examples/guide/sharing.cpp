// Two connections to one file: what a reader sees while the other writes, and what a writer waits for.
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

namespace Assets = Oru::DataModel::MediaAssets;
using Assets::Database::DataModelDatabase;
using Oru::Common::Databases::InvalidOperationException;
using Oru::Common::Databases::Sqlite::ReadGuard;
using Oru::Common::Databases::Sqlite::TransactionGuard;

namespace {

bool Save(DataModelDatabase& database, const char* id) {
  Assets::MediaAsset clip(id);
  return database.GetMediaAssetTable().Save(clip);
}

int Count(DataModelDatabase& database) {
  const auto query = database.NewQuery();
  return database.GetMediaAssetTable().OpenObjectCursor(*query)->GetTotalItemsCount();
}

bool SeeOneState() {
  DataModelDatabase reader("file:wal.db?_journal_mode=wal", nullptr);
  reader.Open();
  DataModelDatabase writer("file:wal.db", nullptr);
  writer.Open();
  if (!Save(writer, "clip-1")) return false;
  {
    const ReadGuard reading(reader);
    std::cout << "before: " << Count(reader);
    if (!Save(writer, "clip-2")) return false;
    std::cout << ", inside the guard: " << Count(reader);
  }
  std::cout << ", after it: " << Count(reader) << '\n';
  if (reader.HasChanged()) std::cout << "another has committed: read the list again\n";
  return true;
}

bool WaitForReaders() {
  DataModelDatabase reader("file:rollback.db?_journal_mode=delete", nullptr);
  reader.Open();
  DataModelDatabase writer("file:rollback.db?_busy_timeout=50", nullptr);
  writer.Open();
  auto reading = std::make_unique<ReadGuard>(reader);
  Count(reader);
  TransactionGuard transaction(writer);
  if (!Save(writer, "clip-1")) return false;
  try {
    transaction.Commit();
  } catch (const InvalidOperationException&) {
    std::cout << "refused while the other reads\n";
  }
  reading.reset();
  transaction.Commit();
  std::cout << "committed at the second try: " << Count(reader) << '\n';
  return true;
}

// A file in WAL mode is one file again when its last connection is closed.
bool Move() {
  DataModelDatabase database("file:old.db?_journal_mode=wal", nullptr);
  database.Open();
  if (!Save(database, "clip-1")) return false;
  database.Close();
  std::cout << "a log stays: " << std::filesystem::exists("old.db-wal") << '\n';
  std::filesystem::copy_file("old.db", "moved.db");

  DataModelDatabase moved("moved.db", nullptr);
  moved.Open();
  std::cout << "clips moved: " << Count(moved) << '\n';
  return true;
}

}  // namespace

int main() {
  if (!SeeOneState() || !WaitForReaders() || !Move()) return 1;
}
