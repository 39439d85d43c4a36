// What scripts/cluster-test does with one database from several processes.
//
//     scale_shared_work LIBRARY CONNECTION write NAME SECONDS ACKNOWLEDGED
//     scale_shared_work LIBRARY CONNECTION read NAME SECONDS
//     scale_shared_work LIBRARY CONNECTION hold NAME
//     scale_shared_work LIBRARY CONNECTION check ACKNOWLEDGED...
//     scale_shared_work LIBRARY CONNECTION ask SECONDS
//
// LIBRARY is an extension of SQLite that brings the VFS which the connection text names, or "-" for none. `write`
// stores three clips a transaction and appends the number of each transaction whose commit succeeded to the file
// ACKNOWLEDGED. `read` reads pages of whole clips. Both go on after a refusal, and report the longest pause. `hold`
// leaves a transaction open until the process is killed. `check` looks for damage, and for the clips of each
// acknowledged transaction: all three or, of a transaction that wasn't acknowledged, all or none. `ask` gives a
// federation of this one file some seconds to answer.
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetFederation.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace Assets = Oru::DataModel::MediaAssets;
namespace Sqlite = Oru::Common::Databases::Sqlite;
using Assets::MediaAsset;
using Assets::Database::DataModelDatabase;
using Assets::Database::MediaAssetParts;
using Assets::Database::MediaAssetRepository;
using Assets::Database::MediaAssetSearch;
using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

namespace {

constexpr int clipsOfTransaction = 3;

std::string IdOf(const std::string& name, int transaction, int clip) {
  return name + "-" + std::to_string(transaction) + "-" + std::to_string(clip);
}

MediaAsset MakeClip(const std::string& id) {
  MediaAsset clip{Assets::MediaAssetId(id)};
  clip.Name("Clip " + id);
  auto resource = std::make_shared<Assets::MediaResource>(Assets::MediaResourceId("resource of " + id));
  resource->Adopt(std::make_unique<Assets::Stream>(Assets::StreamId("stream of " + id)));
  clip.MediaResources().Insert(resource);
  return clip;
}

bool IsWhole(const MediaAsset& clip) {
  return clip.Name() == "Clip " + clip.Id().Value() && !clip.MediaResources().Empty() &&
         (*clip.MediaResources().begin())->Streams().size() == 1;
}

void WriteTransaction(DataModelDatabase& database, const std::string& name, int number) {
  MediaAssetRepository repository(database);
  Sqlite::TransactionGuard transaction(database);
  for (int i = 0; i < clipsOfTransaction; ++i) {
    MediaAsset clip = MakeClip(IdOf(name, number, i));
    repository.Put(clip);
  }
  transaction.Commit();
}

// Repeats `job(round)` until the time is over. A round that was refused is tried again, with the database opened again.
template <class Job>
void Repeat(DataModelDatabase& database, const std::string& name, double seconds, Job job) {
  const auto begin = Clock::now();
  auto last = begin;
  Seconds longest{}, longestAt{};
  int done = 0, refusals = 0;
  std::map<std::string, int> reasons;
  while (Seconds(Clock::now() - begin).count() < seconds) {
    try {
      if (!database.IsOpen()) database.Open();
      job(done);
      ++done;
      const Seconds pause = Clock::now() - last;
      if (pause > longest) {
        longest = pause;
        longestAt = last - begin;
      }
      last = Clock::now();
    } catch (const std::exception& failure) {
      ++refusals;
      ++reasons[database.LastFailure().empty() ? failure.what() : database.LastFailure()];
      if (refusals % 20 == 0) database.Close();
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }
  if (const Seconds pause = Clock::now() - last; pause > longest) {
    longest = pause;
    longestAt = last - begin;
  }
  const double span = Seconds(Clock::now() - begin).count();
  std::cout << name << ": " << done / span << " a second, longest pause " << longest.count() << " s (after "
            << longestAt.count() << " s), refused " << refusals << " times\n";
  for (const auto& [reason, count] : reasons)
    std::cout << name << ": " << count << " x " << reason << '\n';
}

void Write(DataModelDatabase& database, const std::string& name, double seconds, const std::string& file) {
  std::ofstream acknowledged(file, std::ios::app);
  Repeat(database, name, seconds, [&](int round) {
    WriteTransaction(database, name, round);
    acknowledged << name << ' ' << round << std::endl;
  });
}

void Read(DataModelDatabase& database, const std::string& name, double seconds) {
  MediaAssetRepository repository(database);
  const auto search = MediaAssetSearch().OrderBy(Assets::Database::MediaAssetOrder::Key,
                                                 Assets::Database::Direction::Descending);
  Repeat(database, name, seconds, [&](int) {
    const auto page = repository.Find(MediaAssetSearch(search).Limit(10), MediaAssetParts::All);
    const bool isWhole = std::all_of(page.assets.begin(), page.assets.end(), IsWhole);
    if (!isWhole || page.total % clipsOfTransaction != 0) {
      std::cout << name << ": saw a part of a transaction\n";
      std::exit(1);
    }
  });
}

void Ask(const std::string& connection, double seconds) {
  const auto begin = Clock::now();
  Assets::Database::MediaAssetFederation federation({connection},
                                                    std::chrono::milliseconds(std::lround(seconds * 1000)));
  const auto page = federation.Find(MediaAssetSearch().Limit(0));
  std::cout << (page.silent.empty() ? std::to_string(page.total) + " clips" : page.silent.front().reason)
            << " after " << Seconds(Clock::now() - begin).count() << " s" << std::endl;
  // The thread that still hangs in the file must not hold up the end of the program.
  std::_Exit(page.silent.empty() ? 0 : 1);
}

bool Check(DataModelDatabase& database, const std::vector<std::string>& files) {
  std::set<std::string> acknowledged;
  for (const std::string& file : files) {
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);)
      acknowledged.insert(line.replace(line.find(' '), 1, "-"));
  }
  MediaAssetRepository repository(database);
  std::map<std::string, int> stored;
  int64_t broken = 0;
  for (const MediaAsset& clip : repository.Each(MediaAssetSearch(), MediaAssetParts::All)) {
    if (!IsWhole(clip)) ++broken;
    ++stored[clip.Id().Value().substr(0, clip.Id().Value().rfind('-'))];
  }
  int64_t lost = 0, halves = 0;
  for (const std::string& transaction : acknowledged)
    lost += stored.count(transaction) == 0 ? 1 : 0;
  for (const auto& [transaction, clips] : stored)
    halves += clips == clipsOfTransaction ? 0 : 1;
  const std::vector<std::string> damage = database.CheckIntegrity();
  for (const std::string& finding : damage)
    std::cout << finding << '\n';
  std::cout << "acknowledged transactions: " << acknowledged.size() << ", lost: " << lost
            << ", stored in part: " << halves
            << ", stored without an acknowledgement: " << stored.size() + lost - acknowledged.size()
            << ", clips with parts missing: " << broken << ", damage: " << damage.size() << '\n';
  return lost + halves + broken == 0 && damage.empty() && !acknowledged.empty();
}

}  // namespace

int main(int argc, char** argv) {
  DataModelDatabase::TuneForThreads();
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 4) return 2;
  const std::string &library = arguments[0], &job = arguments[2], &name = arguments[3];
  try {
    if (library != "-") DataModelDatabase::LoadVfs(library);
    DataModelDatabase database(arguments[1], nullptr);
    if (job == "write" && arguments.size() == 6) {
      Write(database, name, std::stod(arguments[4]), arguments[5]);
    } else if (job == "read" && arguments.size() == 5) {
      Read(database, name, std::stod(arguments[4]));
    } else if (job == "hold") {
      database.Open();
      const Sqlite::TransactionGuard transaction(database);
      MediaAssetRepository repository(database);
      MediaAsset clip = MakeClip(IdOf(name, 0, 0));
      repository.Put(clip);
      std::cout << "holding" << std::endl;
      std::this_thread::sleep_for(std::chrono::hours(1));
    } else if (job == "ask") {
      Ask(arguments[1], std::stod(name));
    } else if (job == "check") {
      database.Open();
      return Check(database, {arguments.begin() + 3, arguments.end()}) ? 0 : 1;
    } else {
      return 2;
    }
  } catch (const std::exception& failure) {
    std::cout << failure.what() << '\n';
    return 1;
  }
}
