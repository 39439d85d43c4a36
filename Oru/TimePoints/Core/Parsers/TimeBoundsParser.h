#pragma once

#include "Oru/TimePoints/Core/Parsers/ValueParser.h"

namespace Oru::TimePoints {

class TimeBounds;

/// Reads a pair of time bounds from text: the class to derive from, and what `TimeBounds::Parse` takes.
class TimeBoundsParser : public ValueParser<TimeBounds> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/TimeBounds.h"
