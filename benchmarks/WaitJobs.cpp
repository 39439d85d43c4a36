#include "WaitJobs.h"

#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "Clock.h"
#include "FileJobs.h"
#include "SampleClips.h"
#include "ScratchFile.h"
#include "Site.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace Oru::Benchmarks {

using Common::Databases::Sqlite::DatabaseSqlite;
using Common::Databases::Sqlite::QuerySqlite;
using Common::Databases::Sqlite::ReadGuard;
using DataModel::MediaAssets::Database::DataModelDatabase;
using DataModel::MediaAssets::Database::MediaAssetRepository;
using DataModel::MediaAssets::Database::MediaAssetTable;
using DataModel::MediaAssets::Database::Protection;
using DataModel::MediaAssets::Database::RemoveOutcome;

namespace {

const std::string Durable = "_journal_mode=wal&_synchronous=normal";

/// The median of several runs in milliseconds of elapsed time. A run gives the time of what counts of it.
template <class Run>
double MedianOf(int runs, Run run) {
  std::vector<double> costs;
  costs.reserve(static_cast<std::size_t>(runs));
  for (int i = 0; i < runs; ++i)
    costs.push_back(run(i) * 1e3);
  std::sort(costs.begin(), costs.end());
  return costs[costs.size() / 2];
}

template <class Run>
double SecondsOf(Run run) {
  const double start = ElapsedSeconds();
  run();
  return ElapsedSeconds() - start;
}

/// A JSON array of objects, one a line.
class JsonRows {
 public:
  explicit JsonRows(std::ostream& stream) : out(stream) {}
  JsonRows(const JsonRows&) = delete;
  JsonRows& operator=(const JsonRows&) = delete;
  ~JsonRows() { out << "\n]\n"; }

  std::ostream& Next() {
    out << separator;
    separator = ",\n";
    return out;
  }

 private:
  std::ostream& out;
  const char* separator = "[\n";
};

double OpeningSeconds(const std::string& uri) {
  return SecondsOf([&] { LibrarySite opening(uri); });
}

/// The first deletion of a new connection, which is rolled back.
/// @param remove  deletes a clip of a database, and gives whether it did
template <class Delete>
double FirstDeletionSeconds(const std::string& uri, Delete remove) {
  LibrarySite site(uri);
  auto& database = site.Database();
  database.BeginTransaction();
  const double seconds = SecondsOf([&] {
    if (!remove(database)) throw std::runtime_error("a deletion was refused");
  });
  database.EndTransaction(false);
  return seconds;
}

double TotalSeconds(LibrarySite& site) {
  QuerySqlite query;
  query.OrderByDesc("creationDate").Limit(50, 0);
  const auto cursor = site.Database().GetMediaAssetTable().OpenObjectCursor(query, true);
  return SecondsOf([&] { cursor->GetTotalItemsCount(); });
}

double DeepReadSeconds(LibrarySite& site, int number) {
  return SecondsOf([&] {
    const ReadGuard reading(site.Database());
    MediaAsset clip;
    site.Jobs().ReadDeep(site.Jobs().FindKey(ClipId(number)), clip);
  });
}

double DeepReadSeconds(RivalSite& site, int number) {
  return SecondsOf([&] {
    site.Jobs().Begin();
    MediaAsset clip;
    site.Jobs().ReadDeep(site.Jobs().FindKey(ClipId(number)), clip);
    site.Jobs().Commit();
  });
}

void ReadDeepOver(const std::string& uri, int clipCount, int reads) {
  LibrarySite site(uri);
  for (int i = 0; i < reads; ++i)
    DeepReadSeconds(site, static_cast<int>(int64_t{i} * 7919 % clipCount));
}

}  // namespace

void MeasureWaits(const std::string& folder, int clipCount, std::ostream& out) {
  const ScratchFile file(folder);
  const std::string uri = file.Uri(Durable);
  LibrarySite site(uri);
  int count = 0;
  FillUpTo(site, count, clipCount);
  // Numbers of clips all over the file.
  const auto number = [&](int i) { return static_cast<int>(int64_t{i} * 7919 % clipCount); };

  JsonRows rows(out);
  const auto write = [&](const std::string& job, double milliseconds, double ceiling) {
    rows.Next() << "  {\"job\": \"" << job << "\", \"ms\": " << milliseconds << ", \"ceiling\": " << ceiling
                << "}";
    out.flush();
  };
  write("opening, warm", MedianOf(51, [&](int) { return OpeningSeconds(uri); }), 0.8);
  site.Jobs().Begin();
  site.Database().ExecuteStatement("UPDATE MediaAsset SET name = name WHERE key = 1");
  write("opening beside a writer", MedianOf(51, [&](int) { return OpeningSeconds(uri); }), 0.8);
  site.Jobs().Commit();
  const auto firstDeletion = [&](auto remove) {
    return MedianOf(9, [&](int i) {
      const auto id = ClipId(number(i));
      return FirstDeletionSeconds(uri, [&](DataModelDatabase& database) { return remove(database, id); });
    });
  };
  write("first removal by a repository", firstDeletion([](DataModelDatabase& database, const auto& id) {
          return MediaAssetRepository(database).Remove(id, Protection::Ignore) == RemoveOutcome::Removed;
        }),
        5);
  write("first deletion by a table", firstDeletion([](DataModelDatabase& database, const auto& id) {
          MediaAssetTable& assets = database.GetMediaAssetTable();
          return assets.Delete(assets.GetObjectIdFromIdentifier(id));
        }),
        5);
  write("total of a list", MedianOf(51, [&](int) { return TotalSeconds(site); }), 1);
  const std::pair<const char*, const char*> settings[] = {
      {"defaults", ""},
      {"cache of 64 MB", "PRAGMA cache_size = -65536"},
      {"mapping of 2 GB", "PRAGMA mmap_size = 2147483648"},
      {"both", "PRAGMA mmap_size = 2147483648; PRAGMA cache_size = -65536"},
  };
  for (const auto& [name, pragma] : settings) {
    LibrarySite reader(uri);
    reader.Database().ExecuteStatement(pragma);
    write(std::string("deep read, ").append(name),
          MedianOf(2000, [&](int i) { return DeepReadSeconds(reader, number(i)); }), 0);
    RivalSite byHand(file.Path());
    Connection::Execute(byHand.Handle(), pragma);
    write(std::string("the same by hand, ").append(name),
          MedianOf(2000, [&](int i) { return DeepReadSeconds(byHand, number(i)); }), 0);
  }
}

void MeasureThreads(const std::string& folder, bool isTuned, std::ostream& out) {
  if (isTuned && !DatabaseSqlite::TuneForThreads()) throw std::runtime_error("too late to tune");
  constexpr int clipCount = 2000;
  constexpr int reads = 6000;
  constexpr int rounds = 7;
  const ScratchFile file(folder);
  const std::string uri = file.Uri(Durable);
  LibrarySite site(uri);
  int count = 0;
  FillUpTo(site, count, clipCount);
  JsonRows rows(out);
  for (const int threadCount : {1, 2, 4}) {
    double least = 0;
    // The least of several rounds: others on the machine only add to it.
    for (int round = 0; round < rounds; ++round) {
      const double seconds = SecondsOf([&] {
        std::vector<std::thread> threads;
        threads.reserve(static_cast<std::size_t>(threadCount));
        for (int i = 0; i < threadCount; ++i)
          threads.emplace_back([&] { ReadDeepOver(uri, clipCount, reads / threadCount); });
        for (std::thread& thread : threads)
          thread.join();
      });
      least = round == 0 ? seconds : std::min(least, seconds);
    }
    rows.Next() << "  {\"threads\": " << threadCount << ", \"tuned\": " << (isTuned ? "true" : "false")
                << ", \"ms\": " << least * 1e3 << "}";
  }
}

}  // namespace Oru::Benchmarks
