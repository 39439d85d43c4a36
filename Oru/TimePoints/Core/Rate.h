#pragma once

#include "Oru/TimePoints/Core/CheckedArithmetic.h"
#include "Oru/TimePoints/Core/Formatters/RateFormatter.h"
#include "Oru/TimePoints/Core/Parsers/RateParser.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

/// How often something happens: `Numerator()` events in `Denominator()` seconds. 25 frames a second are
/// 25/1, the NTSC rate is 30000/1001.
///
/// The two numbers are kept as given: 100/2 stays 100/2 and is not `==` to 50/1, though `CompareTo` finds
/// them equally fast. A default rate is 0/1, nothing ever happens.
class Rate {
 public:
  Rate() = default;

  /// `events` in `seconds` seconds, kept unreduced. A rate in 0 seconds can be held and written as text; what
  /// computes with it refuses it.
  Rate(int64_t events, int64_t seconds) : Rate(events, seconds, false) {}

  /// The rate 0/1, as a default rate.
  static Rate Empty() { return Rate(); }

  /// Events in `Denominator()` seconds, as given.
  int64_t Numerator() const { return numerator; }
  /// Seconds; negative or 0 if it was so given.
  int64_t Denominator() const { return denominator; }

  /// -1, 0 or 1 as this rate is slower than, as fast as or faster than `other`: the ratios are compared,
  /// exactly. Throws `std::invalid_argument` if one of them is in 0 seconds.
  int CompareTo(const Rate& other) const {
    CheckDenominator();
    other.CheckDenominator();
    const Int128 left = Int128(numerator) * other.denominator;
    const Int128 right = Int128(other.numerator) * denominator;
    const bool bothSignsAgree = (denominator < 0) == (other.denominator < 0);
    return bothSignsAgree ? CheckedArithmetic::Compare(left, right) : CheckedArithmetic::Compare(right, left);
  }

  /// The same ratio in lowest terms, over a positive denominator: 100/2 gives 50/1, 3/-6 gives -1/2. Throws
  /// `std::invalid_argument` if it is in 0 seconds, `std::overflow_error` if that takes the number 2^63.
  Rate Reduced() const { return Rate(numerator, denominator, true); }

  /// Field by field, see above.
  bool operator==(const Rate& other) const {
    return numerator == other.numerator && denominator == other.denominator;
  }
  bool operator!=(const Rate& other) const { return !(*this == other); }

  /// Numerator and denominator, as "30000/1001" or "50/1".
  std::string ToString() const { return std::to_string(numerator) + "/" + std::to_string(denominator); }
  std::string ToString(const RateFormatter& formatter) const { return formatter.Format(*this); }
  /// Throws `std::invalid_argument` if the parser refuses the text.
  static Rate Parse(const std::string& text, RateParser& parser) { return parser.Parse(text); }

 private:
  Rate(int64_t events, int64_t seconds, bool reduce) : numerator(events), denominator(seconds) {
    if (!reduce) return;
    CheckDenominator();
    const Int128 divisor = greatestCommonDivisor(events, seconds);
    const int sign = seconds < 0 ? -1 : 1;
    numerator = CheckedArithmetic::ToInt64(sign * (events / divisor), "Numerator of the reduced rate");
    denominator = CheckedArithmetic::ToInt64(sign * (seconds / divisor), "Denominator of the reduced rate");
  }

  void CheckDenominator() const {
    if (denominator == 0) throw std::invalid_argument("The rate " + ToString() + " is in 0 seconds");
  }

  /// Unsigned, as it may be 2^63. Not 0 unless both numbers are.
  static uint64_t greatestCommonDivisor(int64_t first, int64_t second) {
    uint64_t divisor = Magnitude(first);
    uint64_t remainder = Magnitude(second);
    while (remainder != 0) {
      const uint64_t next = divisor % remainder;
      divisor = remainder;
      remainder = next;
    }
    return divisor;
  }

  static uint64_t Magnitude(int64_t value) {
    return value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  }

  int64_t numerator = 0;
  int64_t denominator = 1;
};

}  // namespace Oru::TimePoints
