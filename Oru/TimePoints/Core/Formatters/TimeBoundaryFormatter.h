#pragma once

#include "Oru/TimePoints/Core/Formatters/ValueFormatter.h"

namespace Oru::TimePoints {

class TimeBoundary;

/// Writes a time boundary as text: the class to derive from, and what `TimeBoundary::ToString` takes.
class TimeBoundaryFormatter : public ValueFormatter<TimeBoundary> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/TimeBoundary.h"
