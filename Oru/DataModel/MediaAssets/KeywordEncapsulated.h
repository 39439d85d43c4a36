#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// One keyword of a clip, as a row: its place in the operator's list and the key of the asset.
struct ORU_DATAMODEL_EXPORT KeywordEncapsulated {
  KeywordEncapsulated() = default;
  /// Refers to the object, which stays the caller's and must outlive this.
  KeywordEncapsulated(int64_t mediaAssetKey, int32_t place,
                      BusinessEntityModel::BaseTypes::Utf8String keyword)
      : fk(mediaAssetKey), nr(place), value(std::move(keyword)) {}

  /// The key of the owner.
  int64_t fk = -1;
  /// From 0.
  int32_t nr = 0;
  /// The keyword.
  BusinessEntityModel::BaseTypes::Utf8String value;
};

}  // namespace Oru::DataModel::MediaAssets
