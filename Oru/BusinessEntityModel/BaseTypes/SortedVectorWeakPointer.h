#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/CompareEqualWeakPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/CompareLessWeakPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorBase.h"

#include <memory>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A sorted vector of objects that others own, by the `<` and `==` of the objects. An operation that compares
/// throws std::runtime_error when it meets an object that is gone.
template <class T>
class SortedVectorWeakPointer
    : public SortedVectorBase<std::weak_ptr<T>, CompareLessWeakPointer<T>, CompareEqualWeakPointer<T>> {};

}  // namespace Oru::BusinessEntityModel::BaseTypes
