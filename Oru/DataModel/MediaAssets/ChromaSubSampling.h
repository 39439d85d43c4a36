#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// How coarsely the colour of a picture is sampled beside its brightness. The numbers are stored in files
/// and never change; a number without a name can come out of a file and is carried as it is.
enum class ChromaSubSampling : int32_t {
  unknown = 0,
  CS_444 = 1,
  CS_422 = 2,
  CS_421 = 3,
  CS_411 = 4,
  CS_420 = 5,
  CS_410 = 6,
  CS_311 = 7,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(ChromaSubSampling value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, ChromaSubSampling& value);

}  // namespace Oru::DataModel::MediaAssets
