#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Export.h"
#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfile.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A profile that is nothing but a name and a set of key and value strings, in key order.
class ORU_BASETYPES_EXPORT GenericMetadataProfile : public MetadataProfile {
 public:
  /// Values by their keys.
  using Dictionary = std::map<std::string, std::string>;

  GenericMetadataProfile();
  /// A profile of that name without entries.
  explicit GenericMetadataProfile(BaseTypes::FullyQualifiedName name);
  GenericMetadataProfile(const GenericMetadataProfile&);
  GenericMetadataProfile(GenericMetadataProfile&&) noexcept;
  GenericMetadataProfile& operator=(const GenericMetadataProfile&);
  GenericMetadataProfile& operator=(GenericMetadataProfile&&) noexcept;
  ~GenericMetadataProfile() override;

  BaseTypes::FullyQualifiedName FullyQualifiedName() const override;
  /// Whether `other` is a generic profile too, of the same name and with the same entries.
  bool Equals(const MetadataProfile& other) const override;
  std::shared_ptr<MetadataProfile> Clone() const override;

  /// The number of entries.
  virtual int32_t Size() const;
  /// Removes all entries; the name stays.
  virtual void Clear();
  /// Calls `f(key, value)` for each entry in key order, until the first call that gives false. Whether all
  /// calls gave true. Without a target in `f` throws std::bad_function_call, unless the profile is empty. `f`
  /// may not add or remove entries.
  virtual bool Iterate(std::function<bool(const std::string& key, const std::string& value)> f) const;
  /// The same, with values that `f` may change.
  virtual bool Iterate(std::function<bool(const std::string& key, std::string& value)> f);

  /// Adds the entry, or overwrites the value of a key that exists.
  void Set(std::string key, std::string value);
  /// Whether there is an entry of that key.
  bool Contains(const std::string& key) const;
  /// Removes the entry; false if there is none.
  bool Erase(const std::string& key);
  /// The value of `key`; std::out_of_range if there is none.
  const std::string& Get(const std::string& key) const;
  /// The value of `key`, added as the empty text if there is none.
  std::string& operator[](const std::string& key);
  /// The keys in order.
  std::vector<std::string> Keys() const;
  /// The values, in the order of their keys.
  std::vector<std::string> Values() const;
  /// The entries, to walk through without a callback.
  const Dictionary& Entries() const noexcept { return dictionary; }

 private:
  BaseTypes::FullyQualifiedName fullyQualifiedName;
  Dictionary dictionary;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
