#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroupItem.h"

#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// An asset as one angle of a multi-angle group. Its place in the group's items is the index of the angle.
class ORU_DATAMODEL_EXPORT AnglesMediaAssetGroupItem : public MediaAssetGroupItem {
 public:
  AnglesMediaAssetGroupItem();
  /// An angle of that name, of the asset, if it is given.
  explicit AnglesMediaAssetGroupItem(BaseTypes::Utf8String angleName);
  AnglesMediaAssetGroupItem(BaseTypes::Utf8String angleName, MediaAssetReference asset);
  AnglesMediaAssetGroupItem(const AnglesMediaAssetGroupItem&);
  AnglesMediaAssetGroupItem(AnglesMediaAssetGroupItem&&) noexcept;
  AnglesMediaAssetGroupItem& operator=(const AnglesMediaAssetGroupItem&);
  AnglesMediaAssetGroupItem& operator=(AnglesMediaAssetGroupItem&&) noexcept;
  ~AnglesMediaAssetGroupItem() override;

  /// Whether `other` is an angle too, of the same asset and the same name. A plain item that is compared with
  /// an angle of its asset calls it equal; the angle doesn't.
  bool operator==(const MediaAssetGroupItem& other) const override;
  bool operator!=(const MediaAssetGroupItem& other) const override;

  std::unique_ptr<MediaAssetGroupItem> Clone() const override;

  /// The name of the angle.
  const BaseTypes::Utf8String& Name() const noexcept { return name; }
  void Name(BaseTypes::Utf8String value) noexcept { name = std::move(value); }

 private:
  BaseTypes::Utf8String name;
};

}  // namespace Oru::DataModel::MediaAssets
