#pragma once

#include "Oru/TimePoints/Core/Formatters/ValueFormatter.h"

namespace Oru::TimePoints {

class Rate;

/// Writes a rate as text: the class to derive from, and what `Rate::ToString` takes.
///
/// Threads: a formatter belongs to one thread at a time; distinct formatters are independent.
class RateFormatter : public ValueFormatter<Rate> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/Rate.h"
