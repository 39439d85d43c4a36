#pragma once

#include "Oru/DataModel/MediaAssets/MediaAsset.h"

namespace Oru::DataModel::MediaAssets::Database {

/// Refuses an asset that a file couldn't give back as it is, by what its held parts say of themselves: what
/// they refer to is looked at when they are written. Internal to the library.
/// @throws NotStoredException with a reason that names the asset, the part and what is wrong with it
void RequireStorable(const MediaAsset& asset);

}  // namespace Oru::DataModel::MediaAssets::Database
