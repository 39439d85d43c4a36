#pragma once

#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"

#include "ClipStore.h"

#include <CLI/App.hpp>

#include <string>

namespace Catalogue {

/// The options by which commands take conditions, an order and a page: all that a `MediaAssetSearch` offers.
class SearchOptions {
 public:
  /// Gives a command the options. They are kept here, so this must outlive the parsing.
  void AddTo(CLI::App& command);

  /// What the command line asks for.
  /// @param byDefault  the order without `--order`
  Oru::DataModel::MediaAssets::Database::MediaAssetSearch Search(
      ClipStore& store, Oru::DataModel::MediaAssets::Database::MediaAssetOrder byDefault) const;
  /// Whether a part of what is found is asked for.
  bool HasPage() const { return mLimit >= 0 || mOffset > 0 || !mAfter.empty(); }

 private:
  Oru::DataModel::MediaAssets::Database::MediaAssetSearch mSearch;
  std::string mOrder;
  bool mIsDescending = false;
  int64_t mLimit = -1;
  int64_t mOffset = 0;
  std::string mAfter;
};

}  // namespace Catalogue
