#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Export.h"
#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"

#include <memory>
#include <string>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A named group of metadata of an entity.
class ORU_BASETYPES_EXPORT MetadataProfile {
 public:
  virtual ~MetadataProfile();

  /// The name that the profile is kept under in a dictionary and in a file.
  virtual BaseTypes::FullyQualifiedName FullyQualifiedName() const = 0;
  /// Whether `other` has the same name and content. A profile of another class is not equal.
  virtual bool Equals(const MetadataProfile& other) const = 0;
  /// An independent copy.
  virtual std::shared_ptr<MetadataProfile> Clone() const = 0;
  /// The text of the name, unless a class gives more.
  virtual std::string ToString() const;

  /// `Equals`.
  bool operator==(const MetadataProfile& other) const { return Equals(other); }
  bool operator!=(const MetadataProfile& other) const { return !Equals(other); }

 protected:
  MetadataProfile() = default;
  MetadataProfile(const MetadataProfile&) = default;
  MetadataProfile(MetadataProfile&&) = default;
  MetadataProfile& operator=(const MetadataProfile&) = default;
  MetadataProfile& operator=(MetadataProfile&&) = default;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
