#include "Oru/DataModel/MediaAssets/MediaAssetGroupItem.h"

#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <utility>

namespace Oru::DataModel::MediaAssets {

MediaAssetGroupItem::MediaAssetGroupItem() = default;
MediaAssetGroupItem::MediaAssetGroupItem(MediaAssetReference asset) : mediaAsset(std::move(asset)) {}
MediaAssetGroupItem::MediaAssetGroupItem(const MediaAssetGroupItem&) = default;
MediaAssetGroupItem::MediaAssetGroupItem(MediaAssetGroupItem&&) noexcept = default;
MediaAssetGroupItem& MediaAssetGroupItem::operator=(const MediaAssetGroupItem&) = default;
MediaAssetGroupItem& MediaAssetGroupItem::operator=(MediaAssetGroupItem&&) noexcept = default;
MediaAssetGroupItem::~MediaAssetGroupItem() = default;

bool MediaAssetGroupItem::operator==(const MediaAssetGroupItem& other) const {
  return mediaAsset == other.mediaAsset;
}

bool MediaAssetGroupItem::operator!=(const MediaAssetGroupItem& other) const {
  return !(*this == other);
}

std::unique_ptr<MediaAssetGroupItem> MediaAssetGroupItem::Clone() const {
  return std::make_unique<MediaAssetGroupItem>(*this);
}

void MediaAssetGroupItem::MediaAsset(const MediaAssetReference& value) {
  mediaAsset = value;
}

void MediaAssetGroupItem::MediaAsset(MediaAssetReference&& value) noexcept {
  mediaAsset = std::move(value);
}

}  // namespace Oru::DataModel::MediaAssets
