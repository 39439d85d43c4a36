#include "Oru/DataModel/MediaAssets/Database/MediaAssetFederation.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/FederatedFile.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/FederatedSearch.h"

#include <future>
#include <utility>

namespace Oru::DataModel::MediaAssets::Database {

MediaAssetFederation::MediaAssetFederation(const std::vector<std::string>& connections,
                                           std::chrono::milliseconds searchDeadline)
    : deadline(searchDeadline) {
  if (deadline.count() <= 0) throw Common::Databases::ArgumentException();
  files.reserve(connections.size());
  for (const std::string& connection : connections)
    files.push_back(std::make_unique<FederatedFile>(connection, deadline));
}

MediaAssetFederation::~MediaAssetFederation() {
  // All at once, so that the waits for those that hang don't add up.
  for (const auto& file : files)
    file->Stop();
}

FederatedPage MediaAssetFederation::Find(const MediaAssetSearch& search, MediaAssetParts parts) {
  return Find(FederatedSearch(search), parts);
}

FederatedPage MediaAssetFederation::FindAfter(const FederatedAsset& last, const MediaAssetSearch& search,
                                              MediaAssetParts parts) {
  if (last.file >= files.size()) throw Common::Databases::ArgumentException();
  return Find(FederatedSearch(search, last), parts);
}

FederatedPage MediaAssetFederation::Find(const FederatedSearch& search, MediaAssetParts parts) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  std::vector<std::future<FederatedSearch::Answer>> awaited;
  awaited.reserve(files.size());
  for (std::size_t file = 0; file < files.size(); ++file)
    awaited.push_back(files[file]->Ask(search.Of(file), parts));
  std::vector<FederatedSearch::Answer> answers;
  answers.reserve(files.size());
  for (std::size_t file = 0; file < files.size(); ++file) {
    if (awaited[file].wait_until(end) == std::future_status::ready) {
      answers.push_back(awaited[file].get());
    } else {
      files[file]->Interrupt();
      answers.emplace_back();
      answers.back().failure = "no answer within " + std::to_string(deadline.count()) + " ms";
    }
  }
  return search.Merge(std::move(answers));
}

}  // namespace Oru::DataModel::MediaAssets::Database
