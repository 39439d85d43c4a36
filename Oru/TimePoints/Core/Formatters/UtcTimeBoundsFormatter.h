#pragma once

#include "Oru/TimePoints/Core/Formatters/TimeBoundsFormatter.h"
#include "Oru/TimePoints/Core/Formatters/UtcTimeBoundaryFormatter.h"
#include "Oru/TimePoints/Core/TimeBounds.h"

#include <string>

namespace Oru::TimePoints {

/// Writes bounds as the texts of `UtcTimeBoundaryFormatter` for in and out, with a slash between:
/// `2024-02-29T10:00:00.000000000Z/2024-02-29T10:05:00.000000000Z moving`, `unset/unset`.
class UtcTimeBoundsFormatter : public TimeBoundsFormatter {
 public:
  std::string Format(const TimeBounds& value) const override {
    const UtcTimeBoundaryFormatter boundary;
    return boundary.Format(value.InBoundary()) + "/" + boundary.Format(value.OutBoundary());
  }
};

}  // namespace Oru::TimePoints
