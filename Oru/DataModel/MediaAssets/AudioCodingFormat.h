#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// How an audio essence is coded. The numbers are stored in files and never change; a number without a name
/// can come out of a file and is carried as it is.
enum class AudioCodingFormat : int32_t {
  unknown = 0,
  AAC = 1,
  Alaw = 2,
  DolbyE = 3,
  MP1 = 4,
  MP2 = 5,
  MP3 = 6,
  PCM = 7,
  WMA = 8,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(AudioCodingFormat value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, AudioCodingFormat& value);

}  // namespace Oru::DataModel::MediaAssets
