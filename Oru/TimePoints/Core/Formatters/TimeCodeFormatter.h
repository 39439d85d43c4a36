#pragma once

#include "Oru/TimePoints/Core/Formatters/ValueFormatter.h"

namespace Oru::TimePoints {

class TimeCode;

/// Writes a time code as text: the class to derive from, and what `TimeCode::ToString` takes.
class TimeCodeFormatter : public ValueFormatter<TimeCode> {};

}  // namespace Oru::TimePoints

// Included last: the value's header names the class above.
#include "Oru/TimePoints/Core/TimeCode.h"
