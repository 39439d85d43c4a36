#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/BaseTypes/SharedReference.h"

#include <algorithm>
#include <memory>
#include <utility>

// How the entities copy and compare what they hold through pointers. Internal to the model.
namespace Oru::DataModel::MediaAssets::EntityGraph {

/// The container with a clone in place of each object; null pointers stay. The order stays as it is.
template <class Container>
Container CloneElements(Container container) {
  for (auto& element : container) {
    if (element) element = element->Clone();
  }
  return container;
}

/// Makes the reference hold `copy` in place of its object. It keeps its identifier, whatever that of the
/// object.
template <class T>
void HoldCopy(BusinessEntityModel::BaseTypes::SharedReference<T>& reference, std::shared_ptr<T> copy) {
  BusinessEntityModel::BaseTypes::Identifier id = reference.Id();
  reference.Pointer(std::move(copy));
  reference.Id(std::move(id));
}

/// Both null, or two objects that are equal.
template <class Pointer>
bool ArePointeesEqual(const Pointer& left, const Pointer& right) {
  if (!left || !right) return left == right;
  return *left == *right;
}

/// The same identifier and, where both hold their object, equal objects.
template <class T>
bool AreReferencesEqual(const BusinessEntityModel::BaseTypes::SharedReference<T>& left,
                        const BusinessEntityModel::BaseTypes::SharedReference<T>& right) {
  if (left.Id() != right.Id()) return false;
  return !left || !right || *left == *right;
}

/// The same number of elements, equal in pairs by `equal`.
template <class Container, class Equal>
bool AreElementsEqual(const Container& left, const Container& right, Equal equal) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(), equal);
}

}  // namespace Oru::DataModel::MediaAssets::EntityGraph
