#pragma once

#include "Oru/TimePoints/Core/Parsers/ValueParser.h"

namespace Oru::TimePoints {

class Rate;

/// Reads a rate from text: the class to derive from, and what `Rate::Parse` takes.
class RateParser : public ValueParser<Rate> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/Rate.h"
