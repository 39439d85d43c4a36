#include "Oru/DataModel/MediaAssets/AssetType.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<AssetType>& Texts() {
  static const EnumerationText<AssetType> texts{
      {AssetType::unknown, "unknown"},
      {AssetType::train, "train"},
      {AssetType::media, "media"},
  };
  return texts;
}

}  // namespace

std::string ToString(AssetType value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, AssetType& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
