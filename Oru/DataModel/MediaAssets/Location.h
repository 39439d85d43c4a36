#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Array.h"
#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"

#include <cstdint>
#include <string>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// A place where the content of a stream lies. Not stored.
class Location {
 public:
  /// What the address names.
  enum class Type : int32_t {
    unknown = 0,
    file = 1,
    folder = 2,
    network = 3,
  };

  Location() = default;
  /// @param kind     what the address leads to
  /// @param address  taken as it is
  Location(Type kind, BaseTypes::URI address) : type(kind), uri(std::move(address)) {}

  /// The address, and what it leads to:
  Type GetType() const noexcept { return type; }
  void SetType(Type value) noexcept { type = value; }
  const BaseTypes::URI& Uri() const noexcept { return uri; }
  void Uri(BaseTypes::URI value) noexcept { uri = std::move(value); }

  /// The same kind and address.
  bool operator==(const Location& other) const noexcept { return type == other.type && uri == other.uri; }
  bool operator!=(const Location& other) const noexcept { return !(*this == other); }

 private:
  Type type = Type::unknown;
  BaseTypes::URI uri;
};

using LocationArray = BaseTypes::Array<Location>;

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(Location::Type value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, Location::Type& value);

}  // namespace Oru::DataModel::MediaAssets
