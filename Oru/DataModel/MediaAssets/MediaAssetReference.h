#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/SharedReference.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"

namespace Oru::DataModel::MediaAssets {

class MediaAsset;

using MediaAssetReference = BaseTypes::SharedReference<MediaAsset>;

}  // namespace Oru::DataModel::MediaAssets
