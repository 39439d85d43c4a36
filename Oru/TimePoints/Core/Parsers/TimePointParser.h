#pragma once

#include "Oru/TimePoints/Core/Parsers/ValueParser.h"

namespace Oru::TimePoints {

class TimePoint;

/// Reads a time point from text: the class to derive from, and what `TimePoint::Parse` takes.
class TimePointParser : public ValueParser<TimePoint> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/TimePoint.h"
