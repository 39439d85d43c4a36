#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"

#include "Oru/DataModel/MediaAssets/EntityGraph.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <algorithm>

namespace Oru::DataModel::MediaAssets {

MediaAssetGroup::MediaAssetGroup() = default;
MediaAssetGroup::MediaAssetGroup(MediaAssetGroupId groupId, BaseTypes::Utf8String groupName)
    : id(std::move(groupId)), name(std::move(groupName)) {}
MediaAssetGroup::MediaAssetGroup(const MediaAssetGroup&) = default;
MediaAssetGroup::MediaAssetGroup(MediaAssetGroup&&) noexcept = default;
MediaAssetGroup& MediaAssetGroup::operator=(const MediaAssetGroup&) = default;
MediaAssetGroup& MediaAssetGroup::operator=(MediaAssetGroup&&) noexcept = default;
MediaAssetGroup::~MediaAssetGroup() = default;

std::unique_ptr<MediaAssetGroup> MediaAssetGroup::Clone() const {
  auto clone = std::make_unique<MediaAssetGroup>(*this);
  clone->items = EntityGraph::CloneElements(items);
  return clone;
}

std::shared_ptr<MediaAssetGroupItem> MediaAssetGroup::Find(const MediaAssetId& assetId) const {
  const auto found = std::find_if(items.begin(), items.end(), [&assetId](const auto& item) {
    return item && item->MediaAsset().Id() == assetId;
  });
  return found != items.end() ? *found : nullptr;
}

std::shared_ptr<const MediaAsset> MediaAssetGroup::Asset(std::size_t index) const {
  return ItemReference(index).Pointer();
}

bool MediaAssetGroup::AreItemsEqual(const MediaAssetGroup& other) const {
  return EntityGraph::AreElementsEqual(items, other.items,
                                       EntityGraph::ArePointeesEqual<std::shared_ptr<MediaAssetGroupItem>>);
}

bool MediaAssetGroup::operator==(const MediaAssetGroup& other) const {
  return id == other.id && type == other.type && name == other.name && *metadata == *other.metadata &&
         AreItemsEqual(other);
}

}  // namespace Oru::DataModel::MediaAssets
