#include "Oru/BusinessEntityModel/BaseTypes/FullyQualifiedName.h"

#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

namespace {

FullyQualifiedName Join(const std::string& first, char separator, const std::string& second) {
  if (first.empty()) return second;
  if (second.empty()) return first;
  std::string joined = first;
  if (joined.back() != separator) joined += separator;
  joined.append(second, second.front() == separator ? 1 : 0, std::string::npos);
  return FullyQualifiedName(std::move(joined));
}

}  // namespace

const FullyQualifiedName& FullyQualifiedName::Empty() {
  static const FullyQualifiedName empty;
  return empty;
}

FullyQualifiedName FullyQualifiedName::Concat(const FullyQualifiedName& first,
                                              const FullyQualifiedName& second) {
  return FullyQualifiedName(first.Value() + second.Value());
}

FullyQualifiedName FullyQualifiedName::Combine(const FullyQualifiedName& first,
                                               const FullyQualifiedName& second) {
  return Join(first.Value(), '.', second.Value());
}

FullyQualifiedName FullyQualifiedName::CombinePath(const FullyQualifiedName& first,
                                                   const FullyQualifiedName& second) {
  return Join(first.Value(), '/', second.Value());
}

}  // namespace Oru::BusinessEntityModel::BaseTypes
