#pragma once

#include "Oru/TimePoints/Core/Formatters/TimeBoundaryFormatter.h"
#include "Oru/TimePoints/Core/Formatters/UtcTimePointFormatter.h"
#include "Oru/TimePoints/Core/TimeBoundary.h"

#include <string>

namespace Oru::TimePoints {

/// Writes a boundary as its instant in UTC, or `unset`, followed by ` moving` if it moves.
///
/// | Boundary | Text |
/// |---|---|
/// | still | `2024-02-29T10:00:00.000000000Z` |
/// | moving | `2024-02-29T10:00:00.000000000Z moving` |
/// | a default one | `unset` |
/// | moving, with no instant yet | `unset moving` |
class UtcTimeBoundaryFormatter : public TimeBoundaryFormatter {
 public:
  std::string Format(const TimeBoundary& value) const override {
    const bool unset = value.TimePoint() == TimePoint::Empty();
    return (unset ? "unset" : UtcTimePointFormatter().Format(value.TimePoint())) +
           (value.IsMoving() ? " moving" : "");
  }
};

}  // namespace Oru::TimePoints
