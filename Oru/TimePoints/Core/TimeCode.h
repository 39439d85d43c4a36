#pragma once

#include "Oru/TimePoints/Core/CalendarDate.h"
#include "Oru/TimePoints/Core/CalendarTools.h"
#include "Oru/TimePoints/Core/CheckedArithmetic.h"
#include "Oru/TimePoints/Core/Formatters/TimeCodeFormatter.h"
#include "Oru/TimePoints/Core/Parsers/TimeCodeParser.h"
#include "Oru/TimePoints/Core/Rate.h"
#include "Oru/TimePoints/Core/VideoRates.h"
#include "Oru/TimePoints/Core/Visibility.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

/// A broadcast time code: the number of samples (frames) since 1900-01-01 00:00:00:00 at a nominal, whole
/// numbered rate. `TimeCodeBuilder` makes one from a date and a clock.
///
/// In drop-frame counting (30 or 60 samples a second only) the first 2 or 4 frame numbers of each minute are
/// skipped, except in every tenth minute; no frame is lost, only its number.
///
/// A time code without a date counts from 1900 all the same: its day is 1 January 1970.
///
/// A default time code is 1900-01-01 00:00:00:00, 50 samples a second, with a date.
///
/// Every operation that fails throws `std::out_of_range`, unless it says otherwise, and changes nothing:
/// a count or a field that its integer can't hold, a date or clock asked of a rate that isn't above 0.
class TimeCode {
 public:
  TimeCode() = default;

  /// The default time code.
  static TimeCode Empty() { return TimeCode(); }
  /// Whether this is the default time code.
  bool IsEmpty() const { return *this == Empty(); }

  /// The date and the clock. A count that was carried past the year 2261 goes on in the same calendar; one
  /// below 0 goes back before 1900.
  int32_t Year() const { return Field(Date().year); }
  /// From 1 to 12.
  int32_t Month() const { return Date().month; }
  /// From 1.
  int32_t Day() const { return Date().day; }
  /// From 0 to 23.
  int32_t Hour() const { return Field(ClockSample() / SamplePerSecond() / 3600); }
  /// From 0 to 59:
  int32_t Minute() const { return Field(ClockSample() / SamplePerSecond() / 60 % 60); }
  int32_t Second() const { return Field(ClockSample() / SamplePerSecond() % 60); }
  /// The frame number within the second, from 0.
  int32_t Sample() const { return Field(ClockSample() % SamplePerSecond()); }

  /// The nominal rate: whole samples a second.
  const TimePoints::Rate& Rate() const { return rate; }
  /// Whether drop-frame counting leaves out sample numbers.
  bool IsDrop() const { return isDrop; }
  /// False if the time code was built from a clock alone.
  bool HasDate() const { return hasDate; }
  /// Samples since 1900-01-01 00:00:00:00.
  int64_t TotalSample() const { return totalSample; }

  /// The time code `count` samples later. The sum may be 0 but not negative.
  ORU_TIMEPOINTS_VISIBLE TimeCode AddSample(int64_t count) const {
    return WithTotal(Int128(totalSample) + count);
  }
  /// The time code `count` samples earlier. The difference may be 0 but not negative.
  TimeCode SubstractSample(int64_t count) const { return WithTotal(Int128(totalSample) - count); }
  /// The number of samples from `other` to this time code. Throws `std::invalid_argument` if they aren't
  /// compatible.
  int64_t Substract(const TimeCode& other) const {
    RequireCompatible(other);
    return Count(Int128(totalSample) - other.totalSample);
  }

  /// `AddSample`, `SubstractSample` and `Substract`.
  TimeCode operator+(int64_t count) const { return AddSample(count); }
  TimeCode operator-(int64_t count) const { return SubstractSample(count); }
  int64_t operator-(const TimeCode& other) const { return Substract(other); }
  TimeCode& operator+=(int64_t count) { return *this = AddSample(count); }
  TimeCode& operator-=(int64_t count) { return *this = SubstractSample(count); }
  TimeCode& operator++() { return *this += 1; }
  TimeCode& operator--() { return *this -= 1; }
  TimeCode operator++(int) {
    const TimeCode before = *this;
    ++*this;
    return before;
  }
  TimeCode operator--(int) {
    const TimeCode before = *this;
    --*this;
    return before;
  }

  /// Whether the two count in the same way, so that their counts can be compared: same rate, same drop flag.
  bool IsCompatible(const TimeCode& other) const { return rate == other.rate && isDrop == other.isDrop; }

  /// Same count in the same way of counting, and both with or both without a date.
  bool operator==(const TimeCode& other) const { return Equals(other); }
  bool operator!=(const TimeCode& other) const { return !Equals(other); }

  /// The order of the counts. Throws `std::invalid_argument` if the two aren't compatible.
  bool operator<(const TimeCode& other) const {
    RequireCompatible(other);
    return totalSample < other.totalSample;
  }
  bool operator>(const TimeCode& other) const { return other < *this; }
  bool operator<=(const TimeCode& other) const { return !(other < *this); }
  bool operator>=(const TimeCode& other) const { return !(*this < other); }

  /// The text that the formatter gives.
  std::string ToString(const TimeCodeFormatter& formatter) const { return formatter.Format(*this); }
  /// Throws `std::invalid_argument` if the parser refuses the text.
  static TimeCode Parse(const std::string& text, TimeCodeParser& parser) { return parser.Parse(text); }

 private:
  friend class TimeCodeBuilder;

  TimeCode(int64_t total, bool drop, const TimePoints::Rate& sampleRate, bool dated)
      : rate(sampleRate), totalSample(total), isDrop(drop && CanDrop(sampleRate)), hasDate(dated) {}

  /// With date and clock.
  TimeCode(int year, int month, int day, int hour, int minute, int second, int sample,
           TimePoints::Rate sampleRate, bool drop)
      : TimeCode(0, drop, sampleRate, true) {
    totalSample = DateTimeToSample(year, month, day, hour, minute, second, sample);
  }

  /// With a clock only.
  TimeCode(int hour, int minute, int second, int sample, const TimePoints::Rate& sampleRate, bool drop)
      : TimeCode(1970, 1, 1, hour, minute, second, sample, sampleRate, drop) {
    hasDate = false;
  }

  static bool CanDrop(const TimePoints::Rate& sampleRate) {
    return sampleRate.Numerator() == 30 || sampleRate.Numerator() == 60;
  }

  static int64_t Count(Int128 count) {
    if (!CheckedArithmetic::FitsInt64(count)) {
      throw std::out_of_range("The number of samples does not fit 64 bits");
    }
    return static_cast<int64_t>(count);
  }

  static int32_t Field(int64_t value) {
    if (value > std::numeric_limits<int32_t>::max() || value < std::numeric_limits<int32_t>::min()) {
      throw std::out_of_range("Field " + std::to_string(value) + " of a time code does not fit 32 bits");
    }
    return static_cast<int32_t>(value);
  }

  bool Equals(TimeCode other) const {
    return IsCompatible(other) && totalSample == other.totalSample && hasDate == other.hasDate;
  }

  void RequireCompatible(const TimeCode& other) const {
    if (IsCompatible(other)) return;
    const auto name = [](const TimeCode& timeCode) {
      return timeCode.rate.ToString() + (timeCode.isDrop ? " drop" : "");
    };
    throw std::invalid_argument("Time codes at " + name(*this) + " and at " + name(other) +
                                " cannot be counted together");
  }

  TimeCode WithTotal(Int128 total) const {
    const int64_t newTotal = Count(total);
    if (newTotal < 0) {
      throw std::out_of_range("New TotalSample " + std::to_string(newTotal) +
                              " must be positive (after 1/1/1900) ");
    }
    return TimeCode(newTotal, isDrop, rate, hasDate);
  }

  /// Frame numbers that a minute skips, unless its number is a multiple of ten.
  int64_t SkippedPerMinute(bool drop) const {
    if (!drop || !CanDrop(rate)) return 0;
    return rate.Numerator() == 60 ? 4 : 2;
  }

  int64_t SamplePerSecond() const { return rate.Numerator(); }
  int64_t SamplePerMinute(bool drop) const {
    return Count(Int128(SamplePerSecond()) * 60 - SkippedPerMinute(drop));
  }
  int64_t SamplePerHour(bool drop) const {
    return Count(Int128(SamplePerMinute(drop)) * 60 + Int128(SkippedPerMinute(drop)) * 6);
  }
  int64_t SamplePerDay() const { return Count(Int128(SamplePerHour(isDrop)) * 24); }

  static int64_t DateToDays(int year, int month, int day) {
    return CalendarTools::DaysSince1900(year, month, day);
  }

  ORU_TIMEPOINTS_VISIBLE int64_t DateTimeToSample(int year, int month, int day, int hour, int minute,
                                                  int second, int sample) const {
    Int128 total = Int128(DateToDays(year, month, day)) * SamplePerDay();
    total += Int128(hour) * SamplePerHour(isDrop);
    total += Int128(minute) * SamplePerMinute(isDrop);
    total += Int128(second) * SamplePerSecond();
    total += Int128(minute / 10) * SkippedPerMinute(isDrop);
    return Count(total + sample);
  }

  /// `SamplePerDay`, fit to divide by.
  int64_t DayLength() const {
    if (SamplePerSecond() <= 0) {
      throw std::out_of_range("Rate " + rate.ToString() + " must be above 0 for a date or a clock");
    }
    return SamplePerDay();
  }

  CalendarDate Date() const {
    return CalendarTools::DateOfDay(CheckedArithmetic::FloorDivide(totalSample, DayLength()));
  }

  /// The samples since midnight as the clock counts them, skipped frame numbers included.
  int64_t ClockSample() const {
    const int64_t sampleOfDay = CheckedArithmetic::FloorRemainder(totalSample, DayLength());
    return isDrop ? AddSkippedHmsSamplesInNtscDrop(sampleOfDay) : sampleOfDay;
  }

  /// A ten minutes' stretch begins with a full minute; each minute after it starts with a skip.
  int64_t AddSkippedHmsSamplesInNtscDrop(int64_t sampleOfDay) const {
    const int64_t skipped = SkippedPerMinute(true);
    const int64_t shortMinute = SamplePerMinute(true);
    const int64_t tenMinutes = 10 * shortMinute + skipped;
    const int64_t rest = sampleOfDay % tenMinutes;
    const int64_t shortMinutesBegun = rest < skipped ? 0 : (rest - skipped) / shortMinute;
    return sampleOfDay + skipped * (sampleOfDay / tenMinutes * 9 + shortMinutesBegun);
  }

  TimePoints::Rate rate = VideoRates::Rate50();
  int64_t totalSample = 0;
  bool isDrop = false;
  bool hasDate = true;
};

}  // namespace Oru::TimePoints
