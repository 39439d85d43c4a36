#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// How the active picture fills the frame. The numbers are stored in files and never change; a number
/// without a name can come out of a file and is carried as it is.
enum class Boxing : int32_t {
  unknown = 0,
  topaligned = 1,
  wide = 2,
  fullframe = 3,
  pillarbox = 4,
  letterbox = 5,
  window = 6,
  protect14x9 = 7,
  protect4x3 = 8,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(Boxing value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, Boxing& value);

}  // namespace Oru::DataModel::MediaAssets
