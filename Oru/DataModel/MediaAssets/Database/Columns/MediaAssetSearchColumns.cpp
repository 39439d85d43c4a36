#include "Oru/DataModel/MediaAssets/Database/Columns/MediaAssetSearchColumns.h"

#include "Oru/TimePoints/Core/Int128.h"

#include <limits>

namespace Oru::DataModel::MediaAssets::Database::SearchColumns {

namespace {

// The lowest and the highest page, bank and row that a read takes.
constexpr int MinGridPlace = 0;
constexpr int MaxGridPlace = 9;

// Where what isn't set falls in the order: after all servers, and after all places on the grid.
constexpr int64_t UnsetServer = int64_t{std::numeric_limits<int32_t>::max()} + 1;
constexpr int64_t UnsetDigit = 15;
// A page, bank, row and camera take one digit each of a number of this base.
constexpr int64_t DigitBase = 16;

std::string Between(const std::string& column, int min, int max) {
  return column + " BETWEEN " + std::to_string(min) + " AND " + std::to_string(max);
}

std::string Choice(const std::string& condition, const std::string& value, int64_t otherwise) {
  return "CASE WHEN " + condition + " THEN " + value + " ELSE " + std::to_string(otherwise) + " END";
}

}  // namespace

std::string HasServer() {
  return "zuServerId > 0 AND zuServerId % 10 = 0";
}

std::string HasGridPlace(const std::string& column) {
  return Between(column, MinGridPlace, MaxGridPlace);
}

std::string HasCamera() {
  return Between("dapIdCamera", DapId::MinCamera, DapId::MaxCamera);
}

std::string Protected() {
  return "(userProtected <> 0 OR dapUIProtected <> 0)";
}

bool IsGridPlace(int place) {
  return place >= MinGridPlace && place <= MaxGridPlace;
}

std::string DurationOfMarks() {
  const std::string unset = std::to_string(TimePoints::TimePoint::Empty().ToNanoseconds());
  return "CASE WHEN inBoundary IS NOT " + unset + " AND outBoundary IS NOT " + unset +
         " THEN ifnull(outBoundary, 0) - ifnull(inBoundary, 0) ELSE " + NoDuration + " END";
}

std::variant<int64_t, double> DurationOfMarks(const TimePoints::TimePoint& in,
                                              const TimePoints::TimePoint& out) {
  const TimePoints::TimePoint unset = TimePoints::TimePoint::Empty();
  if (in == unset || out == unset) return -std::numeric_limits<double>::infinity();
  const auto difference = TimePoints::Int128(out.ToNanoseconds()) - in.ToNanoseconds();
  const auto narrowed = static_cast<int64_t>(difference);
  if (narrowed == difference) return narrowed;
  // As SQLite computes it: https://sqlite.org/lang_expr.html
  return static_cast<double>(out.ToNanoseconds()) - static_cast<double>(in.ToNanoseconds());
}

std::string PlaceOfProfile() {
  std::string number = Choice(HasServer(), "zuServerId", UnsetServer);
  const auto append = [&](const std::string& digit) {
    number = "(" + number + ") * " + std::to_string(DigitBase) + " + " + digit;
  };
  for (const char* column : {"dapIdPage", "dapIdBank", "dapIdRow"})
    append(Choice(HasGridPlace(column), column, UnsetDigit));
  append(Choice(HasCamera(), "dapIdCamera - " + std::to_string(DapId::MinCamera), UnsetDigit));
  return number;
}

int64_t PlaceOfProfile(const DapOperatorMetadataProfile& profile) {
  const int server = profile.ServerId().SerialNumber();
  int64_t number = ZuServerId::IsValid(server) ? server : UnsetServer;
  const auto append = [&](bool isSet, int digit) {
    number = number * DigitBase + (isSet ? digit : UnsetDigit);
  };
  for (const int place : {profile.Page(), profile.Bank(), profile.Row()})
    append(IsGridPlace(place), place);
  append(DapId::IsValidCamera(profile.Camera()), profile.Camera() - DapId::MinCamera);
  return number;
}

}  // namespace Oru::DataModel::MediaAssets::Database::SearchColumns
