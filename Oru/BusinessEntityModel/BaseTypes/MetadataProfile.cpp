#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfile.h"

namespace Oru::BusinessEntityModel::BaseTypes {

MetadataProfile::~MetadataProfile() = default;

std::string MetadataProfile::ToString() const {
  return FullyQualifiedName().Value();
}

}  // namespace Oru::BusinessEntityModel::BaseTypes
