#include "Oru/DataModel/MediaAssets/ScanMode.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<ScanMode>& Texts() {
  static const EnumerationText<ScanMode> texts{
      {ScanMode::unknown, "unknown"},
      {ScanMode::progressive, "progressive"},
      {ScanMode::interlaced, "interlaced"},
  };
  return texts;
}

}  // namespace

std::string ToString(ScanMode value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, ScanMode& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
