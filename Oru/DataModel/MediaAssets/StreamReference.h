#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/SharedReference.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"

#include <vector>

namespace Oru::DataModel::MediaAssets {

class Stream;

using StreamReference = BaseTypes::SharedReference<Stream>;
using StreamReferenceVector = std::vector<StreamReference>;

}  // namespace Oru::DataModel::MediaAssets
