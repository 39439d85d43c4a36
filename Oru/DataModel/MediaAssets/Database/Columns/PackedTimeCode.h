#pragma once

#include "Oru/Common/Databases/Cursor.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"
#include "Oru/TimePoints/Core/TimeCode.h"
#include "Oru/TimePoints/Core/VideoRates.h"

#include <cstdint>
#include <string>

// A stored time code is its count of samples since 1900 and a small number for rate and counting. Only 50/1
// and 60/1 have a number of their own; a time code at any other rate keeps its count and comes back at 1/1.
// Internal to the library.
namespace Oru::DataModel::MediaAssets::Database {

constexpr int32_t OtherRateFormat = 0;
constexpr int32_t Rate50Format = 1;
constexpr int32_t Rate60Format = 2;
constexpr int32_t Rate60DropFormat = 3;

inline int32_t TimecodeFormat(const TimePoints::TimeCode& timeCode) {
  if (timeCode.Rate() == TimePoints::VideoRates::Rate50()) return Rate50Format;
  if (timeCode.Rate() == TimePoints::VideoRates::Rate60())
    return timeCode.IsDrop() ? Rate60DropFormat : Rate60Format;
  return OtherRateFormat;
}

inline TimePoints::Rate TimecodeRate(int32_t format) {
  if (format == OtherRateFormat) return TimePoints::Rate(1, 1);
  return format == Rate50Format ? TimePoints::VideoRates::Rate50() : TimePoints::VideoRates::Rate60();
}

inline bool TimecodeDrop(int32_t format) {
  return format == Rate60DropFormat;
}

/// @return false, with a log entry of the database, for a negative count, which couldn't be read again
inline bool BindTimeCode(Common::Databases::Sqlite::DatabaseSqlite& database,
                         Common::Databases::Cursor& cursor, const std::string& countColumn,
                         const std::string& formatColumn, const TimePoints::TimeCode& timeCode) {
  if (timeCode.TotalSample() < 0) {
    database.LogFailure(countColumn + " has the negative count " + std::to_string(timeCode.TotalSample()));
    return false;
  }
  return cursor.Bind(formatColumn, TimecodeFormat(timeCode)) &&
         cursor.Bind(countColumn, timeCode.TotalSample());
}

/// @throws std::out_of_range for a negative count
inline TimePoints::TimeCode ReadTimeCode(const Common::Databases::Cursor& cursor,
                                         const std::string& countColumn, const std::string& formatColumn) {
  const int32_t format = cursor.GetInt32(formatColumn);
  const int64_t count = cursor.GetInt64(countColumn);
  return TimePoints::TimeCodeBuilder()
      .Year(TimePoints::SinceYear)
      .Rate(TimecodeRate(format))
      .IsDrop(TimecodeDrop(format))
      .Build()
      .AddSample(count);
}

}  // namespace Oru::DataModel::MediaAssets::Database
