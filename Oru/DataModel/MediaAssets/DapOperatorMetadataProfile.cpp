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

DapOperatorMetadataProfile::DapOperatorMetadataProfile() : OperatorProfile(MediaAssets::DapId::Unset) {}
DapOperatorMetadataProfile::DapOperatorMetadataProfile(const DapOperatorMetadataProfile&) = default;
DapOperatorMetadataProfile::DapOperatorMetadataProfile(DapOperatorMetadataProfile&&) noexcept = default;
DapOperatorMetadataProfile& DapOperatorMetadataProfile::operator=(const DapOperatorMetadataProfile&) =
    default;
DapOperatorMetadataProfile& DapOperatorMetadataProfile::operator=(DapOperatorMetadataProfile&&) noexcept =
    default;
DapOperatorMetadataProfile::~DapOperatorMetadataProfile() = default;

bool DapOperatorMetadataProfile::operator==(const DapOperatorMetadataProfile& other) const {
  return HasSameCommonPart(other) && camera == other.camera && rating == other.rating &&
         userTimecodeType == other.userTimecodeType && primaryTimecode == other.primaryTimecode &&
         userTimecode == other.userTimecode && todTimecode == other.todTimecode && icon == other.icon &&
         color == other.color && fillAndKeyType == other.fillAndKeyType &&
         fillAndKeyMediaAssetId == other.fillAndKeyMediaAssetId && keywords == other.keywords &&
         isUserProtected == other.isUserProtected && isDapUiProtected == other.isDapUiProtected;
}

MediaAssets::DapId DapOperatorMetadataProfile::DapId() const {
  return MediaAssets::DapId(ServerId(), Page(), Bank(), Row(), camera);
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
