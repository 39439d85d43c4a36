#pragma once

namespace Oru::BusinessEntityModel::BaseTypes {

/// Equality of what two pointers point to, `*a == *b`. Neither may be null.
struct CompareEqualPointer {
  /// Whether the objects behind the two are equal, or both are missing.
  template <class Pointer>
  bool operator()(const Pointer& left, const Pointer& right) const {
    return *left == *right;
  }
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
