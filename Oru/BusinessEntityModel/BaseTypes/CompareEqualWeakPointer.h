#pragma once

#include <memory>
#include <stdexcept>

namespace Oru::BusinessEntityModel::BaseTypes {

/// Equality of the objects of two weak pointers, `*a == *b`.
///
/// An empty pointer, or one whose object is gone, throws std::runtime_error.
template <class T>
struct CompareEqualWeakPointer {
  /// Whether the objects that the two point to are equal, or both are missing.
  bool operator()(const std::weak_ptr<T>& left, const std::weak_ptr<T>& right) const {
    // Locked first and tested after: between a test and a lock another thread could let the object go.
    const std::shared_ptr<T> leftObject = left.lock();
    const std::shared_ptr<T> rightObject = right.lock();
    if (!leftObject || !rightObject) {
      throw std::runtime_error(
          "Oru::DataModel::MediaAssets::CompareEqualWeakPointer: weak pointer object is expired");
    }
    return *leftObject == *rightObject;
  }
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
