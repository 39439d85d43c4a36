#pragma once

#include "Oru/TimePoints/Core/Parsers/ValueParser.h"

namespace Oru::TimePoints {

class Duration;

/// Reads a duration from text: the class to derive from, and what `Duration::Parse` takes.
class DurationParser : public ValueParser<Duration> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/Duration.h"
