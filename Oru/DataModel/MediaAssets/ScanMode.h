#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// Whether a picture is scanned as a whole or in two fields. The numbers are stored in files and never
/// change; a number without a name can come out of a file and is carried as it is.
enum class ScanMode : int32_t {
  unknown = 0,
  progressive = 1,
  interlaced = 2,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(ScanMode value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, ScanMode& value);

}  // namespace Oru::DataModel::MediaAssets
