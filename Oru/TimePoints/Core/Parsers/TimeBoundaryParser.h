#pragma once

#include "Oru/TimePoints/Core/Parsers/ValueParser.h"

namespace Oru::TimePoints {

class TimeBoundary;

/// Reads a time boundary from text: the class to derive from, and what `TimeBoundary::Parse` takes.
class TimeBoundaryParser : public ValueParser<TimeBoundary> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/TimeBoundary.h"
