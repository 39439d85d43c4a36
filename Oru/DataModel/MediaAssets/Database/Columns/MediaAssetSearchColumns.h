#pragma once

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <cstdint>
#include <string>
#include <variant>

// What searches compare and order by and no column holds, each as SQL and as what an object gives. Both
// follow what a read makes of the columns: a server, a place or a camera outside its range is none. Internal
// to the library.
namespace Oru::DataModel::MediaAssets::Database::SearchColumns {

/// Conditions on an operator's profile:
std::string HasServer();
std::string HasGridPlace(const std::string& column);
std::string HasCamera();
std::string Protected();

/// Whether a read takes the number for a page, bank or row.
bool IsGridPlace(int place);

/// The out mark minus the in mark, `NoDuration` without both. A difference beyond 64 bits is a double.
std::string DurationOfMarks();
/// The same of an object.
std::variant<int64_t, double> DurationOfMarks(const TimePoints::TimePoint& in,
                                              const TimePoints::TimePoint& out);
/// Negative infinity.
constexpr const char* NoDuration = "-9e999";

/// Server, page, bank, row and camera of a profile as one number, which orders as they do one after the other: what
/// isn't set follows what is.
std::string PlaceOfProfile();
int64_t PlaceOfProfile(const DapOperatorMetadataProfile& profile);
/// The number of assets without a profile, below that of any place.
constexpr int64_t NoProfile = -1;

}  // namespace Oru::DataModel::MediaAssets::Database::SearchColumns
