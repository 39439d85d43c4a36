#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

namespace Oru::BusinessEntityModel::Edits {

BaseTypes::FullyQualifiedName DapOperatorMetadataProfile::StaticFullyQualifiedName() {
  return DataModel::MediaAssets::DapOperatorMetadataProfile::StaticFullyQualifiedName();
}

DapOperatorMetadataProfile::DapOperatorMetadataProfile() = default;
DapOperatorMetadataProfile::DapOperatorMetadataProfile(const DapOperatorMetadataProfile&) = default;
DapOperatorMetadataProfile::DapOperatorMetadataProfile(DapOperatorMetadataProfile&&) noexcept = default;
DapOperatorMetadataProfile& DapOperatorMetadataProfile::operator=(const DapOperatorMetadataProfile&) =
    default;
DapOperatorMetadataProfile& DapOperatorMetadataProfile::operator=(DapOperatorMetadataProfile&&) noexcept =
    default;
DapOperatorMetadataProfile::~DapOperatorMetadataProfile() = default;

BaseTypes::FullyQualifiedName DapOperatorMetadataProfile::FullyQualifiedName() const {
  return StaticFullyQualifiedName();
}

bool DapOperatorMetadataProfile::Equals(const BaseTypes::MetadataProfile& other) const {
  const auto* profile = dynamic_cast<const DapOperatorMetadataProfile*>(&other);
  return profile != nullptr && *this == *profile;
}

std::shared_ptr<BaseTypes::MetadataProfile> DapOperatorMetadataProfile::Clone() const {
  return std::make_shared<DapOperatorMetadataProfile>(*this);
}

bool DapOperatorMetadataProfile::operator==(const DapOperatorMetadataProfile& other) const {
  return serverId == other.serverId && page == other.page && bank == other.bank && row == other.row &&
         umId == other.umId && varId == other.varId && videoElementsCount == other.videoElementsCount &&
         archiveStatus == other.archiveStatus && timecodeRegen == other.timecodeRegen;
}

}  // namespace Oru::BusinessEntityModel::Edits
