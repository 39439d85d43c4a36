#include "Oru/DataModel/MediaAssets/BitRateMode.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<BitRateMode>& Texts() {
  static const EnumerationText<BitRateMode> texts{
      {BitRateMode::unknown, "unknown"},
      {BitRateMode::cbr, "cbr"},
      {BitRateMode::vbr, "vbr"},
  };
  return texts;
}

}  // namespace

std::string ToString(BitRateMode value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, BitRateMode& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
