#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

void MetadataProfileDictionary::Set(std::shared_ptr<MetadataProfile> profile) {
  if (!profile) {
    throw std::invalid_argument(
        "Oru::BusinessEntityModel::BaseTypes::MetadataProfileDictionary::Set: the profile may not be null");
  }
  FullyQualifiedName name = profile->FullyQualifiedName();
  values.insert_or_assign(std::move(name), std::move(profile));
}

bool MetadataProfileDictionary::Contains(const FullyQualifiedName& name) const {
  return values.count(name) != 0;
}

MetadataProfile& MetadataProfileDictionary::At(const FullyQualifiedName& name) {
  return *values.at(name);
}

const MetadataProfile& MetadataProfileDictionary::At(const FullyQualifiedName& name) const {
  return *values.at(name);
}

std::shared_ptr<MetadataProfile> MetadataProfileDictionary::operator[](const FullyQualifiedName& name) {
  const auto entry = values.find(name);
  return entry != values.end() ? entry->second : nullptr;
}

std::shared_ptr<const MetadataProfile> MetadataProfileDictionary::operator[](
    const FullyQualifiedName& name) const {
  const auto entry = values.find(name);
  return entry != values.end() ? entry->second : nullptr;
}

std::vector<FullyQualifiedName> MetadataProfileDictionary::Keys() const {
  std::vector<FullyQualifiedName> keys;
  keys.reserve(values.size());
  for (const auto& entry : values)
    keys.push_back(entry.first);
  return keys;
}

std::vector<std::shared_ptr<MetadataProfile>> MetadataProfileDictionary::Values() const {
  std::vector<std::shared_ptr<MetadataProfile>> profiles;
  profiles.reserve(values.size());
  for (const auto& entry : values)
    profiles.push_back(entry.second);
  return profiles;
}

bool MetadataProfileDictionary::Erase(const FullyQualifiedName& name) {
  return values.erase(name) != 0;
}

bool MetadataProfileDictionary::Erase(const std::shared_ptr<MetadataProfile>& profile) {
  const auto entry = std::find_if(values.begin(), values.end(),
                                  [&profile](const auto& candidate) { return candidate.second == profile; });
  if (entry == values.end()) return false;
  values.erase(entry);
  return true;
}

MetadataProfileDictionary MetadataProfileDictionary::DeepCopy() const {
  MetadataProfileDictionary copy;
  for (const auto& entry : values)
    copy.values.emplace_hint(copy.values.end(), entry.first, entry.second->Clone());
  return copy;
}

std::shared_ptr<MetadataProfileDictionary> MetadataProfileDictionary::Clone() const {
  return std::make_shared<MetadataProfileDictionary>(DeepCopy());
}

bool MetadataProfileDictionary::Equals(const MetadataProfileDictionary& other) const {
  return std::equal(values.begin(), values.end(), other.values.begin(), other.values.end(),
                    [](const auto& left, const auto& right) {
                      return left.first == right.first && left.second->Equals(*right.second);
                    });
}

}  // namespace Oru::BusinessEntityModel::BaseTypes
