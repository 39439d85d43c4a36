#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Export.h"

#include <cstdint>

namespace Oru::BusinessEntityModel::BaseTypes {

/// The base of everything that owns a row of the stored file. A copy carries the object id of its original,
/// and so represents the same row.
class ORU_BASETYPES_EXPORT PersistentObject {
 public:
  /// The key of the row; -1 while the object has none.
  int64_t ObjectId() const noexcept { return objectId; }
  void ObjectId(int64_t value) noexcept { objectId = value; }

 private:
  int64_t objectId = -1;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
