#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// What `MetadataTable` writes: one entry of a profile beside the key of the profile's owner. Alive for
/// one save; the texts stay the caller's.
struct ORU_DATAMODEL_DATABASE_EXPORT MetadataEncapsulated {
  /// Refers to the object, which stays the caller's and must outlive this.
  MetadataEncapsulated(int64_t ownerKey,
                       const BusinessEntityModel::BaseTypes::FullyQualifiedName& profileName,
                       const std::string& entryKey, const std::string& entryValue)
      : fk(ownerKey), fullyQualifiedName(profileName), key(entryKey), value(entryValue) {}

  /// The key of the owner.
  int64_t fk;
  /// The name of the profile, and one entry of it:
  const BusinessEntityModel::BaseTypes::FullyQualifiedName& fullyQualifiedName;
  const std::string& key;
  const std::string& value;
};

}  // namespace Oru::DataModel::MediaAssets::Database
