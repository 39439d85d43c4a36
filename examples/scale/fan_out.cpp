// One file for each server: asks all of them at once, and lists what they found.
#include "Oru/DataModel/MediaAssets/Database/MediaAssetFederation.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include <iostream>
#include <string>
#include <vector>

using namespace Oru::DataModel::MediaAssets;
using namespace Oru::DataModel::MediaAssets::Database;

namespace {

void Fill(const std::string& server, int first) {
  DataModelDatabase database("file:" + server + ".db?_journal_mode=wal&_synchronous=normal", nullptr);
  database.Open();
  MediaAssetRepository repository(database);
  for (int number = first; number < first + 9; number += 3) {
    MediaAsset clip{MediaAssetId("clip-" + std::to_string(number))};
    clip.Name("Goal " + std::to_string(number));
    repository.Put(clip);
  }
}

}  // namespace

int main() {
  DataModelDatabase::TuneForThreads();
  const std::vector<std::string> servers = {"server-110", "server-120", "server-130", "server-140"};
  for (int i = 0; i < 3; ++i)
    Fill(servers[static_cast<std::size_t>(i)], 100000 + i);

  std::vector<std::string> files;
  files.reserve(servers.size());
  for (const std::string& server : servers)
    files.push_back(server + ".db");
  MediaAssetFederation federation(files);
  const auto search = MediaAssetSearch().NameContains("goal").OrderBy(MediaAssetOrder::Name).Limit(4);
  const FederatedPage page = federation.Find(search);
  for (const FederatedAsset& found : page.assets)
    std::cout << found.asset.Name() << " on " << servers[found.file] << '\n';
  std::cout << page.total << " in all\n";
  for (const auto& [file, reason] : page.silent)
    std::cout << servers[file] << " doesn't answer: " << reason << '\n';
  for (const FederatedAsset& found : federation.FindAfter(page.assets.back(), search).assets)
    std::cout << "next " << found.asset.Name() << " on " << servers[found.file] << '\n';
}
