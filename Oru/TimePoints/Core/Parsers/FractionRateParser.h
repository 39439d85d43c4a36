#pragma once

#include "Oru/TimePoints/Core/Parsers/RateParser.h"
#include "Oru/TimePoints/Core/Parsers/TextReader.h"
#include "Oru/TimePoints/Core/Rate.h"

#include <cstdint>
#include <string>

namespace Oru::TimePoints {

/// Reads a rate from `numerator/denominator`, what `FractionRateFormatter` writes, or from a whole number
/// alone: `30000/1001`, `50/1`, `50`. Nothing is reduced.
class FractionRateParser : public RateParser {
 public:
  Rate Parse(const std::string& text) override {
    TextReader reader(text, "a rate numerator/denominator");
    const int64_t numerator = reader.Integer();
    const int64_t denominator = reader.TakeIf('/') ? reader.Integer() : 1;
    reader.End();
    if (denominator == 0) reader.Fail("the denominator is 0");
    return Rate(numerator, denominator);
  }
};

}  // namespace Oru::TimePoints
