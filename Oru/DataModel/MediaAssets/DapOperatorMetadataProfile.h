#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/FillAndKeyType.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/OperatorProfile.h"
#include "Oru/DataModel/MediaAssets/TimecodePrimary.h"
#include "Oru/DataModel/MediaAssets/UserTimecodeType.h"
#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets {

using StringVector = std::vector<BaseTypes::Utf8String>;

/// The operator's view of a clip: the profile "oru.dapoperator" of a media asset. Its object id is the key of
/// the asset's row.
///
/// A copy keeps the object id, as `Clone` does.
class ORU_DATAMODEL_EXPORT DapOperatorMetadataProfile : public OperatorProfile<DapOperatorMetadataProfile> {
 public:
  /// How many keywords an operator panel shows. A profile holds more if it is given more.
  static constexpr unsigned int Zu3MaxKeyword = 3;
  /// The highest index of a keyword.
  static constexpr unsigned int MaxKeywordIndex = 65535;

  /// "oru.dapoperator".
  static BaseTypes::FullyQualifiedName StaticFullyQualifiedName();

  DapOperatorMetadataProfile();
  DapOperatorMetadataProfile(const DapOperatorMetadataProfile&);
  DapOperatorMetadataProfile(DapOperatorMetadataProfile&&) noexcept;
  DapOperatorMetadataProfile& operator=(const DapOperatorMetadataProfile&);
  DapOperatorMetadataProfile& operator=(DapOperatorMetadataProfile&&) noexcept;
  ~DapOperatorMetadataProfile() override;

  /// `Equals`.
  bool operator==(const DapOperatorMetadataProfile& other) const;

  /// The clip's place, of `ServerId`, `Page`, `Bank`, `Row` and `Camera`.
  /// @throws std::invalid_argument if page, bank or row isn't between 0 and 255
  MediaAssets::DapId DapId() const;

  /// 0 for no camera.
  char Camera() const noexcept { return camera; }
  void Camera(char value) noexcept { camera = value; }
  /// Any number; 0 in a new profile.
  int32_t Rating() const noexcept { return rating; }
  void Rating(int32_t value) noexcept { rating = value; }
  /// Where the user's time code comes from.
  MediaAssets::UserTimecodeType UserTimecodeType() const noexcept { return userTimecodeType; }
  void UserTimecodeType(MediaAssets::UserTimecodeType value) noexcept { userTimecodeType = value; }
  /// Which of the time codes the operator works with.
  TimecodePrimary PrimaryTimecode() const noexcept { return primaryTimecode; }
  void PrimaryTimecode(TimecodePrimary value) noexcept { primaryTimecode = value; }
  /// A file keeps the rates 50/1 and 60/1 (drop or not) of the two time codes, and that they have a date; at
  /// another rate only the count of samples comes back.
  const TimePoints::TimeCode& UserTimecode() const noexcept { return userTimecode; }
  void UserTimecode(const TimePoints::TimeCode& value) noexcept { userTimecode = value; }
  /// The time code of the time of day, kept as `UserTimecode`.
  const TimePoints::TimeCode& TodTimecode() const noexcept { return todTimecode; }
  void TodTimecode(const TimePoints::TimeCode& value) noexcept { todTimecode = value; }
  /// The name of the icon, as given.
  const std::string& Icon() const noexcept { return icon; }
  void Icon(std::string value) noexcept { icon = std::move(value); }
  /// The colour, in the caller's own coding of 32 bits.
  uint32_t Color() const noexcept { return color; }
  void Color(uint32_t value) noexcept { color = value; }
  /// Which half of a fill and key pair the clip is.
  MediaAssets::FillAndKeyType FillAndKeyType() const noexcept { return fillAndKeyType; }
  void FillAndKeyType(MediaAssets::FillAndKeyType value) noexcept { fillAndKeyType = value; }
  /// The asset that is the other half of the fill and key pair.
  const BaseTypes::Identifier& FillAndKeyMediaAssetId() const noexcept { return fillAndKeyMediaAssetId; }
  void FillAndKeyMediaAssetId(BaseTypes::Identifier value) noexcept {
    fillAndKeyMediaAssetId = std::move(value);
  }

  /// The keywords in order; empty ones keep their places.
  const StringVector& Keywords() const noexcept { return keywords; }
  /// @throws std::out_of_range, with the keywords as they were, for more than `MaxKeywordIndex` + 1
  void Keywords(StringVector value);
  /// Sets the keyword at an index from 0. A list that is too short grows up to it by empty keywords.
  /// @throws std::out_of_range above `MaxKeywordIndex`
  void Keyword(unsigned int index, BaseTypes::Utf8String value);

  // A clip that is protected from the operator's interface is protected for the user too.

  /// Whether the clip is protected for the user.
  bool IsUserProtected() const noexcept { return isUserProtected; }
  /// False has no effect while the clip is protected from the interface.
  void UserProtected(bool value) noexcept { isUserProtected = value || isDapUiProtected; }
  /// Whether the clip is protected from the operator's interface.
  bool IsDapUiProtected() const noexcept { return isDapUiProtected; }
  /// True protects the clip for the user as well; false leaves that protection as it is.
  void DapUIProtected(bool value) noexcept {
    isDapUiProtected = value;
    isUserProtected = isUserProtected || value;
  }

 private:
  char camera = 0;
  int32_t rating = 0;
  MediaAssets::UserTimecodeType userTimecodeType = MediaAssets::UserTimecodeType::HancVitc;
  TimecodePrimary primaryTimecode = TimecodePrimary::NotSet;
  TimePoints::TimeCode userTimecode;
  TimePoints::TimeCode todTimecode;
  std::string icon;
  uint32_t color = 0;
  MediaAssets::FillAndKeyType fillAndKeyType = MediaAssets::FillAndKeyType::unknown;
  BaseTypes::Identifier fillAndKeyMediaAssetId;
  StringVector keywords;
  bool isUserProtected = false;
  bool isDapUiProtected = false;
};

}  // namespace Oru::DataModel::MediaAssets
