#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/FederatedAsset.h"
#include "Oru/DataModel/MediaAssets/Database/FederatedPage.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"
#include "Oru/DataModel/MediaAssets/MediaAssetParts.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

class FederatedFile;
class FederatedSearch;

/// Searches several files at once, as a station with a file for each server has them.
///
///     MediaAssetFederation federation({"server-110.db", "server-120.db"});
///     const FederatedPage page = federation.Find(MediaAssetSearch().Typed("goal").Limit(50));
///
/// Each file has a thread and a connection of its own, which stay for the next search. A file that can't be opened or
/// read, or doesn't answer in time, is named in the page, and the others answer without it. The next search tries it
/// again. No transaction covers several files: each answers with one view of its own.
///
/// Assets follow in the order of the search. Those that are equal in it follow by the places of their files in the
/// list, then by key, in the same direction. So in the order of keys the files follow each other whole.
/// Relevance is what each file says: it rates an asset among its own.
///
/// A program with threads calls `DatabaseSqlite::TuneForThreads` at its start.
///
/// Threads: a federation belongs to one thread at a time.
class ORU_DATAMODEL_DATABASE_EXPORT MediaAssetFederation {
 public:
  /// Starts the threads; each opens its file at the first search. A file that isn't there is not made.
  /// @param connections  the connection text of each file
  /// @param deadline     how long a search waits for the files, more than 0
  /// @throws ArgumentException for a deadline of 0 or less; std::system_error when a thread can't be started
  explicit MediaAssetFederation(const std::vector<std::string>& connections,
                                std::chrono::milliseconds deadline = std::chrono::seconds(2));
  MediaAssetFederation(const MediaAssetFederation&) = delete;
  MediaAssetFederation& operator=(const MediaAssetFederation&) = delete;
  /// Closes the files. A thread that hangs in its file longer than the deadline is left to itself; it ends when the
  /// call does in which it hangs.
  ~MediaAssetFederation();

  /// The page that a search names, over all files. Each file reads no more than the count and the offset of `Limit`
  /// together; for a page far from the first, `FindAfter` reads less.
  /// @throws ArgumentException for a search with `MediaAssetSearch::After`: `FindAfter` knows the file too
  FederatedPage Find(const MediaAssetSearch& search, MediaAssetParts parts = MediaAssetParts::Row);
  /// The same, of what follows an asset that a former page of this search gave.
  /// @throws ArgumentException also for an asset that no page of this order gave
  FederatedPage FindAfter(const FederatedAsset& last, const MediaAssetSearch& search,
                          MediaAssetParts parts = MediaAssetParts::Row);

 private:
  FederatedPage Find(const FederatedSearch& search, MediaAssetParts parts);

  const std::chrono::milliseconds deadline;
  std::vector<std::unique_ptr<FederatedFile>> files;
};

}  // namespace Oru::DataModel::MediaAssets::Database
