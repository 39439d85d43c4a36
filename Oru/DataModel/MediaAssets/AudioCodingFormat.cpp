#include "Oru/DataModel/MediaAssets/AudioCodingFormat.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<AudioCodingFormat>& Texts() {
  static const EnumerationText<AudioCodingFormat> texts{
      {AudioCodingFormat::unknown, "unknown"}, {AudioCodingFormat::AAC, "AAC"},
      {AudioCodingFormat::Alaw, "Alaw"},       {AudioCodingFormat::DolbyE, "DolbyE"},
      {AudioCodingFormat::MP1, "MP1"},         {AudioCodingFormat::MP2, "MP2"},
      {AudioCodingFormat::MP3, "MP3"},         {AudioCodingFormat::PCM, "PCM"},
      {AudioCodingFormat::WMA, "WMA"},
  };
  return texts;
}

}  // namespace

std::string ToString(AudioCodingFormat value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, AudioCodingFormat& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
