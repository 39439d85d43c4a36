#include "Oru/DataModel/MediaAssets/TimecodePrimary.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<TimecodePrimary>& Texts() {
  static const EnumerationText<TimecodePrimary> texts{
      {TimecodePrimary::NotSet, "NotSet"},
      {TimecodePrimary::Tod, "Tod"},
      {TimecodePrimary::User, "User"},
  };
  return texts;
}

}  // namespace

std::string ToString(TimecodePrimary value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, TimecodePrimary& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
