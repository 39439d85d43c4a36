#pragma once

#include "Oru/TimePoints/Core/Parsers/TimeBoundsParser.h"
#include "Oru/TimePoints/Core/Parsers/UtcTimeBoundaryParser.h"
#include "Oru/TimePoints/Core/TimeBounds.h"

#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

/// Reads bounds from what `UtcTimeBoundsFormatter` writes: in and out, each as `UtcTimeBoundaryParser` takes
/// it, with a slash between.
class UtcTimeBoundsParser : public TimeBoundsParser {
 public:
  TimeBounds Parse(const std::string& text) override {
    const size_t slash = text.find('/');
    if (slash == std::string::npos) {
      throw std::invalid_argument("\"" + text + "\" is not a pair of bounds in/out: there is no '/'");
    }
    UtcTimeBoundaryParser boundary;
    return TimeBounds(boundary.Parse(text.substr(0, slash)), boundary.Parse(text.substr(slash + 1)));
  }
};

}  // namespace Oru::TimePoints
