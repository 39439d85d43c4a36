#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"

#include <memory>

namespace Oru::DataModel::MediaAssets {

/// The metadata field of an entity that hands its dictionary out as a shared pointer. A new entity has an
/// empty dictionary, and a copy has one of its own with profiles of its own; the pointer is never null, but
/// after a move.
class OwnedSharedMetadata {
 public:
  /// What is owned.
  using Dictionary = BusinessEntityModel::BaseTypes::MetadataProfileDictionary;

  OwnedSharedMetadata() : dictionary(std::make_shared<Dictionary>()) {}
  OwnedSharedMetadata(const OwnedSharedMetadata& other) : dictionary(other.dictionary->Clone()) {}
  OwnedSharedMetadata(OwnedSharedMetadata&&) noexcept = default;
  OwnedSharedMetadata& operator=(const OwnedSharedMetadata& other) {
    if (this != &other) dictionary = other.dictionary->Clone();
    return *this;
  }
  OwnedSharedMetadata& operator=(OwnedSharedMetadata&&) noexcept = default;
  ~OwnedSharedMetadata() = default;

  /// The dictionary, never null.
  const std::shared_ptr<Dictionary>& Pointer() const noexcept { return dictionary; }
  /// The dictionary.
  const Dictionary& operator*() const noexcept { return *dictionary; }

 private:
  std::shared_ptr<Dictionary> dictionary;
};

}  // namespace Oru::DataModel::MediaAssets
