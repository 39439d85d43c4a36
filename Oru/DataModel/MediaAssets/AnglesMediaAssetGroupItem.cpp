#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"

namespace Oru::DataModel::MediaAssets {

AnglesMediaAssetGroupItem::AnglesMediaAssetGroupItem() = default;
AnglesMediaAssetGroupItem::AnglesMediaAssetGroupItem(BaseTypes::Utf8String angleName)
    : name(std::move(angleName)) {}
AnglesMediaAssetGroupItem::AnglesMediaAssetGroupItem(BaseTypes::Utf8String angleName,
                                                     MediaAssetReference asset)
    : MediaAssetGroupItem(std::move(asset)), name(std::move(angleName)) {}
AnglesMediaAssetGroupItem::AnglesMediaAssetGroupItem(const AnglesMediaAssetGroupItem&) = default;
AnglesMediaAssetGroupItem::AnglesMediaAssetGroupItem(AnglesMediaAssetGroupItem&&) noexcept = default;
AnglesMediaAssetGroupItem& AnglesMediaAssetGroupItem::operator=(const AnglesMediaAssetGroupItem&) = default;
AnglesMediaAssetGroupItem& AnglesMediaAssetGroupItem::operator=(AnglesMediaAssetGroupItem&&) noexcept =
    default;
AnglesMediaAssetGroupItem::~AnglesMediaAssetGroupItem() = default;

bool AnglesMediaAssetGroupItem::operator==(const MediaAssetGroupItem& other) const {
  const auto* angle = dynamic_cast<const AnglesMediaAssetGroupItem*>(&other);
  return angle != nullptr && MediaAssetGroupItem::operator==(other) && name == angle->name;
}

bool AnglesMediaAssetGroupItem::operator!=(const MediaAssetGroupItem& other) const {
  return !(*this == other);
}

std::unique_ptr<MediaAssetGroupItem> AnglesMediaAssetGroupItem::Clone() const {
  return std::make_unique<AnglesMediaAssetGroupItem>(*this);
}

}  // namespace Oru::DataModel::MediaAssets
