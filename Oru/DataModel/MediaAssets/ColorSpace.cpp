#include "Oru/DataModel/MediaAssets/ColorSpace.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<ColorSpace>& Texts() {
  static const EnumerationText<ColorSpace> texts{
      {ColorSpace::unknown, "unknown"},
      {ColorSpace::BT709, "BT709"},
      {ColorSpace::BT601, "BT601"},
      {ColorSpace::BT601_JPEG, "BT601_JPEG"},
      {ColorSpace::BT2020, "BT2020"},
      {ColorSpace::FCC, "FCC"},
      {ColorSpace::SMPTE_170M, "SMPTE_170M"},
      {ColorSpace::SMPTE_240M, "SMPTE_240M"},
      {ColorSpace::SRGB, "SRGB"},
  };
  return texts;
}

}  // namespace

std::string ToString(ColorSpace value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, ColorSpace& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
