#pragma once

#include "Oru/TimePoints/Core/CalendarTools.h"
#include "Oru/TimePoints/Core/Rate.h"
#include "Oru/TimePoints/Core/TimeCode.h"
#include "Oru/TimePoints/Core/VideoRates.h"
#include "Oru/TimePoints/Core/Visibility.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace Oru::TimePoints {

/// Makes time codes from a date and a clock, or from a clock alone:
///
///     TimeCodeBuilder().Date(2024, 2, 29).ClockTime(10, 0, 0, 12).Rate(VideoRates::Rate25()).Build()
///
/// A new builder is at 1900-01-01 00:00:00:00, 50 samples a second, without drop and without a date.
/// `Year` and `Date` give the time code a date; `Month` and `Day` alone don't.
class TimeCodeBuilder {
 public:
  TimeCodeBuilder() = default;

  /// The fields take any value; `Build` judges them.
  TimeCodeBuilder& Year(int value) {
    hasDate = true;
    year = value;
    return *this;
  }
  /// Any value, which `Build` judges:
  TimeCodeBuilder& Month(int value) {
    month = value;
    return *this;
  }
  TimeCodeBuilder& Day(int value) {
    day = value;
    return *this;
  }
  TimeCodeBuilder& Hour(int value) {
    hour = value;
    return *this;
  }
  TimeCodeBuilder& Minute(int value) {
    minute = value;
    return *this;
  }
  TimeCodeBuilder& Second(int value) {
    second = value;
    return *this;
  }
  /// The frame number within the second, from 0. A negative one counts back from the second.
  TimeCodeBuilder& Sample(int value) {
    sample = value;
    return *this;
  }
  /// The nominal rate: whole samples a second, as 30/1 where the samples really come at 30000/1001.
  TimeCodeBuilder& Rate(TimePoints::Rate value) {
    rate = value;
    return *this;
  }
  /// Drop-frame counting, for 30/1 and 60/1.
  TimeCodeBuilder& IsDrop(bool value) {
    isDrop = value;
    return *this;
  }
  /// `Year`, `Month` and `Day` at once.
  TimeCodeBuilder& Date(int yearValue, int monthValue, int dayValue) {
    return Year(yearValue).Month(monthValue).Day(dayValue);
  }
  /// `Hour`, `Minute`, `Second` and `Sample` at once.
  TimeCodeBuilder& ClockTime(int hourValue, int minuteValue, int secondValue, int sampleValue) {
    return Hour(hourValue).Minute(minuteValue).Second(secondValue).Sample(sampleValue);
  }

  /// The time code of the fields. Throws `std::out_of_range`, naming the first field at fault, for a date
  /// outside the years 1900 to 2261 or not in the calendar, a clock outside the day, a rate that isn't
  /// whole, a sample number that the rate or drop-frame counting doesn't have; and for a rate so high that
  /// its samples can't be counted in 64 bits. The year is judged also where there is no date.
  ORU_TIMEPOINTS_VISIBLE TimeCode Build() const {
    IsValidToBuildWithexception();
    if (hasDate) return TimeCode(year, month, day, hour, minute, second, sample, rate, isDrop);
    return TimeCode(hour, minute, second, sample, rate, isDrop);
  }

  /// True exactly when `Build` gives a time code.
  bool IsValidToBuild() const {
    try {
      Build();
      return true;
    } catch (const std::out_of_range&) {
      return false;
    }
  }

 private:
  bool IsValidToBuildWithexception() const {
    CheckDate();
    CheckClock();
    CheckRate();
    if (isDrop) CheckDrop();
    return true;
  }

  static std::string Text(int64_t value) { return std::to_string(value); }

  static void CheckRange(const char* name, int value, int lowest, int highest) {
    if (value >= lowest && value <= highest) return;
    throw std::out_of_range(name + (" " + Text(value)) + " must be between " + Text(lowest) + " and " +
                            Text(highest));
  }

  void CheckDate() const {
    CheckRange("year", year, SinceYear, UntilYear);
    CheckRange("month", month, 1, 12);
    const int lastDay = CalendarTools::DayPerMonth(year, month);
    if (day >= 1 && day <= lastDay) return;
    throw std::out_of_range("day " + Text(day) + "is negative or greater than " + Text(lastDay) +
                            " in month " + Text(month));
  }

  void CheckClock() const {
    CheckRange("hour", hour, 0, 23);
    CheckRange("minute", minute, 0, 59);
    CheckRange("second", second, 0, 59);
  }

  void CheckRate() const {
    if (rate.Denominator() != 1) {
      throw std::out_of_range("Denominator " + Text(rate.Denominator()) + " must be between equals to 1");
    }
    if (sample >= rate.Numerator()) {
      throw std::out_of_range("Sample " + Text(sample) + " is greater than numerator ratio " +
                              Text(rate.Numerator()));
    }
  }

  void CheckDrop() const {
    const bool minuteSkips = minute % 10 != 0 && second == 0;
    if (minuteSkips && sample < (rate.Numerator() == 30 ? 2 : 4)) {
      throw std::out_of_range("In dropped TimeCode, this value doesn't exist " + Text(minute) + ":" +
                              Text(second) + ";" + Text(sample));
    }
    if (rate.Numerator() != 30 && rate.Numerator() != 60) {
      throw std::out_of_range("Rate " + Text(rate.Numerator()) + " / " + Text(rate.Denominator()) +
                              " is not compatible with drop TC format");
    }
  }

  int32_t year = SinceYear;
  int32_t month = 1;
  int32_t day = 1;
  int32_t hour = 0;
  int32_t minute = 0;
  int32_t second = 0;
  int32_t sample = 0;
  TimePoints::Rate rate = VideoRates::Rate50();
  bool isDrop = false;
  bool hasDate = false;
};

}  // namespace Oru::TimePoints
