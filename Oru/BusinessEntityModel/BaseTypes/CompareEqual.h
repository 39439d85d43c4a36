#pragma once

namespace Oru::BusinessEntityModel::BaseTypes {

/// Equality by `a == b`.
template <class T>
struct CompareEqual {
  /// Whether `left == right`.
  bool operator()(const T& left, const T& right) const { return left == right; }
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
