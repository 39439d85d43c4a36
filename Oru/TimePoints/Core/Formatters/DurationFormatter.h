#pragma once

#include "Oru/TimePoints/Core/Formatters/ValueFormatter.h"

namespace Oru::TimePoints {

class Duration;

/// Writes a duration as text: the class to derive from, and what `Duration::ToString` takes.
class DurationFormatter : public ValueFormatter<Duration> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/Duration.h"
