#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetSearchColumns.h"

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

std::string HasServer() {
  return "DapOperatorMetadata.zuServerId > 0 AND DapOperatorMetadata.zuServerId % 10 = 0";
}

std::string HasGridPlace(const std::string& column) {
  return Between(column, MinGridPlace, MaxGridPlace);
}

std::string HasCamera() {
  return Between("DapOperatorMetadata.dapIdCamera", DapId::MinCamera, DapId::MaxCamera);
}

std::string Not(const std::string& condition) {
  return "NOT ifnull(" + condition + ", 0)";
}

std::string Choice(const std::string& condition, const std::string& value, int64_t otherwise) {
  return "CASE WHEN " + condition + " THEN " + value + " ELSE " + std::to_string(otherwise) + " END";
}

}  // namespace

std::string NoServer() {
  return Not(HasServer());
}

std::string NoGridPlace(const std::string& column) {
  return Not(HasGridPlace(column));
}

std::string NoCamera() {
  return Not(HasCamera());
}

std::string Protected() {
  return "(DapOperatorMetadata.userProtected <> 0 OR DapOperatorMetadata.dapUIProtected <> 0)";
}

bool IsGridPlace(int place) {
  return place >= MinGridPlace && place <= MaxGridPlace;
}

std::string DurationOfMarks() {
  const std::string unset = std::to_string(TimePoints::TimePoint::Empty().ToNanoseconds());
  return "CASE WHEN MediaAsset.inBoundary <> " + unset + " AND MediaAsset.outBoundary <> " + unset +
         " THEN MediaAsset.outBoundary - MediaAsset.inBoundary END";
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

std::string DurationOrder() {
  return "ifnull(" + DurationOfMarks() + ", -9e999)";
}

std::string PlaceOrder() {
  std::string number = Choice(HasServer(), "DapOperatorMetadata.zuServerId", UnsetServer);
  const auto append = [&](const std::string& digit) {
    number = "(" + number + ") * " + std::to_string(DigitBase) + " + " + digit;
  };
  for (const char* column : {"dapIdPage", "dapIdBank", "dapIdRow"}) {
    const std::string name = std::string("DapOperatorMetadata.") + column;
    append(Choice(HasGridPlace(name), name, UnsetDigit));
  }
  append(Choice(HasCamera(), "DapOperatorMetadata.dapIdCamera - " + std::to_string(DapId::MinCamera),
                UnsetDigit));
  return Choice("DapOperatorMetadata.refMediaAsset IS NOT NULL", number, NoProfile);
}

int64_t PlaceNumber(const DapOperatorMetadataProfile& profile) {
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
