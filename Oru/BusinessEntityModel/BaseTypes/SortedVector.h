#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/CompareEqual.h"
#include "Oru/BusinessEntityModel/BaseTypes/CompareLess.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorBase.h"

namespace Oru::BusinessEntityModel::BaseTypes {

/// A sorted vector of values, by their own `<` and `==`.
template <class T>
class SortedVector : public SortedVectorBase<T, CompareLess<T>, CompareEqual<T>> {};

}  // namespace Oru::BusinessEntityModel::BaseTypes
