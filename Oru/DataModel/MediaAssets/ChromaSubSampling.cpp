#include "Oru/DataModel/MediaAssets/ChromaSubSampling.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<ChromaSubSampling>& Texts() {
  static const EnumerationText<ChromaSubSampling> texts{
      {ChromaSubSampling::unknown, "unknown"}, {ChromaSubSampling::CS_444, "CS_444"},
      {ChromaSubSampling::CS_422, "CS_422"},   {ChromaSubSampling::CS_421, "CS_421"},
      {ChromaSubSampling::CS_411, "CS_411"},   {ChromaSubSampling::CS_420, "CS_420"},
      {ChromaSubSampling::CS_410, "CS_410"},   {ChromaSubSampling::CS_311, "CS_311"},
  };
  return texts;
}

}  // namespace

std::string ToString(ChromaSubSampling value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, ChromaSubSampling& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
