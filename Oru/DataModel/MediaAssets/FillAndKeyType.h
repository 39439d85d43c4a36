#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// Which half of a fill and key pair a clip is. The numbers are stored in files and never change; a number
/// without a name can come out of a file and is carried as it is.
enum class FillAndKeyType : int32_t {
  unknown = 0,
  fill = 1,
  key = 2,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(FillAndKeyType value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, FillAndKeyType& value);

}  // namespace Oru::DataModel::MediaAssets
