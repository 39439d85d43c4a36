#include "Oru/DataModel/MediaAssets/Database/NotStoredException.h"

namespace Oru::DataModel::MediaAssets::Database {

NotStoredException::NotStoredException(const BusinessEntityModel::BaseTypes::Identifier& objectId,
                                       const std::string& reason)
    : std::runtime_error(reason), id(objectId) {}

// Here, so that every library that catches one knows the same type.
NotStoredException::~NotStoredException() = default;

}  // namespace Oru::DataModel::MediaAssets::Database
