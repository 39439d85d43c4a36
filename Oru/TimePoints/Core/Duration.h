#pragma once

#include "Oru/TimePoints/Core/CheckedArithmetic.h"
#include "Oru/TimePoints/Core/Formatters/DurationFormatter.h"
#include "Oru/TimePoints/Core/Parsers/DurationParser.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

/// A span of time, a signed 64-bit count of nanoseconds: about 292 years either way. A default duration
/// is zero.
///
/// Arithmetic is exact: a result that doesn't fit throws `std::overflow_error` and leaves the operands as
/// they were.
class Duration {
 public:
  Duration() = default;

  /// Zero, as a default duration.
  static Duration Empty() { return Duration(); }
  /// The longest span, 2^63 - 1 nanoseconds.
  static Duration MaxValue() { return Duration(std::numeric_limits<int64_t>::max()); }
  /// The longest span backwards, -2^63 nanoseconds.
  static Duration MinValue() { return Duration(std::numeric_limits<int64_t>::min()); }

  /// The duration of so many units. Throws `std::overflow_error` where it doesn't fit 64 bits of nanoseconds:
  static Duration FromNanoseconds(int64_t count) { return Duration(count); }
  static Duration FromMilliseconds(int64_t count) { return FromUnits(count, 1000000); }
  static Duration FromSeconds(int64_t count) { return FromUnits(count, 1000000000); }
  static Duration FromSeconds(int count) { return FromSeconds(static_cast<int64_t>(count)); }
  static Duration FromMinutes(int64_t count) { return FromUnits(count, 60000000000); }
  static Duration FromMinutes(int count) { return FromMinutes(static_cast<int64_t>(count)); }

  /// The length in nanoseconds.
  int64_t ToNanoseconds() const { return nanoseconds; }

  /// -1, 0 or 1 as this duration is shorter than, equal to or longer than `other`; signs count.
  int CompareTo(const Duration& other) const {
    return CheckedArithmetic::Compare(nanoseconds, other.nanoseconds);
  }

  /// The sum, the difference and the product, exact:
  Duration Add(const Duration& other) const { return Narrow(Int128(nanoseconds) + other.nanoseconds); }
  Duration Substract(const Duration& other) const { return Narrow(Int128(nanoseconds) - other.nanoseconds); }
  Duration Multiply(int64_t factor) const { return Narrow(Int128(nanoseconds) * factor); }

  /// The quotient, rounded towards zero. Throws `std::invalid_argument` for a divisor of 0.
  Duration Divide(int64_t divisor) const {
    if (divisor == 0) throw std::invalid_argument("A duration cannot be divided by 0");
    return Narrow(Int128(nanoseconds) / divisor);
  }

  /// `Add`, `Substract`, `Multiply` and `Divide`.
  Duration operator+(const Duration& other) const { return Add(other); }
  Duration operator-(const Duration& other) const { return Substract(other); }
  Duration operator*(int64_t factor) const { return Multiply(factor); }
  Duration operator/(int64_t divisor) const { return Divide(divisor); }
  Duration& operator+=(const Duration& other) { return *this = Add(other); }
  Duration& operator-=(const Duration& other) { return *this = Substract(other); }
  Duration& operator*=(int64_t factor) { return *this = Multiply(factor); }
  Duration& operator/=(int64_t divisor) { return *this = Divide(divisor); }

  /// Whether the two are of the same length.
  bool operator==(const Duration& other) const { return nanoseconds == other.nanoseconds; }
  bool operator!=(const Duration& other) const { return !(*this == other); }

  /// The text that the formatter gives.
  std::string ToString(const DurationFormatter& formatter) const { return formatter.Format(*this); }
  /// Throws `std::invalid_argument` if the parser refuses the text.
  static Duration Parse(const std::string& text, DurationParser& parser) { return parser.Parse(text); }

 private:
  explicit Duration(int64_t count) : nanoseconds(count) {}

  static Duration Narrow(Int128 count) { return Duration(CheckedArithmetic::ToInt64(count, "Duration")); }
  static Duration FromUnits(int64_t count, int64_t unit) { return Narrow(Int128(count) * unit); }

  int64_t nanoseconds = 0;
};

}  // namespace Oru::TimePoints
