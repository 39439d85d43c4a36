#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Export.h"
#include "Oru/BusinessEntityModel/BaseTypes/StringValue.h"

#include <cstddef>
#include <functional>
#include <string>

namespace Oru::BusinessEntityModel::BaseTypes {

/// The name of a metadata profile, in parts between dots ("oru.dapoperator"), or of a resource ("a/b/c").
///
/// Threads: a value belongs to one thread at a time; distinct values are independent. `Empty` may be called
/// from any thread.
class ORU_BASETYPES_EXPORT FullyQualifiedName : public StringValue<FullyQualifiedName> {
 public:
  using StringValue::StringValue;

  /// The one shared empty name.
  static const FullyQualifiedName& Empty();

  /// The first text followed by the second, with nothing between them.
  static FullyQualifiedName Concat(const FullyQualifiedName& first, const FullyQualifiedName& second);
  /// Joins the parts of a name with one dot, which is not doubled where a text has it already. An empty text
  /// adds neither a part nor a dot.
  static FullyQualifiedName Combine(const FullyQualifiedName& first, const FullyQualifiedName& second);
  /// As `Combine`, with a slash.
  static FullyQualifiedName CombinePath(const FullyQualifiedName& first, const FullyQualifiedName& second);
};

/// The address of a resource.
using URI = FullyQualifiedName;

}  // namespace Oru::BusinessEntityModel::BaseTypes

template <>
struct std::hash<Oru::BusinessEntityModel::BaseTypes::FullyQualifiedName> {
  std::size_t operator()(const Oru::BusinessEntityModel::BaseTypes::FullyQualifiedName& name) const noexcept {
    return std::hash<std::string>()(name.Value());
  }
};
