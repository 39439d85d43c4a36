#include "FileJobs.h"

#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include "Clock.h"
#include "SampleClips.h"
#include "ScratchFile.h"
#include "Site.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace Oru::Benchmarks {

using Common::Databases::Sqlite::ReadGuard;
using DataModel::MediaAssets::Database::DataModelDatabase;

namespace {

/// The median cost of a run, in microseconds: `most` runs, or as many as a second allows and at least three.
template <class Run>
double Median(double (*seconds)(), int most, Run run) {
  std::vector<double> costs;
  for (double spent = 0; static_cast<int>(costs.size()) < most && (spent < 1 || costs.size() < 3);) {
    const double start = seconds();
    run(static_cast<int>(costs.size()));
    costs.push_back(seconds() - start);
    spent += costs.back();
  }
  const auto middle = costs.begin() + static_cast<std::ptrdiff_t>(costs.size() / 2);
  std::nth_element(costs.begin(), middle, costs.end());
  return *middle * 1e6;
}

template <class Jobs>
void SaveTogether(Jobs& jobs, std::vector<MediaAsset>& clips) {
  jobs.Begin();
  for (MediaAsset& clip : clips)
    jobs.Save(clip);
  jobs.Commit();
}

// Identifiers all over a file of that many clips; others for another offset, so that no reader finds what the
// one before it has brought in.
std::vector<DataModel::MediaAssets::MediaAssetId> SomeIds(int size, int offset = 0) {
  constexpr int count = 1000;
  std::vector<DataModel::MediaAssets::MediaAssetId> ids;
  ids.reserve(count);
  for (int i = 0; i < count; ++i)
    ids.push_back(ClipId(static_cast<int>((int64_t{i} * 7919 + offset) % size)));
  return ids;
}

void DropLookupIndexes(sqlite3* handle) {
  std::vector<std::string> names;
  {
    Statement indexes(handle, "SELECT name FROM sqlite_master WHERE name LIKE 'Lookup%'");
    for (Rows row(indexes); row.Next();)
      names.push_back(row->Text(0));
  }
  for (const std::string& name : names)
    Connection::Execute(handle, "DROP INDEX " + name);
}

template <class Jobs>
void ReadDeep(Jobs& jobs, const DataModel::MediaAssets::MediaAssetId& id) {
  MediaAsset clip;
  jobs.ReadDeep(jobs.FindKey(id), clip);
}

/// One state of the file for several reads, by either side.
class Reading {
 public:
  explicit Reading(LibrarySite& site) : guard(std::make_unique<ReadGuard>(site.Database())) {}
  explicit Reading(RivalSite& site) : handle(site.Handle()) { Connection::Execute(handle, "BEGIN"); }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  ~Reading() {
    if (handle) sqlite3_exec(handle, "COMMIT", nullptr, nullptr, nullptr);
  }

 private:
  std::unique_ptr<ReadGuard> guard;
  sqlite3* handle = nullptr;
};

/// Saves clips that no file of this program holds yet, in batches of one transaction each.
class NewClips {
 public:
  NewClips(int& storedCount, int batchCount, int batchSize) {
    for (int i = 0; i < batchCount; ++i, storedCount += batchSize)
      batches.push_back(MakeClips(storedCount, batchSize));
  }

  template <class Site>
  double CostOfOne(Site& site, double (*seconds)()) {
    const double median = Median(seconds, static_cast<int>(batches.size()), [&](int i) {
      SaveTogether(site.Jobs(), batches[static_cast<std::size_t>(i)]);
    });
    return median / static_cast<double>(batches.front().size());
  }

 private:
  std::vector<std::vector<MediaAsset>> batches;
};

// How many pages the connection has had to ask the system for since the last call.
int PagesRead(sqlite3* handle) {
  int count = 0;
  int highest = 0;
  sqlite3_db_status(handle, SQLITE_DBSTATUS_CACHE_MISS, &count, &highest, 1);
  return count;
}

// As a JSON object; the file holds a few clips more afterwards.
template <class Site>
void MeasureAtSize(Site& site, const std::string& side, int size, bool hasIndexes, int& nextNumber,
                   std::ostream& out) {
  const auto ids = SomeIds(size, side == "library" ? 0 : size / 2);
  const auto id = [&](int i) { return ids[static_cast<std::size_t>(i)]; };
  const double find = Median(ThreadSeconds, 1000, [&](int i) { site.Jobs().FindKey(id(i)); });
  int deepReads = 0;
  PagesRead(site.Handle());
  const double deep = Median(ThreadSeconds, 300, [&](int i) {
    const Reading reading(site);
    ReadDeep(site.Jobs(), id(i));
    ++deepReads;
  });
  const double pages = static_cast<double>(PagesRead(site.Handle())) / deepReads;
  const double save = NewClips(nextNumber, 5, hasIndexes ? 100 : 10).CostOfOne(site, ThreadSeconds);
  out << "  {\"clips\": " << size << ", \"side\": \"" << side
      << "\", \"indexes\": " << (hasIndexes ? "true" : "false") << ", \"find\": " << find
      << ", \"save\": " << save << ", \"read_deep\": " << deep << ", \"pages_of_deep\": " << pages << "}";
}

// By hand and with the connection that a program without options gets.
void MeasureByHand(const ScratchFile& file, int size, int& nextNumber, std::ostream& out) {
  RivalSite site(file.Path());
  Connection::Execute(site.Handle(), "PRAGMA synchronous = NORMAL");
  MeasureAtSize(site, "rival", size, true, nextNumber, out);
}

}  // namespace

void FillUpTo(LibrarySite& site, int& count, int size) {
  while (count < size) {
    std::vector<MediaAsset> clips = MakeClips(count, std::min(1000, size - count));
    SaveTogether(site.Jobs(), clips);
    count += static_cast<int>(clips.size());
  }
}

void MeasureGrowth(const std::string& folder, const std::vector<int>& sizes, int largest, std::ostream& out) {
  const ScratchFile file(folder);
  LibrarySite site(file.Uri("_journal_mode=wal&_synchronous=normal"));
  int count = 0;
  const char* separator = "[\n";
  for (const int size : sizes) {
    FillUpTo(site, count, size);
    out << separator;
    separator = ",\n";
    MeasureAtSize(site, "library", size, true, count, out);
    out << separator;
    MeasureByHand(file, size, count, out);
    if (size <= largest) {
      DropLookupIndexes(site.Handle());
      out << separator;
      MeasureAtSize(site, "library", size, false, count, out);
      site.Database().Create();
    }
    out.flush();
  }
  out << "\n]\n";
}

void MeasureConnections(const std::string& folder, std::ostream& out) {
  const char* separator = "[\n";
  for (const std::string journal : {"delete", "wal"}) {
    for (const std::string synchronous : {"full", "normal"}) {
      const ScratchFile file(folder);
      LibrarySite site(file.Uri(
          std::string("_journal_mode=").append(journal).append("&_synchronous=").append(synchronous)));
      constexpr int size = 1000;
      int count = 0;
      FillUpTo(site, count, size);
      std::vector<MediaAsset> bare = MakeClips(count, 20);
      count += 20;
      const double saveBare =
          Median(ElapsedSeconds, 20, [&](int i) { site.Jobs().Save(bare[static_cast<std::size_t>(i)]); });
      const double saveAlone = NewClips(count, 100, 1).CostOfOne(site, ElapsedSeconds);
      const double saveTogether = NewClips(count, 7, 100).CostOfOne(site, ElapsedSeconds);
      const auto ids = SomeIds(size);
      const double unguarded = Median(
          ElapsedSeconds, 500, [&](int i) { ReadDeep(site.Jobs(), ids[static_cast<std::size_t>(i)]); });
      const ReadGuard reading(site.Database());
      const double guarded = Median(ElapsedSeconds, 500,
                                    [&](int i) { ReadDeep(site.Jobs(), ids[static_cast<std::size_t>(i)]); });
      out << separator << "  {\"journal\": \"" << journal << "\", \"synchronous\": \"" << synchronous
          << "\", \"save_bare\": " << saveBare << ", \"save_alone\": " << saveAlone
          << ", \"save_in_100\": " << saveTogether << ", \"deep_unguarded\": " << unguarded
          << ", \"deep_guarded\": " << guarded << "}";
      separator = ",\n";
    }
  }
  out << "\n]\n";
}

}  // namespace Oru::Benchmarks
