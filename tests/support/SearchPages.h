#pragma once

#include "Oru/DataModel/MediaAssets/Database/FederatedAsset.h"

#include "support/Prelude.h"

namespace Oru::TestSupport {

/// The identifiers of assets that a search found.
template <class Found>
std::vector<std::string> Ids(const std::vector<Found>& found) {
  std::vector<std::string> ids;
  for (const Found& each : found) {
    if constexpr (std::is_same_v<Found, DataModel::MediaAssets::Database::FederatedAsset>) {
      ids.push_back(each.asset.Id().Value());
    } else {
      ids.push_back(each.Id().Value());
    }
  }
  return ids;
}

/// Expects the pages of a search, each by its place and with some skipped after the last asset of another.
/// @param find       gives a page of a length from a place on
/// @param findAfter  gives a page after an asset, of a length and with a number of assets skipped
template <class Find, class FindAfter>
void ExpectPages(const std::vector<std::string>& expected, int64_t length, int64_t skipped, Find find,
                 FindAfter findAfter) {
  const auto total = static_cast<int64_t>(expected.size());
  const auto from = [&](int64_t place) {
    const auto at = [&](int64_t number) { return expected.begin() + std::min(number, total); };
    return std::vector<std::string>(at(place), at(place + length));
  };
  for (int64_t place = 0; place < total; place += length) {
    const auto page = find(length, place);
    ASSERT_EQ(Ids(page.assets), from(place));
    const auto next = findAfter(page.assets.back(), length, skipped);
    ASSERT_EQ(Ids(next.assets), from(place + length + skipped));
    ASSERT_TRUE(page.total == total && next.total == total);
  }
  ASSERT_EQ(find(length, total + 1).total, total) << "of a page past the end";
}

}  // namespace Oru::TestSupport
