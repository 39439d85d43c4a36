#pragma once

#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/FederatedSearch.h"
#include "Oru/DataModel/MediaAssets/MediaAssetParts.h"

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace Oru::DataModel::MediaAssets::Database {

/// One file of a federation, and the thread that alone uses it. Internal to the library.
class FederatedFile {
 public:
  /// @param deadline  how long a statement may take, and how long the end waits for the thread
  FederatedFile(const std::string& connection, std::chrono::milliseconds deadline);
  FederatedFile(const FederatedFile&) = delete;
  FederatedFile& operator=(const FederatedFile&) = delete;
  /// Closes the file, unless the thread hangs in it: the thread then does so later.
  ~FederatedFile();

  /// Begins a search as soon as an earlier one has ended. It takes the place of one that hasn't begun.
  std::future<FederatedSearch::Answer> Ask(MediaAssetSearch search, MediaAssetParts parts);
  /// Ends what the thread runs, as far as `DatabaseSqlite::Interrupt` can.
  void Interrupt();
  /// Lets the thread end, without waiting for it. From then on the destructor's patience counts.
  void Stop();

 private:
  struct Shared;

  static void Serve(const std::shared_ptr<Shared>& shared);

  const std::chrono::milliseconds patience;
  std::optional<std::chrono::steady_clock::time_point> patienceEnd;
  // With the thread, which may outlive this.
  std::shared_ptr<Shared> shared;
  std::future<void> end;
  std::thread thread;
};

}  // namespace Oru::DataModel::MediaAssets::Database
