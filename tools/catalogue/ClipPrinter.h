#pragma once

#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <ostream>

namespace Catalogue {

/// Writes all that an asset holds, laid out for a reader.
void PrintClip(std::ostream& out, const Oru::DataModel::MediaAssets::MediaAsset& clip);

}  // namespace Catalogue
