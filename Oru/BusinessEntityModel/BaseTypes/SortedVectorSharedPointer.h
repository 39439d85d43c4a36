#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/CompareEqualPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/CompareLessPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorBase.h"

#include <memory>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A sorted vector of shared objects, by the `<` and `==` of the objects. The pointers may not be null.
///
/// Threads: a value belongs to one thread at a time; distinct values are independent.
template <class T>
class SortedVectorSharedPointer
    : public SortedVectorBase<std::shared_ptr<T>, CompareLessPointer, CompareEqualPointer> {};

}  // namespace Oru::BusinessEntityModel::BaseTypes
