#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"

#include <algorithm>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

GenericMetadataProfile::GenericMetadataProfile() = default;
GenericMetadataProfile::GenericMetadataProfile(BaseTypes::FullyQualifiedName name)
    : fullyQualifiedName(std::move(name)) {}
GenericMetadataProfile::GenericMetadataProfile(const GenericMetadataProfile&) = default;
GenericMetadataProfile::GenericMetadataProfile(GenericMetadataProfile&&) noexcept = default;
GenericMetadataProfile& GenericMetadataProfile::operator=(const GenericMetadataProfile&) = default;
GenericMetadataProfile& GenericMetadataProfile::operator=(GenericMetadataProfile&&) noexcept = default;
GenericMetadataProfile::~GenericMetadataProfile() = default;

BaseTypes::FullyQualifiedName GenericMetadataProfile::FullyQualifiedName() const {
  return fullyQualifiedName;
}

bool GenericMetadataProfile::Equals(const MetadataProfile& other) const {
  if (other.FullyQualifiedName() != fullyQualifiedName) return false;
  const auto* generic = dynamic_cast<const GenericMetadataProfile*>(&other);
  return generic != nullptr && generic->dictionary == dictionary;
}

std::shared_ptr<MetadataProfile> GenericMetadataProfile::Clone() const {
  return std::make_shared<GenericMetadataProfile>(*this);
}

int32_t GenericMetadataProfile::Size() const {
  return static_cast<int32_t>(dictionary.size());
}

void GenericMetadataProfile::Clear() {
  dictionary.clear();
}

bool GenericMetadataProfile::Iterate(std::function<bool(const std::string&, const std::string&)> f) const {
  return std::all_of(dictionary.begin(), dictionary.end(),
                     [&f](const auto& entry) { return f(entry.first, entry.second); });
}

bool GenericMetadataProfile::Iterate(std::function<bool(const std::string&, std::string&)> f) {
  return std::all_of(dictionary.begin(), dictionary.end(),
                     [&f](auto& entry) { return f(entry.first, entry.second); });
}

void GenericMetadataProfile::Set(std::string key, std::string value) {
  dictionary.insert_or_assign(std::move(key), std::move(value));
}

bool GenericMetadataProfile::Contains(const std::string& key) const {
  return dictionary.count(key) != 0;
}

bool GenericMetadataProfile::Erase(const std::string& key) {
  return dictionary.erase(key) != 0;
}

const std::string& GenericMetadataProfile::Get(const std::string& key) const {
  return dictionary.at(key);
}

std::string& GenericMetadataProfile::operator[](const std::string& key) {
  return dictionary[key];
}

std::vector<std::string> GenericMetadataProfile::Keys() const {
  std::vector<std::string> keys;
  keys.reserve(dictionary.size());
  for (const auto& entry : dictionary)
    keys.push_back(entry.first);
  return keys;
}

std::vector<std::string> GenericMetadataProfile::Values() const {
  std::vector<std::string> values;
  values.reserve(dictionary.size());
  for (const auto& entry : dictionary)
    values.push_back(entry.second);
  return values;
}

}  // namespace Oru::BusinessEntityModel::BaseTypes
