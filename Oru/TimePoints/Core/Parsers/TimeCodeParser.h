#pragma once

#include "Oru/TimePoints/Core/Parsers/ValueParser.h"

namespace Oru::TimePoints {

class TimeCode;

/// Reads a time code from text: the class to derive from, and what `TimeCode::Parse` takes.
class TimeCodeParser : public ValueParser<TimeCode> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/TimeCode.h"
