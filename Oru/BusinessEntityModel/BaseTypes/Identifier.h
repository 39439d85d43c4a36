#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Export.h"
#include "Oru/BusinessEntityModel/BaseTypes/StringValue.h"

#include <cstddef>
#include <functional>
#include <string>

namespace Oru::BusinessEntityModel::BaseTypes {

/// The string identity of an entity. The empty text means that there is no identifier.
///
/// Threads: a value belongs to one thread at a time; distinct values are independent. `Empty` and `Generate`
/// may be called from any thread.
class ORU_BASETYPES_EXPORT Identifier : public StringValue<Identifier> {
 public:
  using StringValue::StringValue;

  /// The one shared empty identifier.
  static const Identifier& Empty();
  /// A new identifier: a random UUID (version 4, RFC 4122) as 36 characters in lower case.
  /// Throws what std::random_device throws when the system has no source of random numbers.
  static Identifier Generate();
};

}  // namespace Oru::BusinessEntityModel::BaseTypes

template <>
struct std::hash<Oru::BusinessEntityModel::BaseTypes::Identifier> {
  std::size_t operator()(const Oru::BusinessEntityModel::BaseTypes::Identifier& identifier) const noexcept {
    return std::hash<std::string>()(identifier.Value());
  }
};
