#include "Oru/DataModel/MediaAssets/DataEssence.h"

namespace Oru::DataModel::MediaAssets {

DataEssence::DataEssence() : Essence(Type::Data) {}
DataEssence::DataEssence(const DataEssence&) = default;
DataEssence::DataEssence(DataEssence&&) noexcept = default;
DataEssence& DataEssence::operator=(const DataEssence&) = default;
DataEssence& DataEssence::operator=(DataEssence&&) noexcept = default;
DataEssence::~DataEssence() = default;

std::unique_ptr<Essence> DataEssence::Clone() const {
  return CloneOf(*this);
}

bool DataEssence::HasEqualFields(const Essence&) const {
  return true;
}

}  // namespace Oru::DataModel::MediaAssets
