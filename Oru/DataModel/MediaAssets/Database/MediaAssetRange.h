#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <cstddef>
#include <iterator>
#include <memory>

namespace Oru::DataModel::MediaAssets::Database {

class MediaAssetReader;

/// The assets of a search's page, one after the other: what `MediaAssetRepository::Each` gives.
///
/// Which assets come, and in which order, is decided when the walk begins; their objects are read a few dozen
/// at a time. So a walk ends, and passes each asset once, whatever the caller stores, renames or removes
/// meanwhile. An asset that is gone by the time that it would be read is passed over. After a write on the
/// same connection each further object is read again before it comes.
///
/// The database must outlive the range, and a walk keeps no lock between two objects.
class ORU_DATAMODEL_DATABASE_EXPORT MediaAssetRange {
 private:
  class Walk;

 public:
  /// Goes over the range once, as input iterators do. The object is the caller's to change or to move from;
  /// it is valid up to the next increment.
  class ORU_DATAMODEL_DATABASE_EXPORT Iterator {
   public:
    /// The types that the standard library expects of an iterator:
    using iterator_category = std::input_iterator_tag;
    using value_type = MediaAsset;
    using difference_type = std::ptrdiff_t;
    using pointer = MediaAsset*;
    using reference = MediaAsset&;

    /// The end of any range.
    Iterator() = default;

    /// The present object; not at the end.
    MediaAsset& operator*() const;
    MediaAsset* operator->() const { return &**this; }
    /// @throws InvalidOperationException, with a log entry, when the database fails or is closed
    Iterator& operator++();
    void operator++(int) { ++*this; }

    /// Two iterators of one range are equal when both are at its end, or neither is.
    bool operator==(const Iterator& other) const { return walk == other.walk; }
    bool operator!=(const Iterator& other) const { return walk != other.walk; }

   private:
    friend class MediaAssetRange;
    explicit Iterator(std::shared_ptr<Walk> begun);

    // Null at the end.
    std::shared_ptr<Walk> walk;
  };

  /// Begins a walk.
  /// @throws InvalidOperationException, with a log entry, when the database fails or is closed;
  ///         ArgumentException as `MediaAssetSearch::After`
  Iterator begin() const;
  Iterator end() const { return {}; }

 private:
  friend class MediaAssetRepository;
  MediaAssetRange(std::shared_ptr<MediaAssetReader> source, MediaAssetSearch searched,
                  MediaAssetParts readParts);

  std::shared_ptr<MediaAssetReader> reader;
  MediaAssetSearch search;
  MediaAssetParts parts;
};

}  // namespace Oru::DataModel::MediaAssets::Database
