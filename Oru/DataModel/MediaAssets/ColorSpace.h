#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// The colour space of a picture. The numbers are stored in files and never change; a number without a name
/// can come out of a file and is carried as it is.
enum class ColorSpace : int32_t {
  unknown = 0,
  BT709 = 1,
  BT601 = 2,
  BT601_JPEG = 3,
  BT2020 = 4,
  FCC = 5,
  SMPTE_170M = 6,
  SMPTE_240M = 7,
  SRGB = 8,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(ColorSpace value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, ColorSpace& value);

}  // namespace Oru::DataModel::MediaAssets
