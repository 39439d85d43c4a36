#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/SharedReference.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVector.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"

namespace Oru::DataModel::MediaAssets {

class MediaResource;

/// References to resources, by identifier.
using MediaResourceReferenceVector = BaseTypes::SortedVector<BaseTypes::SharedReference<MediaResource>>;

}  // namespace Oru::DataModel::MediaAssets
