#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

namespace Oru::DataModel::MediaAssets {

BaseTypes::FullyQualifiedName AnglesDapOperatorMetadataProfile::StaticFullyQualifiedName() {
  return DapOperatorMetadataProfile::StaticFullyQualifiedName();
}

AnglesDapOperatorMetadataProfile AnglesDapOperatorMetadataProfile::Empty() {
  return {};
}

AnglesDapOperatorMetadataProfile::AnglesDapOperatorMetadataProfile() = default;
AnglesDapOperatorMetadataProfile::AnglesDapOperatorMetadataProfile(const MediaAssets::DapId& dapId)
    : serverId(dapId.ServerId()), page(dapId.Page()), bank(dapId.Bank()), clip(dapId.Clip()) {}
AnglesDapOperatorMetadataProfile::AnglesDapOperatorMetadataProfile(const AnglesDapOperatorMetadataProfile&) =
    default;
AnglesDapOperatorMetadataProfile::AnglesDapOperatorMetadataProfile(
    AnglesDapOperatorMetadataProfile&&) noexcept = default;
AnglesDapOperatorMetadataProfile& AnglesDapOperatorMetadataProfile::operator=(
    const AnglesDapOperatorMetadataProfile&) = default;
AnglesDapOperatorMetadataProfile& AnglesDapOperatorMetadataProfile::operator=(
    AnglesDapOperatorMetadataProfile&&) noexcept = default;
AnglesDapOperatorMetadataProfile::~AnglesDapOperatorMetadataProfile() = default;

BaseTypes::FullyQualifiedName AnglesDapOperatorMetadataProfile::FullyQualifiedName() const {
  return StaticFullyQualifiedName();
}

bool AnglesDapOperatorMetadataProfile::Equals(const BaseTypes::MetadataProfile& other) const {
  const auto* profile = dynamic_cast<const AnglesDapOperatorMetadataProfile*>(&other);
  return profile != nullptr && *this == *profile;
}

std::shared_ptr<BaseTypes::MetadataProfile> AnglesDapOperatorMetadataProfile::Clone() const {
  return std::make_shared<AnglesDapOperatorMetadataProfile>(*this);
}

bool AnglesDapOperatorMetadataProfile::operator==(
    const AnglesDapOperatorMetadataProfile& other) const noexcept {
  return serverId == other.serverId && page == other.page && bank == other.bank && clip == other.clip;
}

MediaAssets::DapId AnglesDapOperatorMetadataProfile::DapId() const {
  return MediaAssets::DapId(serverId, page, bank, clip);
}

}  // namespace Oru::DataModel::MediaAssets
