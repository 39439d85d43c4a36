#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/Optional.h"
#include "Oru/BusinessEntityModel/Edits/DapOperatorTimecodeRegen.h"
#include "Oru/BusinessEntityModel/Edits/Export.h"
#include "Oru/DataModel/MediaAssets/OperatorProfile.h"

namespace Oru::BusinessEntityModel::Edits {

/// The operator's view of a sequence: the profile "oru.dapoperator" of a `Sequence`. Its object id is the key
/// of the sequence's row.
///
/// A copy keeps the object id, as `Clone` does.
///
/// A profile without a server can be stored, but not read back: its number, 0, names no server.
class ORU_EDITS_EXPORT DapOperatorMetadataProfile
    : public DataModel::MediaAssets::OperatorProfile<DapOperatorMetadataProfile> {
 public:
  /// "oru.dapoperator", as that of the assets' profile.
  static BaseTypes::FullyQualifiedName StaticFullyQualifiedName();

  DapOperatorMetadataProfile();
  DapOperatorMetadataProfile(const DapOperatorMetadataProfile&);
  DapOperatorMetadataProfile(DapOperatorMetadataProfile&&) noexcept;
  DapOperatorMetadataProfile& operator=(const DapOperatorMetadataProfile&);
  DapOperatorMetadataProfile& operator=(DapOperatorMetadataProfile&&) noexcept;
  ~DapOperatorMetadataProfile() override;

  /// `Equals`.
  bool operator==(const DapOperatorMetadataProfile& other) const;

  /// How many video elements there are, as given.
  int VideoElementsCount() const noexcept { return videoElementsCount; }
  void VideoElementsCount(int value) noexcept { videoElementsCount = value; }
  /// Absent where the time code isn't regenerated.
  const BaseTypes::Optional<DapOperatorTimecodeRegen>& TimecodeRegen() const noexcept {
    return timecodeRegen;
  }
  /// Takes settings, or an absent value to remove them.
  void TimecodeRegen(const BaseTypes::Optional<DapOperatorTimecodeRegen>& value) { timecodeRegen = value; }

 private:
  int videoElementsCount = 0;
  BaseTypes::Optional<DapOperatorTimecodeRegen> timecodeRegen;
};

}  // namespace Oru::BusinessEntityModel::Edits
