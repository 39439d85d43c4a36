#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/DataModel/MediaAssets/Database/CopyResources.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetPage.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRange.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"
#include "Oru/DataModel/MediaAssets/Database/NotStored.h"
#include "Oru/DataModel/MediaAssets/Database/NotStoredException.h"
#include "Oru/DataModel/MediaAssets/Database/Protection.h"
#include "Oru/DataModel/MediaAssets/Database/PutProgress.h"
#include "Oru/DataModel/MediaAssets/Database/RemoveOutcome.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/MediaAssetParts.h"

#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

class FormerObjectIds;
class MediaAssetReader;
class MediaAssetWriter;

// Callers name it together with the repository.
using MediaAssets::MediaAssetParts;

/// Media assets as wholes: an asset goes in with all that belongs to it, and comes back equal.
///
///     MediaAssetRepository repository(database);
///     repository.Put(clip);
///     repository.Change(clip.Id(), [](MediaAsset& stored) { stored.Name("Opening"); });
///
/// Objects are found by their identifiers, never by object ids. An operation that writes stores all or
/// nothing: it is a transaction of its own or, within one that the caller has begun, a savepoint. It throws
///   - NotStoredException when the asset is at fault: the text names the asset, the part and what is wrong;
///   - InvalidOperationException, with a log entry, when the file can't be written (locked, read-only, full,
///   closed,
///     a fault of the disk), and within a `ReadGuard`.
/// Objects have their new object ids when an operation has succeeded, and the old ones when it hasn't.
///
/// Threads: a repository belongs to one thread at a time. Several on one database may be used from different
/// threads: each operation has the connection to itself from begin to end, and others wait. Functions that a
/// caller gives run meanwhile, so they must not wait for another thread that uses the same database.
class ORU_DATAMODEL_DATABASE_EXPORT MediaAssetRepository {
 public:
  /// @param database  must outlive the repository; it may be opened later
  explicit MediaAssetRepository(DataModelDatabase& database);
  MediaAssetRepository(const MediaAssetRepository&) = delete;
  MediaAssetRepository& operator=(const MediaAssetRepository&) = delete;
  ~MediaAssetRepository();

  /// Reads an asset.
  /// @param parts  what is read of it; the object knows these as its `HeldParts`
  /// @return nothing when no asset has that identifier
  /// @throws InvalidOperationException, with a log entry, when the file can't be read
  std::optional<MediaAsset> Find(const BusinessEntityModel::BaseTypes::Identifier& id,
                                 MediaAssetParts parts = MediaAssetParts::All);
  /// The page that a search names, and how many assets it finds in all. One view of the file.
  /// @throws ArgumentException when the page follows an asset of which the order isn't known
  ///         (`MediaAssetSearch::After`); InvalidOperationException, with a log entry, when the file can't be
  ///         read, as the two that follow
  MediaAssetPage Find(const MediaAssetSearch& search, MediaAssetParts parts = MediaAssetParts::Row);
  /// How many assets a search finds, without regard to `Limit` and `After`.
  int64_t Count(const MediaAssetSearch& search);
  /// The assets of the page that a search names, an object of its own each, read a few dozen at a time:
  /// `for (MediaAsset& asset : repository.Each(search))`. The body may use the repository in any way.
  MediaAssetRange Each(const MediaAssetSearch& search, MediaAssetParts parts = MediaAssetParts::Row);

  /// Makes the file hold the asset as it is, new or in place of what is stored under its identifier. The
  /// asset keeps its key, and so its places in groups.
  ///
  /// The parts that the object holds (`MediaAsset::HeldParts`) are written, and the file keeps the others.
  /// The file doesn't keep track layouts, locations of streams, time code tables of essences, and rates other
  /// than 50 and 60 of the operator's time codes. Streams of a resource and channels of a track come back in
  /// the order in which they were first stored, and a generic profile without entries doesn't come back.
  ///
  /// Resources and tracks are shared: what is written of them holds for all assets that use them. A reference
  /// that only knows the identifier of a resource or a stream refers to the stored one. Resources and tracks
  /// that the asset had and nothing uses any more go. A resource is in use while an asset refers to it, or a
  /// channel of a track takes one of its streams. A channel stays with the number of its essence, and goes
  /// with it.
  /// @throws NotStoredException also for what a file couldn't give back: an empty identifier, one that is
  ///         there twice among resources, streams or tracks, a place off its range, a camera off A to L, a
  ///         time code with a negative count, more keywords than can be read, a metadata profile of a class
  ///         without a table, a channel that is there twice; and for a reference to a resource, a stream or
  ///         an essence that isn't stored, or a stream that belongs to another resource
  void Put(MediaAsset& asset);

  /// Puts many assets, a few hundred a transaction (within the caller's transaction, a savepoint). One that
  /// can't be stored is left out and costs itself alone.
  ///
  /// The objects of a range that can be walked more than once (forward iterators) get their object ids; they
  /// must not change before the call ends. Those of a range that can be walked only once may be gone when
  /// their block is committed, so they keep the object ids that they came with.
  /// @param assets    gives `MediaAsset&`
  /// @param progress  called after each asset; see `PutProgress`. After false what was handled is committed
  /// @return the assets that were left out, with reasons, in the order of the range
  /// @throws what `progress` or the range throws, and InvalidOperationException. Earlier blocks stay; the
  ///         present one is rolled back, and its objects keep their old object ids
  template <class Range>
  std::vector<NotStored> PutAll(Range&& assets, const PutProgress& progress = nullptr);

  /// Reads an asset whole, lets `change` change it, and puts it, while no other connection can write.
  /// @param change  may change the identifier too: that renames the asset, which keeps its key. What it
  ///                throws passes on, and nothing is stored
  /// @return the asset as stored
  /// @throws NotStoredException as `Put`, for an identifier that isn't stored, and for a new one that is
  MediaAsset Change(const BusinessEntityModel::BaseTypes::Identifier& id,
                    const std::function<void(MediaAsset&)>& change);

  /// Stores a copy under an identifier of its own. Places in groups aren't copied; everything else is.
  /// @param resources  with `CopyResources::Own` each resource, stream and track `x` of the copy is `<to>/x`,
  ///                   and channels follow
  /// @return the copy
  /// @throws NotStoredException when `from` isn't stored, or `to` or another identifier of the copy is
  MediaAsset Copy(const BusinessEntityModel::BaseTypes::Identifier& from,
                  const BusinessEntityModel::BaseTypes::Identifier& to, CopyResources resources);

  /// Removes an asset, the resources and tracks that only it used, and the groups of which it was the last
  /// item.
  RemoveOutcome Remove(const BusinessEntityModel::BaseTypes::Identifier& id,
                       Protection protection = Protection::Respect);

  /// Removes the assets of the page that a search names, as `Remove` does.
  /// @return how many it removed
  int64_t RemoveAll(const MediaAssetSearch& search, Protection protection = Protection::Respect);

  /// Makes all object ids of an asset's tree -1. For the tables: after a rollback, the ids of what was saved
  /// in the transaction are those of other rows, or will be.
  static void ForgetKeys(MediaAsset& asset);

 private:
  // Gives the next asset of a range, null after the last.
  using NextAsset = std::function<MediaAsset*()>;

  template <class Iterator, class = void>
  struct IsMultiPass : std::false_type {};
  template <class Iterator>
  struct IsMultiPass<Iterator, std::void_t<typename std::iterator_traits<Iterator>::iterator_category>>
      : std::is_base_of<std::forward_iterator_tag,
                        typename std::iterator_traits<Iterator>::iterator_category> {};

  void PutOne(MediaAsset& asset, FormerObjectIds& former);
  std::vector<NotStored> PutEach(const NextAsset& next, bool isMultiPass, int64_t total,
                                 const PutProgress& progress);

  DataModelDatabase& database;
  std::unique_ptr<MediaAssetWriter> writer;
  // Shared with the ranges that read by it.
  std::shared_ptr<MediaAssetReader> reader;
};

template <class Range>
std::vector<NotStored> MediaAssetRepository::PutAll(Range&& assets, const PutProgress& progress) {
  using std::begin;
  using std::end;
  auto position = begin(assets);
  const auto last = end(assets);
  static_assert(std::is_convertible_v<decltype(*position), MediaAsset&>,
                "PutAll needs a range that gives MediaAsset&");
  constexpr bool isMultiPass = IsMultiPass<decltype(position)>::value;
  int64_t total = -1;
  if constexpr (isMultiPass) {
    total = 0;
    for (auto counted = position; counted != last; ++counted)
      ++total;
  }
  bool hasBegun = false;
  const auto next = [&]() -> MediaAsset* {
    if (hasBegun) ++position;
    hasBegun = true;
    if (!(position != last)) return nullptr;
    MediaAsset& asset = *position;
    return &asset;
  };
  return PutEach(next, isMultiPass, total, progress);
}

}  // namespace Oru::DataModel::MediaAssets::Database
