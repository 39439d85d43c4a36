#pragma once

#include <cstdint>

namespace Oru::DataModel::MediaAssets {

/// The frame rate or sample rate of an essence: `numerator` events in `denominator` seconds, as 30000/1001.
/// It is held as it was given, not reduced: 50/1 and 100/2 are two rates.
class Rate {
 public:
  /// 1/1.
  Rate() = default;
  Rate(int32_t events, int32_t seconds) : numerator(events), denominator(seconds) {}

  /// 1/1, as a default rate; one shared instance.
  static const Rate& Empty() {
    static const Rate empty;
    return empty;
  }

  /// Events, and the seconds in which there are so many; neither is checked nor reduced:
  int32_t Numerator() const noexcept { return numerator; }
  int32_t Denominator() const noexcept { return denominator; }

  /// The same numbers: 50/2 isn't 25/1.
  bool operator==(const Rate& other) const noexcept {
    return numerator == other.numerator && denominator == other.denominator;
  }
  bool operator!=(const Rate& other) const noexcept { return !(*this == other); }

 private:
  int32_t numerator = 1;
  int32_t denominator = 1;
};

}  // namespace Oru::DataModel::MediaAssets
