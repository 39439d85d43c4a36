#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfile.h"
#include "Oru/BusinessEntityModel/BaseTypes/Optional.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/BusinessEntityModel/Edits/DapOperatorTimecodeRegen.h"
#include "Oru/BusinessEntityModel/Edits/Export.h"
#include "Oru/DataModel/MediaAssets/ArchiveStatus.h"
#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <memory>
#include <string>
#include <utility>

namespace Oru::BusinessEntityModel::Edits {

/// The operator's view of a sequence: the profile "oru.dapoperator" of a `Sequence`. Its object id is the key
/// of the sequence's row.
///
/// A copy keeps the object id, as `Clone` does.
///
/// A profile without a server can be stored, but not read back: its number, 0, names no server.
class ORU_EDITS_EXPORT DapOperatorMetadataProfile : public BaseTypes::MetadataProfile,
                                                    public BaseTypes::PersistentObject {
 public:
  /// "oru.dapoperator", as that of the assets' profile.
  static BaseTypes::FullyQualifiedName StaticFullyQualifiedName();

  DapOperatorMetadataProfile();
  DapOperatorMetadataProfile(const DapOperatorMetadataProfile&);
  DapOperatorMetadataProfile(DapOperatorMetadataProfile&&) noexcept;
  DapOperatorMetadataProfile& operator=(const DapOperatorMetadataProfile&);
  DapOperatorMetadataProfile& operator=(DapOperatorMetadataProfile&&) noexcept;
  ~DapOperatorMetadataProfile() override;

  BaseTypes::FullyQualifiedName FullyQualifiedName() const override;
  /// Whether `other` is a profile of this class with the same content. Object ids don't count.
  bool Equals(const BaseTypes::MetadataProfile& other) const override;
  std::shared_ptr<BaseTypes::MetadataProfile> Clone() const override;

  /// `Equals`.
  bool operator==(const DapOperatorMetadataProfile& other) const;
  bool operator!=(const DapOperatorMetadataProfile& other) const { return !(*this == other); }

  /// The server that keeps it; an empty one for none.
  const DataModel::MediaAssets::ZuServerId& ServerId() const noexcept { return serverId; }
  void ServerId(const DataModel::MediaAssets::ZuServerId& value) noexcept { serverId = value; }
  /// Page, bank and row take any number. In a new profile page and row are `DapId::Unset` and the bank is 0.
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
  /// How many video elements there are, as given.
  int VideoElementsCount() const noexcept { return videoElementsCount; }
  void VideoElementsCount(int value) noexcept { videoElementsCount = value; }
  /// Whether it has been archived.
  DataModel::MediaAssets::ArchiveStatus ArchiveStatus() const noexcept { return archiveStatus; }
  void ArchiveStatus(DataModel::MediaAssets::ArchiveStatus value) noexcept { archiveStatus = value; }
  /// Absent where the time code isn't regenerated.
  const BaseTypes::Optional<DapOperatorTimecodeRegen>& TimecodeRegen() const noexcept {
    return timecodeRegen;
  }
  /// Takes settings, or an absent value to remove them.
  void TimecodeRegen(const BaseTypes::Optional<DapOperatorTimecodeRegen>& value) { timecodeRegen = value; }

 private:
  DataModel::MediaAssets::ZuServerId serverId;
  int page = DataModel::MediaAssets::DapId::Unset;
  int bank = 0;
  int row = DataModel::MediaAssets::DapId::Unset;
  std::string umId;
  std::string varId;
  int videoElementsCount = 0;
  DataModel::MediaAssets::ArchiveStatus archiveStatus = DataModel::MediaAssets::ArchiveStatus::None;
  BaseTypes::Optional<DapOperatorTimecodeRegen> timecodeRegen;
};

}  // namespace Oru::BusinessEntityModel::Edits
