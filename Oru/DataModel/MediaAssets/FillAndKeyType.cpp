#include "Oru/DataModel/MediaAssets/FillAndKeyType.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<FillAndKeyType>& Texts() {
  static const EnumerationText<FillAndKeyType> texts{
      {FillAndKeyType::unknown, "unknown"},
      {FillAndKeyType::fill, "fill"},
      {FillAndKeyType::key, "key"},
  };
  return texts;
}

}  // namespace

std::string ToString(FillAndKeyType value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, FillAndKeyType& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
