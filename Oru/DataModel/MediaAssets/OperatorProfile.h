#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfile.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/DataModel/MediaAssets/ArchiveStatus.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <memory>
#include <string>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// What the operators' profiles of assets and of sequences have in common.
/// @tparam Profile  the class of the profile, derived from this one
template <class Profile>
class ORU_DATAMODEL_EXPORT OperatorProfile : public BaseTypes::MetadataProfile,
                                             public BaseTypes::PersistentObject {
 public:
  ~OperatorProfile() override = default;

  BaseTypes::FullyQualifiedName FullyQualifiedName() const override {
    return Profile::StaticFullyQualifiedName();
  }
  /// Whether `other` is a profile of this class with the same content. Object ids don't count.
  bool Equals(const BaseTypes::MetadataProfile& other) const override {
    const auto* profile = dynamic_cast<const Profile*>(&other);
    return profile != nullptr && Itself() == *profile;
  }
  std::shared_ptr<BaseTypes::MetadataProfile> Clone() const override {
    return std::make_shared<Profile>(Itself());
  }
  /// `Equals`.
  bool operator!=(const Profile& other) const { return !(Itself() == other); }

  /// The server that keeps it; an empty one for none.
  const ZuServerId& ServerId() const noexcept { return serverId; }
  void ServerId(const ZuServerId& value) noexcept { serverId = value; }
  /// Page, bank and row take any number; `DapId::Unset` where they aren't set. In a new profile of a sequence
  /// the bank is 0.
  int Page() const noexcept { return page; }
  void Page(int value) noexcept { page = value; }
  /// As the page, any number.
  int Bank() const noexcept { return bank; }
  void Bank(int value) noexcept { bank = value; }
  /// As the page, any number.
  int Row() const noexcept { return row; }
  void Row(int value) noexcept { row = value; }
  /// Identifiers that other systems know the material by, as given:
  const std::string& UmId() const noexcept { return umId; }
  void UmId(std::string value) noexcept { umId = std::move(value); }
  const std::string& VarId() const noexcept { return varId; }
  void VarId(std::string value) noexcept { varId = std::move(value); }
  /// Whether it has been archived.
  MediaAssets::ArchiveStatus ArchiveStatus() const noexcept { return archiveStatus; }
  void ArchiveStatus(MediaAssets::ArchiveStatus value) noexcept { archiveStatus = value; }

 protected:
  /// @param newBank  the bank of a new profile
  explicit OperatorProfile(int newBank) : bank(newBank) {}
  OperatorProfile(const OperatorProfile&) = default;
  OperatorProfile(OperatorProfile&&) noexcept = default;
  OperatorProfile& operator=(const OperatorProfile&) = default;
  OperatorProfile& operator=(OperatorProfile&&) noexcept = default;

  /// Whether the common part is the same in both.
  bool HasSameCommonPart(const OperatorProfile& other) const {
    return serverId == other.serverId && page == other.page && bank == other.bank && row == other.row &&
           umId == other.umId && varId == other.varId && archiveStatus == other.archiveStatus;
  }

 private:
  const Profile& Itself() const { return static_cast<const Profile&>(*this); }

  ZuServerId serverId;
  int page = DapId::Unset;
  int bank;
  int row = DapId::Unset;
  std::string umId;
  std::string varId;
  MediaAssets::ArchiveStatus archiveStatus = MediaAssets::ArchiveStatus::None;
};

}  // namespace Oru::DataModel::MediaAssets
