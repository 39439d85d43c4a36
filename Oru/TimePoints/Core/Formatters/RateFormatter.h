#pragma once

#include "Oru/TimePoints/Core/Formatters/ValueFormatter.h"

namespace Oru::TimePoints {

class Rate;

/// Writes a rate as text: the class to derive from, and what `Rate::ToString` takes.
class RateFormatter : public ValueFormatter<Rate> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/Rate.h"
