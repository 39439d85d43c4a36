#include "Oru/DataModel/MediaAssets/AnnotationType.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<AnnotationType>& Texts() {
  static const EnumerationText<AnnotationType> texts{
      {AnnotationType::unknown, "unknown"},
      {AnnotationType::CuePoint, "CuePoint"},
  };
  return texts;
}

}  // namespace

std::string ToString(AnnotationType value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, AnnotationType& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
