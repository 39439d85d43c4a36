#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"

#include "Oru/DataModel/MediaAssets/EntityGraph.h"

#include <utility>

namespace Oru::DataModel::MediaAssets {

AnglesMediaAssetGroup::AnglesMediaAssetGroup() = default;
AnglesMediaAssetGroup::AnglesMediaAssetGroup(MediaAssetGroupId groupId, BaseTypes::Utf8String groupName)
    : MediaAssetGroup(std::move(groupId), std::move(groupName)) {}
AnglesMediaAssetGroup::AnglesMediaAssetGroup(const AnglesMediaAssetGroup&) = default;
AnglesMediaAssetGroup::AnglesMediaAssetGroup(AnglesMediaAssetGroup&&) noexcept = default;
AnglesMediaAssetGroup& AnglesMediaAssetGroup::operator=(const AnglesMediaAssetGroup&) = default;
AnglesMediaAssetGroup& AnglesMediaAssetGroup::operator=(AnglesMediaAssetGroup&&) noexcept = default;
AnglesMediaAssetGroup::~AnglesMediaAssetGroup() = default;

std::unique_ptr<MediaAssetGroup> AnglesMediaAssetGroup::Clone() const {
  auto clone = std::make_unique<AnglesMediaAssetGroup>(*this);
  clone->Items() = EntityGraph::CloneElements(Items());
  return clone;
}

}  // namespace Oru::DataModel::MediaAssets
