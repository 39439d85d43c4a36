#pragma once

namespace Oru::BusinessEntityModel::BaseTypes {

/// Equality of what two pointers point to, `*a == *b`. Neither may be null.
struct CompareEqualPointer {
  /// Whether the objects that the two point to are equal, or both are missing.
  template <class Pointer>
  bool operator()(const Pointer& left, const Pointer& right) const {
    return *left == *right;
  }
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
