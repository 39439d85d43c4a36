#include "Oru/DataModel/MediaAssets/Database/MediaAssetRange.h"

#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetReader.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// A position at one of the assets.
class MediaAssetRange::Walk {
 public:
  Walk(std::shared_ptr<MediaAssetReader> source, const MediaAssetSearch& search, MediaAssetParts readParts)
      : reader(std::move(source)), parts(readParts), keys(reader->Keys(search)) {}

  MediaAsset& Current() { return *current; }

  /// Steps to the next asset that is still stored; false at the end.
  bool Next() {
    current.reset();
    while (!current && next < keys.size()) {
      if (next == pageEnd) ReadPage();
      TakeFromPage();
    }
    return current.has_value();
  }

 private:
  static constexpr std::size_t PageLength = 64;

  void ReadPage() {
    const auto begin = keys.begin() + static_cast<std::ptrdiff_t>(next);
    const std::size_t length = std::min(PageLength, keys.size() - next);
    writtenRows = reader->WrittenRows();
    page = reader->Read(std::vector<int64_t>(begin, begin + static_cast<std::ptrdiff_t>(length)), parts);
    inPage = 0;
    pageEnd = next + length;
  }

  void TakeFromPage() {
    const int64_t key = keys[next++];
    const bool isInPage = inPage < page.size() && page[inPage].ObjectId() == key;
    if (!isInPage) return;
    MediaAsset& read = page[inPage++];
    if (reader->WrittenRows() == writtenRows) {
      current = std::move(read);
      return;
    }
    std::vector<MediaAsset> again = reader->Read(std::vector<int64_t>{key}, parts);
    if (!again.empty()) current = std::move(again.front());
  }

  std::shared_ptr<MediaAssetReader> reader;
  const MediaAssetParts parts;
  const std::vector<int64_t> keys;
  // Where the next asset is among the keys, where its page ends there, and where it is in the page.
  std::size_t next = 0;
  std::size_t pageEnd = 0;
  std::size_t inPage = 0;
  std::vector<MediaAsset> page;
  // How many rows the connection had written when the page was read.
  int64_t writtenRows = 0;
  std::optional<MediaAsset> current;
};

MediaAssetRange::MediaAssetRange(std::shared_ptr<MediaAssetReader> source, MediaAssetSearch searched,
                                 MediaAssetParts readParts)
    : reader(std::move(source)), search(std::move(searched)), parts(readParts) {}

MediaAssetRange::Iterator MediaAssetRange::begin() const {
  return ++Iterator(std::make_shared<Walk>(reader, search, parts));
}

MediaAssetRange::Iterator::Iterator(std::shared_ptr<Walk> begun) : walk(std::move(begun)) {}

MediaAsset& MediaAssetRange::Iterator::operator*() const {
  return walk->Current();
}

MediaAssetRange::Iterator& MediaAssetRange::Iterator::operator++() {
  if (!walk->Next()) walk.reset();
  return *this;
}

}  // namespace Oru::DataModel::MediaAssets::Database
