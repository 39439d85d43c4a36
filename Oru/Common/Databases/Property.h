#pragma once

#include "Oru/Common/Databases/Export.h"

#include <cstdint>
#include <string>
#include <utility>

namespace Oru::Common::Databases {

/// One stored property of a database: a name with a text and a number.
class ORU_COMMON_DATABASE_EXPORT Property {
 public:
  /// The row's key, -1 while the property isn't stored.
  int64_t ObjectId() const { return objectId; }
  void ObjectId(int64_t value) { objectId = value; }
  /// The name, and the text and the number that are stored under it:
  const std::string& GetName() const { return name; }
  void SetName(const std::string& value) { name = value; }
  const std::string& GetStringValue() const { return stringValue; }
  void SetStringValue(const std::string& value) { stringValue = value; }
  int32_t GetIntValue() const { return intValue; }
  void SetIntValue(int32_t value) { intValue = value; }

 private:
  int64_t objectId = -1;
  std::string name;
  std::string stringValue;
  int32_t intValue = 0;
};

}  // namespace Oru::Common::Databases
