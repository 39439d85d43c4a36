#include "Oru/DataModel/MediaAssets/UserTimecodeType.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<UserTimecodeType>& Texts() {
  static const EnumerationText<UserTimecodeType> texts{
      {UserTimecodeType::HancVitc, "HancVitc"},
      {UserTimecodeType::HancLtc, "HancLtc"},
      {UserTimecodeType::AnalLtc, "AnalLtc"},
  };
  return texts;
}

}  // namespace

std::string ToString(UserTimecodeType value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, UserTimecodeType& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
