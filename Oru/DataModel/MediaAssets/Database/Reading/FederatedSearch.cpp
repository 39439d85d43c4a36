#include "Oru/DataModel/MediaAssets/Database/Reading/FederatedSearch.h"

#include "Oru/Common/Databases/ArgumentException.h"

#include <limits>
#include <type_traits>
#include <utility>
#include <variant>

namespace Oru::DataModel::MediaAssets::Database {

using Common::Databases::ArgumentException;

namespace {

constexpr int64_t LowestKey = std::numeric_limits<int64_t>::min();
constexpr int64_t HighestKey = std::numeric_limits<int64_t>::max();

// As SQLite orders them: numbers by value, whether integer or not, and texts by their bytes. One order has values of
// one kind.
bool IsLess(const MediaAssetSearchText::Value& left, const MediaAssetSearchText::Value& right) {
  return std::visit(
      [](const auto& a, const auto& b) {
        using Left = std::decay_t<decltype(a)>;
        using Right = std::decay_t<decltype(b)>;
        if constexpr (std::is_arithmetic_v<Left> && std::is_arithmetic_v<Right>) {
          // It holds each integer of 64 bits.
          return static_cast<long double>(a) < static_cast<long double>(b);
        } else if constexpr (std::is_same_v<Left, Right>) {
          return a < b;
        } else {
          return false;
        }
      },
      left, right);
}

}  // namespace

FederatedSearch::FederatedSearch(const MediaAssetSearch& searched)
    : search(searched), order(MediaAssetSearchText::OrderOf(searched)) {
  if (search.after) throw ArgumentException();
}

FederatedSearch::FederatedSearch(const MediaAssetSearch& searched, const FederatedAsset& last)
    : FederatedSearch(searched) {
  if (last.key == -1 || last.order != order) throw ArgumentException();
  fileBefore = last.file;
  valueBefore = last.value;
  keyBefore = last.key;
}

MediaAssetSearch FederatedSearch::Of(std::size_t file) const {
  MediaAssetSearch asked = search;
  asked.offset = 0;
  if (asked.count >= 0)
    asked.count = search.offset > HighestKey - search.count ? HighestKey : search.count + search.offset;
  if (!fileBefore) return asked;
  // Of what is equal in the order, the files before that of the asset have nothing left, those after it all.
  asked.after = MediaAssetSearch::Position{};
  asked.after->key = file == *fileBefore ? keyBefore : file < *fileBefore ? HighestKey : LowestKey;
  asked.after->value = valueBefore;
  return asked;
}

bool FederatedSearch::IsBefore(const Value& left, const Value& right) const {
  // Keys of different files say nothing of each other.
  if (order == MediaAssetOrder::Key) return false;
  return search.direction == Direction::Ascending ? IsLess(left, right) : IsLess(right, left);
}

FederatedPage FederatedSearch::Merge(std::vector<Answer> answers) const {
  FederatedPage page;
  // The files in the order in which equal assets follow.
  std::vector<std::size_t> answered;
  for (std::size_t file = 0; file < answers.size(); ++file) {
    if (answers[file].failure) {
      page.silent.push_back({file, std::move(*answers[file].failure)});
      continue;
    }
    page.total += answers[file].page.total;
    answered.insert(search.direction == Direction::Ascending ? answered.end() : answered.begin(), file);
  }
  std::vector<std::size_t> next(answers.size(), 0);
  for (int64_t place = 0; search.count < 0 || place < search.offset + search.count; ++place) {
    std::optional<std::size_t> first;
    for (const std::size_t file : answered) {
      if (next[file] == answers[file].orderValues.size()) continue;
      if (!first ||
          IsBefore(answers[file].orderValues[next[file]], answers[*first].orderValues[next[*first]]))
        first = file;
    }
    if (!first) break;
    const std::size_t taken = next[*first]++;
    if (place < search.offset) continue;
    FederatedAsset& asset = page.assets.emplace_back();
    asset.file = *first;
    asset.asset = std::move(answers[*first].page.assets[taken]);
    asset.order = order;
    asset.value = std::move(answers[*first].orderValues[taken]);
    asset.key = asset.asset.ObjectId();
  }
  return page;
}

}  // namespace Oru::DataModel::MediaAssets::Database
