#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// How far a clip or a sequence is on its way to the archive. The numbers are stored in files and never
/// change; a number without a name can come out of a file and is carried as it is.
enum class ArchiveStatus : int32_t {
  None = 0,
  ToArchive = 1,
  Archived = 2,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(ArchiveStatus value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, ArchiveStatus& value);

}  // namespace Oru::DataModel::MediaAssets
