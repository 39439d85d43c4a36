#pragma once

#include "Oru/TimePoints/Core/CheckedArithmetic.h"
#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/Formatters/TimePointFormatter.h"
#include "Oru/TimePoints/Core/Parsers/TimePointParser.h"
#include "Oru/TimePoints/Core/Rate.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

class RatedTimePoint;

/// An instant: nanoseconds since 1970-01-01T00:00:00 UTC, signed 64 bits, from September 1677 to April 2262.
///
/// One value, -2^63 + 1, means that no instant is set: `Empty()`, and a default time point. Comparisons and
/// arithmetic treat it as the number that it is.
///
/// Arithmetic is exact: a result that doesn't fit throws `std::overflow_error` and leaves the operands as
/// they were.
///
/// Samples: sample n of a rate covers the instants from n to n + 1 sample lengths after 1970, the end
/// excluded. Operations with a rate throw `std::invalid_argument` if the rate isn't above 0.
class TimePoint {
 public:
  TimePoint() = default;

  /// The unset instant, -9223372036854775807.
  static TimePoint Empty() { return TimePoint(); }
  /// The last instant, 2^63 - 1 nanoseconds after 1970.
  static TimePoint MaxValue() { return TimePoint(std::numeric_limits<int64_t>::max()); }
  /// The first instant, 2^63 nanoseconds before 1970.
  static TimePoint MinValue() { return TimePoint(std::numeric_limits<int64_t>::min()); }

  /// The instant so many nanoseconds after 1970; negative ones lie before.
  static TimePoint FromNanoseconds(int64_t count) { return TimePoint(count); }

  /// The first whole nanosecond of the sample. Where a sample lasts a nanosecond or more, `GetSampleNumber`
  /// of the result is `sampleNumber` again.
  static TimePoint FromSampleNumber(const Rate& rate, int64_t sampleNumber) {
    return TimePoint(NanoSecondsFromSampleNumber(rate, sampleNumber));
  }

  /// Nanoseconds since 1970.
  int64_t ToNanoseconds() const { return nanoseconds; }

  /// The number of the sample that is under way at this instant; negative before 1970.
  int64_t GetSampleNumber(const Rate& rate) const {
    const PositiveRatio ratio(rate);
    const Int128 number =
        CheckedArithmetic::FloorDivide(nanoseconds * ratio.events, ratio.seconds * nanosecondsPerSecond);
    return CheckedArithmetic::ToInt64(number, "Sample number");
  }

  /// The start of the sample that is under way at this instant, with the remainder. Throws
  /// `std::overflow_error` if the sample starts before `MinValue()`.
  RatedTimePoint AlignWith(const Rate& rate) const;

  /// -1, 0 or 1 as this instant is before, at or after `other`.
  int CompareTo(const TimePoint& other) const {
    return CheckedArithmetic::Compare(nanoseconds, other.nanoseconds);
  }

  /// Nanoseconds since 1970.
  TimePoint Add(const Duration& span) const { return Narrow(Int128(nanoseconds) + span.ToNanoseconds()); }
  /// The instant a span earlier.
  TimePoint Substract(const Duration& span) const {
    return Narrow(Int128(nanoseconds) - span.ToNanoseconds());
  }
  /// The span from `other` to this instant.
  Duration Substract(const TimePoint& other) const {
    return Duration::FromNanoseconds(nanoseconds) - Duration::FromNanoseconds(other.nanoseconds);
  }

  /// `Add` and `Substract`.
  TimePoint operator+(const Duration& span) const { return Add(span); }
  TimePoint operator-(const Duration& span) const { return Substract(span); }
  Duration operator-(const TimePoint& other) const { return Substract(other); }
  TimePoint& operator+=(const Duration& span) { return *this = Add(span); }
  TimePoint& operator-=(const Duration& span) { return *this = Substract(span); }

  /// The order of time.
  bool operator==(const TimePoint& other) const { return nanoseconds == other.nanoseconds; }
  bool operator!=(const TimePoint& other) const { return nanoseconds != other.nanoseconds; }
  bool operator<(const TimePoint& other) const { return nanoseconds < other.nanoseconds; }
  bool operator>(const TimePoint& other) const { return nanoseconds > other.nanoseconds; }
  bool operator<=(const TimePoint& other) const { return nanoseconds <= other.nanoseconds; }
  bool operator>=(const TimePoint& other) const { return nanoseconds >= other.nanoseconds; }

  /// The text that the formatter gives.
  std::string ToString(const TimePointFormatter& formatter) const { return formatter.Format(*this); }
  /// Throws `std::invalid_argument` if the parser refuses the text.
  static TimePoint Parse(const std::string& text, TimePointParser& parser) { return parser.Parse(text); }

 private:
  /// A rate with both numbers positive, wide enough to multiply with.
  struct PositiveRatio {
    explicit PositiveRatio(const Rate& rate) : events(rate.Numerator()), seconds(rate.Denominator()) {
      if (seconds < 0) {
        events = -events;
        seconds = -seconds;
      }
      if (events <= 0 || seconds == 0) {
        throw std::invalid_argument("Rate " + rate.ToString() + " must be above 0 to count samples");
      }
    }

    Int128 events;
    Int128 seconds;
  };

  static constexpr int64_t nanosecondsPerSecond = 1000000000;

  explicit TimePoint(int64_t count) : nanoseconds(count) {}

  static TimePoint Narrow(Int128 count) { return TimePoint(CheckedArithmetic::ToInt64(count, "Time point")); }

  static int64_t NanoSecondsFromSampleNumber(const Rate& rate, int64_t sampleNumber) {
    const PositiveRatio ratio(rate);
    // Whole seconds first: number x denominator x 10^9 at once may need more than 128 bits.
    const Int128 seconds = CheckedArithmetic::FloorDivide(sampleNumber * ratio.seconds, ratio.events);
    const Int128 rest = sampleNumber * ratio.seconds - seconds * ratio.events;
    const Int128 restNanoseconds = CheckedArithmetic::CeilDivide(rest * nanosecondsPerSecond, ratio.events);
    const Int128 wholeSeconds = CheckedArithmetic::ToInt64(seconds, "Start of the sample");
    return CheckedArithmetic::ToInt64(wholeSeconds * nanosecondsPerSecond + restNanoseconds,
                                      "Start of the sample");
  }

  int64_t nanoseconds = -std::numeric_limits<int64_t>::max();
};

}  // namespace Oru::TimePoints

// Included last: it needs the class above, and completes `AlignWith`.
#include "Oru/TimePoints/Core/RatedTimePoint.h"
