// One file for each server: asks all of them at once, a thread and a database each, and merges the answers.
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <future>
#include <iostream>
#include <string>
#include <vector>

namespace Assets = Oru::DataModel::MediaAssets;
namespace Sqlite = Oru::Common::Databases::Sqlite;
using Assets::Database::DataModelDatabase;

namespace {

struct Found {
  std::string server;
  std::string name;
  std::string id;
};

// What one file answers, at most `count` clips in the order of their names. The database lives in the thread
// that asks.
std::vector<Found> Ask(const std::string& server, const std::string& text, int count) {
  DataModelDatabase database("file:" + server + ".db?mode=ro", nullptr);
  database.Open();
  const Sqlite::ReadGuard reading(database);
  const auto query = database.NewQuery();
  query->Contains("MediaAsset.name", text).OrderByAsc("MediaAsset.name").Limit(count, 0);
  const auto cursor = database.GetMediaAssetTable().OpenObjectCursor(*query);
  std::vector<Found> found;
  for (Assets::MediaAsset clip; cursor->Next(clip);) {
    found.push_back({server, clip.Name(), clip.Id().Value()});
  }
  return found;
}

// The first `count` clips of all files. A file that can't be read is named, and the others answer all the
// same.
std::vector<Found> AskAll(const std::vector<std::string>& servers, const std::string& text, int count) {
  std::vector<std::future<std::vector<Found>>> answers;
  answers.reserve(servers.size());
  for (const std::string& server : servers) {
    answers.push_back(std::async(std::launch::async, Ask, server, text, count));
  }
  std::vector<Found> merged;
  for (std::size_t i = 0; i < answers.size(); ++i) {
    try {
      const std::vector<Found> found = answers[i].get();
      merged.insert(merged.end(), found.begin(), found.end());
    } catch (const std::exception&) {
      std::cout << servers[i] << " doesn't answer\n";
    }
  }
  std::stable_sort(merged.begin(), merged.end(),
                   [](const Found& left, const Found& right) { return left.name < right.name; });
  if (merged.size() > static_cast<std::size_t>(count)) merged.resize(static_cast<std::size_t>(count));
  return merged;
}

bool Fill(const std::string& server, int first, int step, int count) {
  DataModelDatabase database("file:" + server + ".db?_journal_mode=wal&_synchronous=normal", nullptr);
  database.Open();
  Sqlite::TransactionGuard transaction(database);
  for (int i = 0; i < count; ++i) {
    const std::string number = std::to_string(100000 + first + i * step);
    Assets::MediaAsset clip("clip-" + number);
    clip.Name("Goal " + number);
    if (!database.GetMediaAssetTable().Save(clip)) return false;
  }
  transaction.Commit();
  return true;
}

}  // namespace

// scale_fan_out [CLIPS]: with a number it fills the files with so many clips in all and tells how long an
// answer takes, from the servers one after the other and from all at once.
int main(int argc, char** argv) {
  const std::vector<std::string> servers = {"server-110", "server-120", "server-130"};
  const int clips = argc > 1 ? std::stoi(argv[1]) : 9;
  const int share = static_cast<int>(servers.size());
  for (int i = 0; i < share; ++i) {
    if (!Fill(servers[static_cast<std::size_t>(i)], i, share, clips / share)) return 1;
  }

  std::vector<std::string> asked = servers;
  asked.emplace_back("server-140");
  for (const Found& found : AskAll(asked, "goal", 4)) {
    std::cout << found.name << " on " << found.server << '\n';
  }

  if (argc > 1) {
    using Clock = std::chrono::steady_clock;
    const auto milliseconds = [](Clock::duration span) {
      return std::chrono::duration<double, std::milli>(span).count();
    };
    const auto start = Clock::now();
    for (const std::string& server : servers)
      AskAll({server}, "99", 20);
    const auto middle = Clock::now();
    AskAll(servers, "99", 20);
    std::cout << "one after the other: " << milliseconds(middle - start)
              << " ms, at once: " << milliseconds(Clock::now() - middle) << " ms\n";
  }
}
