#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"

#include <utility>

namespace Oru::DataModel::MediaAssets {

/// The metadata field of an entity that holds its dictionary by value. A dictionary's own copy would share
/// the profiles with the original, so that a change to one entity's profile would show in the other: a copy
/// of this has profiles of its own.
class OwnedMetadata {
 public:
  /// What is owned.
  using Dictionary = BusinessEntityModel::BaseTypes::MetadataProfileDictionary;

  OwnedMetadata() = default;
  OwnedMetadata(const OwnedMetadata& other) : dictionary(other.dictionary.DeepCopy()) {}
  OwnedMetadata(OwnedMetadata&&) noexcept = default;
  OwnedMetadata& operator=(const OwnedMetadata& other) {
    if (this != &other) dictionary = other.dictionary.DeepCopy();
    return *this;
  }
  OwnedMetadata& operator=(OwnedMetadata&&) noexcept = default;
  ~OwnedMetadata() = default;

  /// Takes the dictionary with its profiles.
  OwnedMetadata& operator=(Dictionary&& other) noexcept {
    dictionary = std::move(other);
    return *this;
  }
  /// Takes copies of the profiles.
  OwnedMetadata& operator=(const Dictionary& other) {
    if (&dictionary != &other) dictionary = other.DeepCopy();
    return *this;
  }

  /// The dictionary.
  const Dictionary& operator*() const noexcept { return dictionary; }
  Dictionary& operator*() noexcept { return dictionary; }

  /// Whether the dictionary holds the profile of class `P`. False if one of another class has its name.
  template <class P>
  bool Has() const {
    return dictionary.Get<P>() != nullptr;
  }
  /// The profile of class `P`.
  /// @throws std::out_of_range "map::at" without one, std::bad_cast if one of another class has its name
  template <class P>
  const P& Require() const {
    return dynamic_cast<const P&>(dictionary.At(P::StaticFullyQualifiedName()));
  }
  template <class P>
  P& Require() {
    return dynamic_cast<P&>(dictionary.At(P::StaticFullyQualifiedName()));
  }

 private:
  Dictionary dictionary;
};

}  // namespace Oru::DataModel::MediaAssets
