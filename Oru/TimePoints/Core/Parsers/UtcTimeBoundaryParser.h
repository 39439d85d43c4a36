#pragma once

#include "Oru/TimePoints/Core/Parsers/TimeBoundaryParser.h"
#include "Oru/TimePoints/Core/Parsers/UtcTimePointParser.h"
#include "Oru/TimePoints/Core/TimeBoundary.h"

#include <string>

namespace Oru::TimePoints {

/// Reads a boundary from what `UtcTimeBoundaryFormatter` writes: an instant that `UtcTimePointParser` takes,
/// or `unset`; ` moving` may follow.
class UtcTimeBoundaryParser : public TimeBoundaryParser {
 public:
  TimeBoundary Parse(const std::string& text) override {
    static const std::string mark = " moving";
    const bool moving =
        text.size() >= mark.size() && text.compare(text.size() - mark.size(), mark.size(), mark) == 0;
    const std::string instant = moving ? text.substr(0, text.size() - mark.size()) : text;
    return TimeBoundary(instant == "unset" ? TimePoint::Empty() : UtcTimePointParser().Parse(instant),
                        moving);
  }
};

}  // namespace Oru::TimePoints
