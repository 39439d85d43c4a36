#include "Oru/DataModel/MediaAssets/Location.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<Location::Type>& Texts() {
  static const EnumerationText<Location::Type> texts{
      {Location::Type::unknown, "unknown"},
      {Location::Type::file, "file"},
      {Location::Type::folder, "folder"},
      {Location::Type::network, "network"},
  };
  return texts;
}

}  // namespace

std::string ToString(Location::Type value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, Location::Type& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
