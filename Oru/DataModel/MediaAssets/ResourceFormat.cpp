#include "Oru/DataModel/MediaAssets/ResourceFormat.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<ResourceFormat>& Texts() {
  static const EnumerationText<ResourceFormat> texts{
      {ResourceFormat::unknown, "unknown"},
      {ResourceFormat::ToBeDefined, "ToBeDefined"},
  };
  return texts;
}

}  // namespace

std::string ToString(ResourceFormat value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, ResourceFormat& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
