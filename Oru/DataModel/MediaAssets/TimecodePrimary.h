#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// Which of its two time codes a clip is shown with: time of day or user. The numbers are stored in files
/// and never change; a number without a name can come out of a file and is carried as it is.
enum class TimecodePrimary : int32_t {
  NotSet = 0,
  Tod = 1,
  User = 2,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(TimecodePrimary value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, TimecodePrimary& value);

}  // namespace Oru::DataModel::MediaAssets
