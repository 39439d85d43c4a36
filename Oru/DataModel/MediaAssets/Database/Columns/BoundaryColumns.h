#pragma once

#include "Oru/Common/Databases/Cursor.h"
#include "Oru/TimePoints/Core/TimeBoundary.h"

#include <cstdint>
#include <string>

// A boundary takes two columns: its time point in nanoseconds and whether it is moving. Internal to the
// library.
namespace Oru::DataModel::MediaAssets::Database {

inline bool BindBoundary(Common::Databases::Cursor& cursor, const std::string& timePointColumn,
                         const std::string& movingColumn, const TimePoints::TimeBoundary& boundary) {
  return cursor.Bind(timePointColumn, boundary.TimePoint().ToNanoseconds()) &&
         cursor.Bind(movingColumn, boundary.IsMoving());
}

inline TimePoints::TimeBoundary ReadBoundary(const Common::Databases::Cursor& cursor,
                                             const std::string& timePointColumn,
                                             const std::string& movingColumn) {
  const bool isMoving = cursor.GetBoolean(movingColumn);
  const int64_t nanoseconds = cursor.GetInt64(timePointColumn);
  return TimePoints::TimeBoundary(TimePoints::TimePoint::FromNanoseconds(nanoseconds), isMoving);
}

}  // namespace Oru::DataModel::MediaAssets::Database
