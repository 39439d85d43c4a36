#include "Oru/DataModel/MediaAssets/TimeCodeString.h"

#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace Oru::DataModel::MediaAssets {

namespace {

std::string InTwoDigits(int32_t number) {
  const std::string digits = std::to_string(number);
  return digits.size() < 2 ? "0" + digits : digits;
}

[[noreturn]] void Refuse(const std::string& text) {
  throw std::invalid_argument("Invalid time code \"" + text + "\".");
}

}  // namespace

TimeCodeString::TimeCodeString(std::string text) : value(std::move(text)) {}

TimeCodeString::TimeCodeString(const TimePoints::TimeCode& timeCode)
    : value(InTwoDigits(timeCode.Hour()) + ":" + InTwoDigits(timeCode.Minute()) + ":" +
            InTwoDigits(timeCode.Second()) + (timeCode.IsDrop() ? ";" : ":") +
            InTwoDigits(timeCode.Sample())) {}

TimePoints::TimeCode TimeCodeString::ToTimeCode(const TimePoints::Rate& rate) const {
  constexpr std::size_t frameField = 3;
  std::array<int, 4> fields{};
  bool isDrop = false;
  const char* position = value.data();
  const char* const end = position + value.size();
  for (std::size_t field = 0; field < fields.size(); ++field) {
    if (field > 0) {
      if (position == end) Refuse(value);
      isDrop = field == frameField && *position == ';';
      if (!isDrop && *position != ':') Refuse(value);
      ++position;
    }
    if (position == end || *position == '-') Refuse(value);
    const auto [stop, error] = std::from_chars(position, end, fields[field]);
    if (error != std::errc{} || stop - position < 2) Refuse(value);
    position = stop;
  }
  if (position != end) Refuse(value);
  const auto [hour, minute, second, frame] = fields;
  return TimePoints::TimeCodeBuilder()
      .ClockTime(hour, minute, second, frame)
      .Rate(rate)
      .IsDrop(isDrop)
      .Build();
}

}  // namespace Oru::DataModel::MediaAssets
