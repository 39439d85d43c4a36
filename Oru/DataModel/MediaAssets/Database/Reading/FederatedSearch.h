#pragma once

#include "Oru/DataModel/MediaAssets/Database/FederatedPage.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetPage.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetSearchText.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// A search over several files: what each file is asked, and what page the answers make. Internal to the library.
///
/// The files together have one order: by what the search orders by, then by the place of the file, then by key. So
/// within each file the order is that of a search of its own.
class FederatedSearch {
 public:
  /// What a file gives: a page in the order asked for, or why there is none.
  struct Answer {
    MediaAssetPage page;
    /// What each asset of the page has in the order.
    std::vector<MediaAssetSearchText::Value> orderValues;
    /// None for a file that has answered.
    std::optional<std::string> failure;
  };

  /// @throws ArgumentException for a search with `After`
  explicit FederatedSearch(const MediaAssetSearch& searched);
  /// @param last  what the page follows
  /// @throws ArgumentException also for an asset that no page of this order gave
  FederatedSearch(const MediaAssetSearch& searched, const FederatedAsset& last);

  /// What to ask the file of that place.
  MediaAssetSearch Of(std::size_t file) const;
  /// The page of all files.
  /// @param answers  one for each file
  FederatedPage Merge(std::vector<Answer> answers) const;

 private:
  using Value = MediaAssetSearchText::Value;

  bool IsBefore(const Value& left, const Value& right) const;

  const MediaAssetSearch search;
  const MediaAssetOrder order;
  // Of the asset that the page follows.
  std::optional<std::size_t> fileBefore;
  Value valueBefore;
  int64_t keyBefore = -1;
};

}  // namespace Oru::DataModel::MediaAssets::Database
