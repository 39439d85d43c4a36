#pragma once

#include "Oru/Common/Databases/Cursor.h"
#include "Oru/DataModel/MediaAssets/Rate.h"

#include <cstdint>
#include <string>

// A rate of an essence takes two columns. They are read at 64 bits and narrowed. Internal to the library.
namespace Oru::DataModel::MediaAssets::Database {

inline bool BindRate(Common::Databases::Cursor& cursor, const std::string& numeratorColumn,
                     const std::string& denominatorColumn, const Rate& rate) {
  return cursor.Bind(numeratorColumn, rate.Numerator()) && cursor.Bind(denominatorColumn, rate.Denominator());
}

inline Rate ReadRate(const Common::Databases::Cursor& cursor, const std::string& numeratorColumn,
                     const std::string& denominatorColumn) {
  const int64_t numerator = cursor.GetInt64(numeratorColumn);
  const int64_t denominator = cursor.GetInt64(denominatorColumn);
  return Rate(static_cast<int32_t>(numerator), static_cast<int32_t>(denominator));
}

}  // namespace Oru::DataModel::MediaAssets::Database
