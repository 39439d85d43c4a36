#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"

namespace Oru::DataModel::MediaAssets {

namespace BaseTypes = BusinessEntityModel::BaseTypes;

using MediaAssetId = BaseTypes::Identifier;
using MediaResourceId = BaseTypes::Identifier;
using StreamId = BaseTypes::Identifier;
using TrackId = BaseTypes::Identifier;
using MediaAssetGroupId = BaseTypes::Identifier;

}  // namespace Oru::DataModel::MediaAssets
