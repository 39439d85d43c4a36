#pragma once

#include "Oru/BusinessEntityModel/Edits/Export.h"
#include "Oru/TimePoints/Core/Duration.h"

namespace Oru::BusinessEntityModel::Edits {

/// How long a sequence is, and whether that is fixed.
///
/// Only a fixed duration survives a file: one that isn't fixed comes back as 0.
class ORU_EDITS_EXPORT SequenceDuration {
 public:
  /// 0, not fixed.
  SequenceDuration();
  /// A fixed duration.
  SequenceDuration(const TimePoints::Duration& length);

  /// How long the sequence lasts; counts only while it is fixed.
  const TimePoints::Duration& Duration() const noexcept { return duration; }
  void Duration(const TimePoints::Duration& value) noexcept { duration = value; }
  /// Whether the duration is set and not open.
  bool Fixed() const noexcept { return fixed; }
  void Fixed(bool value) noexcept { fixed = value; }

  /// Whether the two are equal.
  bool operator==(const SequenceDuration& other) const;
  bool operator!=(const SequenceDuration& other) const { return !(*this == other); }
  /// By duration; of two that are as long, the one that isn't fixed comes first.
  bool operator<(const SequenceDuration& other) const;
  bool operator>(const SequenceDuration& other) const { return other < *this; }
  bool operator<=(const SequenceDuration& other) const { return !(other < *this); }
  bool operator>=(const SequenceDuration& other) const { return !(*this < other); }

 private:
  TimePoints::Duration duration;
  bool fixed = false;
};

}  // namespace Oru::BusinessEntityModel::Edits
