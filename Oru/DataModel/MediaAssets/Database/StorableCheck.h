#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// Refuses an asset that a file couldn't give back as it is, by what its held parts say of themselves: what
/// they refer to is looked at when they are written. Internal to the library.
/// @throws NotStoredException with a reason that names the asset, the part and what is wrong with it
void RequireStorable(const MediaAsset& asset);

/// Throws a NotStoredException about an asset.
/// @param reason  which part of it, and what is missing or wrong; the text names the asset first
[[noreturn]] void Refuse(const BusinessEntityModel::BaseTypes::Identifier& asset, const std::string& reason);

}  // namespace Oru::DataModel::MediaAssets::Database
