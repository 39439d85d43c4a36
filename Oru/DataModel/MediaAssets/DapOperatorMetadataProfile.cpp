#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include <stdexcept>

namespace Oru::DataModel::MediaAssets {

namespace {

void CheckKeywordIndex(std::size_t index) {
  if (index <= DapOperatorMetadataProfile::MaxKeywordIndex) return;
  throw std::out_of_range("Index " + std::to_string(index) + " of a keyword must not be above " +
                          std::to_string(DapOperatorMetadataProfile::MaxKeywordIndex));
}

}  // namespace

BaseTypes::FullyQualifiedName DapOperatorMetadataProfile::StaticFullyQualifiedName() {
  static const BaseTypes::FullyQualifiedName name("oru.dapoperator");
  return name;
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
         camera == other.camera && umId == other.umId && varId == other.varId && rating == other.rating &&
         archiveStatus == other.archiveStatus && userTimecodeType == other.userTimecodeType &&
         primaryTimecode == other.primaryTimecode && userTimecode == other.userTimecode &&
         todTimecode == other.todTimecode && icon == other.icon && color == other.color &&
         fillAndKeyType == other.fillAndKeyType && fillAndKeyMediaAssetId == other.fillAndKeyMediaAssetId &&
         keywords == other.keywords && isUserProtected == other.isUserProtected &&
         isDapUiProtected == other.isDapUiProtected;
}

MediaAssets::DapId DapOperatorMetadataProfile::DapId() const {
  return MediaAssets::DapId(serverId, page, bank, row, camera);
}

void DapOperatorMetadataProfile::Keywords(StringVector value) {
  if (!value.empty()) CheckKeywordIndex(value.size() - 1);
  keywords = std::move(value);
}

void DapOperatorMetadataProfile::Keyword(unsigned int index, BaseTypes::Utf8String value) {
  CheckKeywordIndex(index);
  if (index >= keywords.size()) keywords.resize(std::size_t{index} + 1);
  keywords[index] = std::move(value);
}

}  // namespace Oru::DataModel::MediaAssets
