// Reader processes and a writer share one file for some seconds; prints how many clips each of them read or
// saved.
//
//     scale_sharing READERS WRITERS SECONDS FILE [READ_OPTIONS [WRITE_OPTIONS]]
//
// Options are those of a connection text, as "_journal_mode=wal&_synchronous=normal" or
// "mode=ro&immutable=1". A file that isn't there is filled with 1,000 clips first. A read is one clip with
// its resources and metadata, inside a `ReadGuard`; a save is one new clip, inside a `TransactionGuard`.
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace Assets = Oru::DataModel::MediaAssets;
namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
namespace Sqlite = Oru::Common::Databases::Sqlite;
using Assets::Database::DataModelDatabase;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int stored = 1000;

void Save(DataModelDatabase& database, const std::string& id) {
  Assets::MediaAsset clip(id);
  clip.Name("Clip " + id);
  auto weather = std::make_shared<BaseTypes::GenericMetadataProfile>("acme.weather");
  weather->Set("sky", "clear");
  clip.Metadata().Set(weather);
  auto resource = std::make_shared<Assets::MediaResource>("resource of " + id);
  resource->Adopt(std::make_unique<Assets::Stream>("stream of " + id));
  clip.MediaResources().Insert(resource);
  if (!database.GetMediaAssetTable().Save(clip)) throw std::runtime_error("a clip was refused");
}

void Read(DataModelDatabase& database, const std::string& id) {
  Assets::Database::MediaAssetTable& clips = database.GetMediaAssetTable();
  const Sqlite::ReadGuard reading(database);
  Assets::MediaAsset clip;
  if (!clips.GetObject(clips.GetObjectIdFromIdentifier(id), clip))
    throw std::runtime_error("a clip is missing");
  clips.ReadMetadata(clip);
  clips.ReadMediaResources(clip);
}

std::string Connection(const std::string& file, const std::string& options) {
  return std::string("file:").append(file).append("?").append(options);
}

// Runs `job(database, round)` until the time is over.
template <class Job>
int Count(const std::string& file, const std::string& options, int seconds, Job job) {
  DataModelDatabase database(Connection(file, options), nullptr);
  database.Open();
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  int rounds = 0;
  while (Clock::now() < end)
    job(database, rounds++);
  return rounds;
}

// Runs a job in a process of its own, which reports what it counted, or how it failed, in one line.
template <class Job>
void Start(const std::string& name, int seconds, Job job) {
  if (fork() != 0) return;
  int status = 0;
  std::string line;
  try {
    line = name + ": " + std::to_string(job() / seconds) + " clips a second\n";
  } catch (const std::exception& failure) {
    line = name + ": failed, " + failure.what() + "\n";
    status = 1;
  }
  std::cout << line << std::flush;
  _exit(status);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) return 2;
  const int readers = std::stoi(argv[1]);
  const int writers = std::stoi(argv[2]);
  const int seconds = std::stoi(argv[3]);
  const std::string file = argv[4];
  const std::string readOptions = argc > 5 ? argv[5] : "";
  const std::string writeOptions = argc > 6 ? argv[6] : readOptions;

  if (!std::filesystem::exists(file)) {
    DataModelDatabase database(Connection(file, writeOptions), nullptr);
    database.Open();
    Sqlite::TransactionGuard transaction(database);
    for (int i = 0; i < stored; ++i)
      Save(database, "stored-" + std::to_string(i));
    transaction.Commit();
  }

  for (int i = 0; i < readers; ++i) {
    Start("reader " + std::to_string(i + 1), seconds, [&] {
      return Count(file, readOptions, seconds, [&](DataModelDatabase& database, int round) {
        Read(database, "stored-" + std::to_string((round * 7 + i) % stored));
      });
    });
  }
  for (int i = 0; i < writers; ++i) {
    Start("writer " + std::to_string(i + 1), seconds, [&] {
      return Count(file, writeOptions, seconds, [&](DataModelDatabase& database, int round) {
        Sqlite::TransactionGuard transaction(database);
        Save(database, "new-" + std::to_string(getpid()) + "-" + std::to_string(round));
        transaction.Commit();
      });
    });
  }
  int failures = 0;
  for (int status = 0; wait(&status) > 0;) {
    if (status != 0) ++failures;
  }
  return failures == 0 ? 0 : 1;
}
