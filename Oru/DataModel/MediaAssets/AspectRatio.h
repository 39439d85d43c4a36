#pragma once

#include <cstdint>

namespace Oru::DataModel::MediaAssets {

/// The shape of a picture, width to height, as 16:9. It is held as it was given, not reduced.
class AspectRatio {
 public:
  /// 1:1.
  AspectRatio() = default;
  AspectRatio(int32_t width, int32_t height) : widthFactor(width), heightFactor(height) {}

  /// 1:1, as a default aspect ratio; one shared instance.
  static const AspectRatio& Empty() {
    static const AspectRatio empty;
    return empty;
  }

  /// The two numbers, as 16 and 9; neither is checked nor reduced:
  int32_t WidthFactor() const noexcept { return widthFactor; }
  void WidthFactor(int32_t value) noexcept { widthFactor = value; }
  int32_t HeightFactor() const noexcept { return heightFactor; }
  void HeightFactor(int32_t value) noexcept { heightFactor = value; }

  /// The same numbers: 32:18 isn't 16:9.
  bool operator==(const AspectRatio& other) const noexcept {
    return widthFactor == other.widthFactor && heightFactor == other.heightFactor;
  }
  bool operator!=(const AspectRatio& other) const noexcept { return !(*this == other); }

 private:
  int32_t widthFactor = 1;
  int32_t heightFactor = 1;
};

}  // namespace Oru::DataModel::MediaAssets
