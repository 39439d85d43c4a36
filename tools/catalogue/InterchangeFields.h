#pragma once

#include "Oru/BusinessEntityModel/Edits/Edit.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/MediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/MediaResource.h"

#include "InterchangeValues.h"

#include <memory>

namespace Catalogue {

/// What is done with a field that no entity has.
enum class UnknownFields { Refuse, PassOver };

/// An entity as JSON, with all that belongs to it: see docs/interchange.md. The entities stay as they are; they are
/// no constants because one list of fields serves both directions.
Json EntityToJson(Oru::DataModel::MediaAssets::MediaAsset& clip);
/// Either kind of group, by the class of the object.
Json EntityToJson(Oru::DataModel::MediaAssets::MediaAssetGroup& group);
Json EntityToJson(Oru::DataModel::MediaAssets::MediaResource& resource);
Json EntityToJson(Oru::BusinessEntityModel::Edits::Edit& edit);

/// A new entity as the JSON describes it. Fields that aren't there are as in any new one.
/// @throws std::invalid_argument that names the field and what is wrong with it
Oru::DataModel::MediaAssets::MediaAsset ClipFromJson(const Json& json, UnknownFields unknown);
Oru::DataModel::MediaAssets::MediaResource ResourceFromJson(const Json& json, UnknownFields unknown);
std::unique_ptr<Oru::DataModel::MediaAssets::MediaAssetGroup> GroupFromJson(const Json& json,
                                                                            UnknownFields unknown);
Oru::BusinessEntityModel::Edits::Edit EditFromJson(const Json& json, UnknownFields unknown);

}  // namespace Catalogue
