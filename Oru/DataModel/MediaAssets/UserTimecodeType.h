#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// Where the user time code of a clip comes from: ancillary data (VITC or LTC) or the analogue LTC input.
/// The numbers are stored in files and never change; a number without a name can come out of a file and is
/// carried as it is.
enum class UserTimecodeType : int32_t {
  HancVitc = 0,
  HancLtc = 1,
  AnalLtc = 2,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(UserTimecodeType value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, UserTimecodeType& value);

}  // namespace Oru::DataModel::MediaAssets
