#pragma once

#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectWrite.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

// The object ids of an asset's tree: of the asset, its operator's profile, annotations, resources, streams,
// essences and tracks, as far as they are loaded. Internal to the library.
namespace Oru::DataModel::MediaAssets::Database {

/// Remembers the object ids of the whole tree, whose objects must outlive `former`.
void RememberObjectIds(FormerObjectIds& former, MediaAsset& asset);

/// Makes all of them -1, also those of streams that only a channel holds.
void ForgetObjectIds(MediaAsset& asset);

}  // namespace Oru::DataModel::MediaAssets::Database
