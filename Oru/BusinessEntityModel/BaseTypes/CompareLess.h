#pragma once

namespace Oru::BusinessEntityModel::BaseTypes {

/// Orders by `a < b`.
template <class T>
struct CompareLess {
  /// Whether `left < right`.
  bool operator()(const T& left, const T& right) const { return left < right; }
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
