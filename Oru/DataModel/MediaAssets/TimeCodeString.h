#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/TimePoints/Core/Rate.h"
#include "Oru/TimePoints/Core/TimeCode.h"

#include <string>

namespace Oru::DataModel::MediaAssets {

/// A time of day in a time code, as text: hours, minutes, seconds and frame number, each in two digits or
/// more, with a semicolon before the frame number in drop-frame counting. "10:00:00:00", "01:00:59;29". The
/// date of a time code and its rate are not part of the text.
class ORU_DATAMODEL_EXPORT TimeCodeString {
 public:
  /// The empty text.
  TimeCodeString() = default;
  /// Any text, held as it is.
  explicit TimeCodeString(std::string text);
  /// The text of the time code.
  /// @throws std::out_of_range for a time code at a rate that isn't above 0
  explicit TimeCodeString(const TimePoints::TimeCode& timeCode);

  /// The text.
  const std::string& Value() const noexcept { return value; }
  /// Whether there is no text.
  bool IsEmpty() const noexcept { return value.empty(); }

  /// The time code, without a date, that the text means at a rate of whole samples a second.
  /// @throws std::invalid_argument with the text in quotes if it isn't of the form above
  /// @throws std::out_of_range if there is no such time code: hour 24, or frame 25 at a rate of 25
  TimePoints::TimeCode ToTimeCode(const TimePoints::Rate& rate) const;

  /// The same text.
  bool operator==(const TimeCodeString& other) const noexcept { return value == other.value; }
  bool operator!=(const TimeCodeString& other) const noexcept { return !(*this == other); }

 private:
  std::string value;
};

}  // namespace Oru::DataModel::MediaAssets
