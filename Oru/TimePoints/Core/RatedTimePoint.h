#pragma once

#include "Oru/TimePoints/Core/CheckedArithmetic.h"
#include "Oru/TimePoints/Core/Duration.h"
#include "Oru/TimePoints/Core/Rate.h"
#include "Oru/TimePoints/Core/TimePoint.h"

#include <cstdint>
#include <stdexcept>

namespace Oru::TimePoints {

/// An instant on the sample grid of a rate: the start of a sample, and how far past it the instant lay that
/// was aligned. Moving by samples keeps that remainder, so moving forth and back is exact.
///
/// A default one has neither instant nor rate; its sample number can't be asked for.
///
/// Unless said otherwise, operations that need a sample throw `std::invalid_argument` for a rate that isn't
/// above 0, and `std::overflow_error` where the sample lies beyond the range of `TimePoint`.
class RatedTimePoint {
 public:
  RatedTimePoint() = default;

  /// The sample that is under way at `instant`.
  RatedTimePoint(const TimePoints::TimePoint& instant, const TimePoints::Rate& sampleRate)
      : RatedTimePoint(instant.GetSampleNumber(sampleRate), sampleRate) {
    delta = instant - timePoint;
  }

  /// The start of sample `sampleNumber`.
  RatedTimePoint(int64_t sampleNumber, const TimePoints::Rate& sampleRate)
      : timePoint(TimePoints::TimePoint::FromSampleNumber(sampleRate, sampleNumber)), rate(sampleRate) {}

  /// The sample that begins at `start`, with the remainder up to `instant`. Throws `std::invalid_argument`
  /// if `instant` isn't within a sample that begins there.
  RatedTimePoint(const TimePoints::TimePoint& start, const TimePoints::Rate& sampleRate,
                 const TimePoints::TimePoint& instant)
      : RatedTimePoint(instant, sampleRate) {
    if (timePoint != start) throw std::invalid_argument("The instant is not in a sample with that start");
  }

  /// The value without instant and rate, as a default one.
  static RatedTimePoint Empty() { return RatedTimePoint(); }

  /// The start of the sample.
  const TimePoints::TimePoint& TimePoint() const { return timePoint; }
  /// The rate that samples are counted at.
  const TimePoints::Rate& Rate() const { return rate; }
  /// From the start of the sample to the instant that was aligned.
  const Duration& Delta() const { return delta; }
  /// The number of the sample that is under way at the instant.
  int64_t SampleNumber() const { return timePoint.GetSampleNumber(rate); }

  /// The sample `count` further on, with the same remainder.
  RatedTimePoint Add(int64_t count) const { return AtSample(Int128(SampleNumber()) + count); }
  /// The sample `count` further back, with the same remainder.
  RatedTimePoint Substract(int64_t count) const { return AtSample(Int128(SampleNumber()) - count); }
  /// The number of samples from `other` to this one. Throws `std::invalid_argument` if the rates differ.
  int64_t Substract(const RatedTimePoint& other) const {
    if (rate != other.rate) {
      throw std::invalid_argument("Samples at " + rate.ToString() + " and at " + other.rate.ToString() +
                                  " cannot be counted together");
    }
    return CheckedArithmetic::ToInt64(Int128(SampleNumber()) - other.SampleNumber(), "Number of samples");
  }

  /// `Add` and `Substract`; the count is one of samples.
  RatedTimePoint operator+(int64_t count) const { return Add(count); }
  RatedTimePoint operator-(int64_t count) const { return Substract(count); }
  int64_t operator-(const RatedTimePoint& other) const { return Substract(other); }
  RatedTimePoint& operator+=(int64_t count) { return *this = Add(count); }
  RatedTimePoint& operator-=(int64_t count) { return *this = Substract(count); }

  /// Same sample start, same rate by its two numbers, and same remainder.
  bool operator==(const RatedTimePoint& other) const {
    return timePoint == other.timePoint && rate == other.rate && delta == other.delta;
  }
  bool operator!=(const RatedTimePoint& other) const { return !(*this == other); }

 private:
  RatedTimePoint AtSample(Int128 sampleNumber) const {
    RatedTimePoint moved(CheckedArithmetic::ToInt64(sampleNumber, "Sample number"), rate);
    moved.delta = delta;
    return moved;
  }

  TimePoints::TimePoint timePoint;
  TimePoints::Rate rate;
  Duration delta;
};

inline RatedTimePoint TimePoint::AlignWith(const Rate& rate) const {
  return RatedTimePoint(*this, rate);
}

}  // namespace Oru::TimePoints
