// Opens a file through a VFS that a loadable extension of SQLite brings, and tells what saves and reads cost
// there.
//
//     scale_over_vfs CONNECTION CLIPS [EXTENSION]
//
// as scale_over_vfs "file:///pool:space/clips.db?vfs=ceph" 100 libcephsqlite.so
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <sqlite3.h>

#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <string>

namespace Assets = Oru::DataModel::MediaAssets;
namespace Sqlite = Oru::Common::Databases::Sqlite;
using Assets::Database::DataModelDatabase;

namespace {

// A VFS belongs to the process: whichever connection loads it, every later one may name it.
bool LoadExtension(const char* file) {
  sqlite3* connection = nullptr;
  char* error = nullptr;
  const bool loaded =
      sqlite3_open(":memory:", &connection) == SQLITE_OK &&
      sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 1, nullptr) == SQLITE_OK &&
      sqlite3_load_extension(connection, file, nullptr, &error) == SQLITE_OK;
  if (error != nullptr) std::cout << error << '\n';
  sqlite3_free(error);
  sqlite3_close(connection);
  return loaded;
}

bool Save(DataModelDatabase& database, const std::string& id) {
  Assets::MediaAsset clip(id);
  clip.Name("Clip " + id);
  return database.GetMediaAssetTable().Save(clip);
}

bool Read(DataModelDatabase& database, const std::string& id) {
  Assets::MediaAsset clip;
  Assets::Database::MediaAssetTable& clips = database.GetMediaAssetTable();
  return clips.GetObject(clips.GetObjectIdFromIdentifier(id), clip);
}

template <class Job>
bool Tell(const std::string& what, int rounds, Job job) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < rounds; ++i) {
    if (!job(i)) return false;
  }
  const std::chrono::duration<double, std::milli> span = std::chrono::steady_clock::now() - start;
  std::cout << what << ": " << span.count() / rounds << " ms a clip\n";
  return true;
}

bool Run(DataModelDatabase& database, int clips) {
  const auto id = [](const std::string& kind, int number) { return kind + std::to_string(number); };
  bool done = Tell("saved, a transaction each", clips, [&](int i) {
    Sqlite::TransactionGuard transaction(database);
    if (!Save(database, id("single-", i))) return false;
    transaction.Commit();
    return true;
  });
  {
    Sqlite::TransactionGuard transaction(database);
    done = done && Tell("saved, all in one", clips, [&](int i) { return Save(database, id("batched-", i)); });
    transaction.Commit();
  }
  done = done && Tell("read", clips, [&](int i) { return Read(database, id("single-", i)); });
  const Sqlite::ReadGuard reading(database);
  return done && Tell("read in one view", clips, [&](int i) { return Read(database, id("batched-", i)); });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3 || (argc > 3 && !LoadExtension(argv[3]))) return 2;
  const std::shared_ptr<std::ostream> log(&std::cout, [](std::ostream*) {});
  try {
    DataModelDatabase database(argv[1], log);
    database.Open();
    return Run(database, std::stoi(argv[2])) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::cout << failure.what() << '\n';
    return 1;
  }
}
