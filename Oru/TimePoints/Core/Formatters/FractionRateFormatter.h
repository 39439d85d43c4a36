#pragma once

#include "Oru/TimePoints/Core/Formatters/RateFormatter.h"
#include "Oru/TimePoints/Core/Rate.h"

#include <string>

namespace Oru::TimePoints {

/// Writes a rate as numerator and denominator, as they are: `50/1`, `30000/1001`, `100/2`, `-1/3`.
class FractionRateFormatter : public RateFormatter {
 public:
  std::string Format(const Rate& value) const override { return value.ToString(); }
};

}  // namespace Oru::TimePoints
