#pragma once

#include "Oru/TimePoints/Core/Formatters/ValueFormatter.h"

namespace Oru::TimePoints {

class TimePoint;

/// Writes a time point as text: the class to derive from, and what `TimePoint::ToString` takes.
class TimePointFormatter : public ValueFormatter<TimePoint> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/TimePoint.h"
