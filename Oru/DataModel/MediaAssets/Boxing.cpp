#include "Oru/DataModel/MediaAssets/Boxing.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<Boxing>& Texts() {
  static const EnumerationText<Boxing> texts{
      {Boxing::unknown, "unknown"},
      {Boxing::topaligned, "topaligned"},
      {Boxing::wide, "wide"},
      {Boxing::fullframe, "fullframe"},
      {Boxing::pillarbox, "pillarbox"},
      {Boxing::letterbox, "letterbox"},
      {Boxing::window, "window"},
      {Boxing::protect14x9, "protect14x9"},
      {Boxing::protect4x3, "protect4x3"},
  };
  return texts;
}

}  // namespace

std::string ToString(Boxing value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, Boxing& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
