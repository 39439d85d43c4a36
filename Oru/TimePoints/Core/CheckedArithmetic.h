#pragma once

#include "Oru/TimePoints/Core/Int128.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

/// Integer arithmetic of the time values: computed wide, and narrowed only if nothing is lost.
namespace CheckedArithmetic {

/// Whether the number fits 64 bits with a sign.
inline bool FitsInt64(Int128 value) {
  return value >= std::numeric_limits<int64_t>::min() && value <= std::numeric_limits<int64_t>::max();
}

/// The value in 64 bits. Throws `std::overflow_error`, naming `what`, if it doesn't fit.
inline int64_t ToInt64(Int128 value, const char* what) {
  if (!FitsInt64(value)) throw std::overflow_error(std::string(what) + " does not fit 64 bits");
  return static_cast<int64_t>(value);
}

/// The quotient rounded down; `divisor` must be positive.
template <class Integer>
Integer FloorDivide(Integer dividend, Integer divisor) {
  const Integer quotient = dividend / divisor;
  return dividend % divisor < 0 ? quotient - 1 : quotient;
}

/// What `FloorDivide` leaves, from 0 to below `divisor`.
template <class Integer>
Integer FloorRemainder(Integer dividend, Integer divisor) {
  const Integer remainder = dividend % divisor;
  return remainder < 0 ? remainder + divisor : remainder;
}

/// The quotient rounded up; `divisor` must be positive.
template <class Integer>
Integer CeilDivide(Integer dividend, Integer divisor) {
  const Integer quotient = dividend / divisor;
  return dividend % divisor > 0 ? quotient + 1 : quotient;
}

/// -1, 0 or 1 as `left` is below, equal to or above `right`.
template <class Integer>
int Compare(Integer left, Integer right) {
  return static_cast<int>(left > right) - static_cast<int>(left < right);
}

}  // namespace CheckedArithmetic
}  // namespace Oru::TimePoints
