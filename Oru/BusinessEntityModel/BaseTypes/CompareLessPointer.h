#pragma once

namespace Oru::BusinessEntityModel::BaseTypes {

/// Orders pointers by what they point to, `*a < *b`. A null pointer comes before all others.
struct CompareLessPointer {
  /// The order of the objects that the two point to.
  template <class Pointer>
  bool operator()(const Pointer& left, const Pointer& right) const {
    return left && right ? *left < *right : !left && right;
  }
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
