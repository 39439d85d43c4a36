#pragma once

namespace Oru::TimePoints {

/// Wide enough for the product of two 64-bit counts, so that rates can be applied exactly.
__extension__ typedef __int128 Int128;

}  // namespace Oru::TimePoints
