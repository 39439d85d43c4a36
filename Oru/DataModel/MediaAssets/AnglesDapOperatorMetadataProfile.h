#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfile.h"
#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <cstdint>
#include <memory>

namespace Oru::DataModel::MediaAssets {

/// The operator's identity of a multi-angle group: the profile "oru.dapoperator" of an
/// `AnglesMediaAssetGroup`. Its object id is the key of the group's row.
///
/// A copy keeps the object id, as `Clone` does.
class ORU_DATAMODEL_EXPORT AnglesDapOperatorMetadataProfile : public BaseTypes::PersistentObject,
                                                              public BaseTypes::MetadataProfile {
 public:
  /// "oru.dapoperator", as that of the assets' profile.
  static BaseTypes::FullyQualifiedName StaticFullyQualifiedName();
  /// Nothing set, as a default profile.
  static AnglesDapOperatorMetadataProfile Empty();

  AnglesDapOperatorMetadataProfile();
  /// Takes the server, page, bank and clip; a group has no camera.
  explicit AnglesDapOperatorMetadataProfile(const MediaAssets::DapId& dapId);
  AnglesDapOperatorMetadataProfile(const AnglesDapOperatorMetadataProfile&);
  AnglesDapOperatorMetadataProfile(AnglesDapOperatorMetadataProfile&&) noexcept;
  AnglesDapOperatorMetadataProfile& operator=(const AnglesDapOperatorMetadataProfile&);
  AnglesDapOperatorMetadataProfile& operator=(AnglesDapOperatorMetadataProfile&&) noexcept;
  ~AnglesDapOperatorMetadataProfile() override;

  BaseTypes::FullyQualifiedName FullyQualifiedName() const override;
  /// Whether `other` is a profile of this class with the same content. Object ids don't count.
  bool Equals(const BaseTypes::MetadataProfile& other) const override;
  std::shared_ptr<BaseTypes::MetadataProfile> Clone() const override;

  /// `Equals`.
  bool operator==(const AnglesDapOperatorMetadataProfile& other) const noexcept;
  bool operator!=(const AnglesDapOperatorMetadataProfile& other) const noexcept { return !(*this == other); }

  /// The place of the four values, without a camera.
  /// @throws std::invalid_argument if page, bank or clip isn't between 0 and 255
  MediaAssets::DapId DapId() const;

  /// The server that keeps it; an empty one for none.
  const ZuServerId& ServerId() const noexcept { return serverId; }
  void ServerId(const ZuServerId& value) noexcept { serverId = value; }
  /// Page, bank and clip take any number; `DapId::Unset` where they aren't set.
  int32_t Page() const noexcept { return page; }
  void Page(int32_t value) noexcept { page = value; }
  /// As the page, any number.
  int32_t Bank() const noexcept { return bank; }
  void Bank(int32_t value) noexcept { bank = value; }
  /// As the page, any number.
  int32_t Clip() const noexcept { return clip; }
  void Clip(int32_t value) noexcept { clip = value; }

 private:
  ZuServerId serverId;
  int32_t page = MediaAssets::DapId::Unset;
  int32_t bank = MediaAssets::DapId::Unset;
  int32_t clip = MediaAssets::DapId::Unset;
};

}  // namespace Oru::DataModel::MediaAssets
