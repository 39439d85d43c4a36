#include "Oru/BusinessEntityModel/Edits/DapOperatorTimecodeRegen.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::BusinessEntityModel::Edits {

namespace {

using Continuity = DapOperatorTimecodeRegen::Continuity;
using Reference = DapOperatorTimecodeRegen::Reference;
using Output = DapOperatorTimecodeRegen::Output;
using DataModel::MediaAssets::EnumerationText;

const EnumerationText<Continuity>& ContinuityTexts() {
  static const EnumerationText<Continuity> texts{
      {Continuity::Sequence, "Sequence"},
      {Continuity::Blocks, "Blocks"},
  };
  return texts;
}

const EnumerationText<Reference>& ReferenceTexts() {
  static const EnumerationText<Reference> texts{
      {Reference::Reference, "Reference"},
      {Reference::Tod, "Tod"},
      {Reference::User, "User"},
  };
  return texts;
}

const EnumerationText<Output>& OutputTexts() {
  static const EnumerationText<Output> texts{
      {Output::AtcVitc, "AtcVitc"},
      {Output::AtcLtc, "AtcLtc"},
      {Output::Both, "Both"},
  };
  return texts;
}

}  // namespace

DapOperatorTimecodeRegen::DapOperatorTimecodeRegen() = default;

bool DapOperatorTimecodeRegen::operator==(const DapOperatorTimecodeRegen& other) const {
  return continuity == other.continuity && from == other.from && reference == other.reference &&
         in == other.in;
}

std::string ToString(Continuity value) {
  return ContinuityTexts().ToString(value);
}

std::string ToString(Reference value) {
  return ReferenceTexts().ToString(value);
}

std::string ToString(Output value) {
  return OutputTexts().ToString(value);
}

bool TryParse(const std::string& text, Continuity& value) {
  return ContinuityTexts().TryParse(text, value);
}

bool TryParse(const std::string& text, Reference& value) {
  return ReferenceTexts().TryParse(text, value);
}

bool TryParse(const std::string& text, Output& value) {
  return OutputTexts().TryParse(text, value);
}

}  // namespace Oru::BusinessEntityModel::Edits
