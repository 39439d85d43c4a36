#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"

#include <memory>

namespace Oru::DataModel::MediaAssets {

/// A multi-angle group: its items are angles (`AnglesMediaAssetGroupItem`), in the order of the angles, and
/// its metadata may hold the operator's identity (`AnglesDapOperatorMetadataProfile`).
class ORU_DATAMODEL_EXPORT AnglesMediaAssetGroup : public MediaAssetGroup {
 public:
  AnglesMediaAssetGroup();
  /// A group without items.
  AnglesMediaAssetGroup(MediaAssetGroupId groupId, BaseTypes::Utf8String groupName);
  AnglesMediaAssetGroup(const AnglesMediaAssetGroup&);
  AnglesMediaAssetGroup(AnglesMediaAssetGroup&&) noexcept;
  AnglesMediaAssetGroup& operator=(const AnglesMediaAssetGroup&);
  AnglesMediaAssetGroup& operator=(AnglesMediaAssetGroup&&) noexcept;
  ~AnglesMediaAssetGroup() override;

  std::unique_ptr<MediaAssetGroup> Clone() const override;
};

}  // namespace Oru::DataModel::MediaAssets
