#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

namespace Oru::DataModel::MediaAssets::Database {

/// Renames an asset and everything below it that has an identifier: a resource, stream or track `x` becomes
/// `<id>/x`, and channels follow their streams where the asset has them. The asset forgets its object ids.
/// Internal to the library.
/// @param asset  holds its resources and streams
void RenameTree(MediaAsset& asset, const BusinessEntityModel::BaseTypes::Identifier& id);

}  // namespace Oru::DataModel::MediaAssets::Database
