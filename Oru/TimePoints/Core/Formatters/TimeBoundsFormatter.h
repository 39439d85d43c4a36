#pragma once

#include "Oru/TimePoints/Core/Formatters/ValueFormatter.h"

namespace Oru::TimePoints {

class TimeBounds;

/// Writes a pair of time bounds as text: the class to derive from, and what `TimeBounds::ToString` takes.
class TimeBoundsFormatter : public ValueFormatter<TimeBounds> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/TimeBounds.h"
