// Opens a file through a VFS that an extension of SQLite brings, and prints what commits and pages cost there.
//
//     scale_over_vfs CONNECTION CLIPS [EXTENSION]
//
// as scale_over_vfs "file:///pool:space/clips.db?vfs=ceph" 100 libcephsqlite.so
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

namespace Assets = Oru::DataModel::MediaAssets;
namespace Sqlite = Oru::Common::Databases::Sqlite;
using Assets::Database::DataModelDatabase;
using Assets::Database::MediaAssetParts;
using Assets::Database::MediaAssetRepository;
using Assets::Database::MediaAssetSearch;

namespace {

void Put(MediaAssetRepository& repository, const std::string& id) {
  Assets::MediaAsset clip{Assets::MediaAssetId(id)};
  clip.Name("Clip " + id);
  auto resource = std::make_shared<Assets::MediaResource>(Assets::MediaResourceId("resource of " + id));
  resource->Adopt(std::make_unique<Assets::Stream>(Assets::StreamId("stream of " + id)));
  clip.MediaResources().Insert(resource);
  repository.Put(clip);
}

template <class Job>
void Print(const std::string& what, int rounds, Job job) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < rounds; ++i)
    job(i);
  const std::chrono::duration<double, std::milli> span = std::chrono::steady_clock::now() - start;
  std::cout << what << ": " << span.count() / rounds << " ms, " << 1000 * rounds / span.count() << " a second"
            << std::endl;
}

void Run(DataModelDatabase& database, int clips) {
  constexpr int rounds = 5;
  MediaAssetRepository repository(database);
  Print("a clip and its commit", clips, [&](int i) { Put(repository, "single-" + std::to_string(i)); });
  Print("a commit of 50 clips", rounds, [&](int i) {
    Sqlite::TransactionGuard transaction(database);
    for (int j = 0; j < 50; ++j)
      Put(repository, "batched-" + std::to_string(50 * i + j));
    transaction.Commit();
  });
  for (const bool isGuarded : {false, true}) {
    const std::string where = isGuarded ? ", in a ReadGuard" : ", bare";
    std::optional<Sqlite::ReadGuard> reading;
    if (isGuarded) reading.emplace(database);
    const auto page = MediaAssetSearch().Limit(50);
    Print("a list page of 50" + where, rounds, [&](int) { repository.Find(page); });
    Print("a deep page of 50" + where, rounds, [&](int) { repository.Find(page, MediaAssetParts::All); });
    Print("50 clips by identifier" + where, rounds, [&](int) {
      for (int i = 0; i < 50; ++i)
        repository.Find(Assets::MediaAssetId("batched-" + std::to_string(i)));
    });
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const std::shared_ptr<std::ostream> log(&std::cout, [](std::ostream*) {});
  try {
    if (argc > 3) DataModelDatabase::LoadVfs(argv[3]);
    DataModelDatabase database(argv[1], log);
    database.Open();
    Run(database, std::stoi(argv[2]));
  } catch (const std::exception& failure) {
    std::cout << failure.what() << '\n';
    return 1;
  }
}
