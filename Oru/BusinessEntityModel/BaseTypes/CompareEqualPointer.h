#pragma once

namespace Oru::BusinessEntityModel::BaseTypes {

/// Equality of what two pointers point to, `*a == *b`. A null pointer equals a null pointer alone.
struct CompareEqualPointer {
  /// Whether the objects that the two point to are equal, or both are missing.
  template <class Pointer>
  bool operator()(const Pointer& left, const Pointer& right) const {
    return left && right ? *left == *right : !left && !right;
  }
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
