#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Export.h"
#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfile.h"

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

namespace Oru::BusinessEntityModel::BaseTypes {

/// The metadata profiles of one entity, one for each name, in name order.
///
/// The dictionary shares its profiles with all that point to them, and a plain copy shares them with its
/// original: a change to a profile shows in both. `DeepCopy` and `Clone` give independent profiles.
///
/// A profile keeps its name while it is in a dictionary.
///
/// Threads: a value belongs to one thread at a time; distinct values are independent, but two dictionaries
/// that share a profile are not distinct.
class ORU_BASETYPES_EXPORT MetadataProfileDictionary {
 public:
  /// Stores the profile under its name, in place of the one that had the name. std::invalid_argument for an
  /// empty pointer.
  void Set(std::shared_ptr<MetadataProfile> profile);
  /// Whether there is a profile of that name.
  bool Contains(const FullyQualifiedName& name) const;

  /// The profile of the name; a name that is missing throws std::out_of_range with the text "map::at".
  MetadataProfile& At(const FullyQualifiedName& name);
  const MetadataProfile& At(const FullyQualifiedName& name) const;
  /// The profile of the name, or an empty pointer.
  std::shared_ptr<MetadataProfile> operator[](const FullyQualifiedName& name);
  std::shared_ptr<const MetadataProfile> operator[](const FullyQualifiedName& name) const;
  /// The profile of the name `P::StaticFullyQualifiedName()`, or an empty pointer if the name is missing or
  /// the profile is not a `P`.
  template <class P>
  std::shared_ptr<P> Get() {
    return std::dynamic_pointer_cast<P>((*this)[P::StaticFullyQualifiedName()]);
  }
  /// The profile of class `P`; null if there is none, or one of another class has its name.
  template <class P>
  std::shared_ptr<const P> Get() const {
    return std::dynamic_pointer_cast<const P>((*this)[P::StaticFullyQualifiedName()]);
  }

  /// Calls `f(profile)` for each profile in name order, until the first call that gives false. Whether all
  /// calls gave true. `f` may not add or remove profiles.
  template <class F>
  bool Iterate(F f) {
    for (auto& entry : values) {
      if (!f(*entry.second)) return false;
    }
    return true;
  }
  /// The same, with profiles that `f` may not change.
  template <class F>
  bool Iterate(F f) const {
    for (const auto& entry : values) {
      const MetadataProfile& profile = *entry.second;
      if (!f(profile)) return false;
    }
    return true;
  }

  /// Takes out all elements.
  void Clear() noexcept { values.clear(); }
  /// Whether there are no elements.
  bool Empty() const noexcept { return values.empty(); }
  /// The number of elements.
  std::size_t Size() const noexcept { return values.size(); }
  /// The names of the profiles, in order.
  std::vector<FullyQualifiedName> Keys() const;
  /// The profiles, in name order.
  std::vector<std::shared_ptr<MetadataProfile>> Values() const;

  /// Removes the profile of the name; false if there is none.
  bool Erase(const FullyQualifiedName& name);
  /// Removes this very profile; false if it isn't in the dictionary, even if another one has its name.
  bool Erase(const std::shared_ptr<MetadataProfile>& profile);

  /// A dictionary of independent copies of the profiles.
  MetadataProfileDictionary DeepCopy() const;
  /// `DeepCopy` as a shared object.
  std::shared_ptr<MetadataProfileDictionary> Clone() const;

  /// The same names, each with profiles that are equal by `MetadataProfile::Equals`.
  bool Equals(const MetadataProfileDictionary& other) const;
  /// `Equals`.
  bool operator==(const MetadataProfileDictionary& other) const { return Equals(other); }
  bool operator!=(const MetadataProfileDictionary& other) const { return !Equals(other); }

 private:
  using map = std::map<BaseTypes::FullyQualifiedName, std::shared_ptr<MetadataProfile>>;

  map values;
};

/// The metadata that a user sees and edits.
using EditorialMetadata = MetadataProfileDictionary;
/// The metadata that describes the technical side of a file.
using TechnicalMetadata = MetadataProfileDictionary;

}  // namespace Oru::BusinessEntityModel::BaseTypes
