#pragma once

#include "Oru/Common/Databases/Cursor.h"
#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include <cstdint>
#include <string>

// Servers and places on the clip grid as columns. What is stored outside its range is no server and no place,
// and is passed over. Internal to the library.
namespace Oru::DataModel::MediaAssets::Database {

/// Hands the stored server to `set` if it is one.
template <class Set>
void ReadServer(const Common::Databases::Cursor& cursor, const std::string& column, Set set) {
  const int32_t number = cursor.GetInt32(column);
  if (ZuServerId::IsValid(number)) set(ZuServerId(number));
}

/// Hands the stored page, bank or row to `set` if it lies between 0 and 9.
template <class Set>
void ReadGridPlace(const Common::Databases::Cursor& cursor, const std::string& column, Set set) {
  const int32_t place = cursor.GetInt32(column);
  if (DapId::IsInRange(place, 0, 9)) set(place);
}

}  // namespace Oru::DataModel::MediaAssets::Database
