#pragma once

#include <cstdint>

namespace Oru::BusinessEntityModel::BaseTypes {

/// How `Array<T>` gives an element its position. A class whose objects carry their position specialises
/// this in its own header.
template <class T>
struct ArrayElementTraits {
  /// Called with each element that is about to take `position` (from 0): the one that is added, inserted or
  /// put in place of another, and those that move up or down by it. Must not throw.
  static void Adding(T& /*element*/, int32_t /*position*/) noexcept {}
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
