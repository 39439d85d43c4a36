#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

namespace Oru::BusinessEntityModel::Edits {

BaseTypes::FullyQualifiedName DapOperatorMetadataProfile::StaticFullyQualifiedName() {
  return DataModel::MediaAssets::DapOperatorMetadataProfile::StaticFullyQualifiedName();
}

DapOperatorMetadataProfile::DapOperatorMetadataProfile() : OperatorProfile(0) {}
DapOperatorMetadataProfile::DapOperatorMetadataProfile(const DapOperatorMetadataProfile&) = default;
DapOperatorMetadataProfile::DapOperatorMetadataProfile(DapOperatorMetadataProfile&&) noexcept = default;
DapOperatorMetadataProfile& DapOperatorMetadataProfile::operator=(const DapOperatorMetadataProfile&) =
    default;
DapOperatorMetadataProfile& DapOperatorMetadataProfile::operator=(DapOperatorMetadataProfile&&) noexcept =
    default;
DapOperatorMetadataProfile::~DapOperatorMetadataProfile() = default;

bool DapOperatorMetadataProfile::operator==(const DapOperatorMetadataProfile& other) const {
  return HasSameCommonPart(other) && videoElementsCount == other.videoElementsCount &&
         timecodeRegen == other.timecodeRegen;
}

}  // namespace Oru::BusinessEntityModel::Edits
