#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/CompareEqualPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/CompareLessPointer.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorBase.h"

#include <memory>
#include <stdexcept>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A sorted vector of shared objects, by the `<` and `==` of the objects. A null pointer can't be inserted,
/// and isn't found.
template <class T>
class SortedVectorSharedPointer
    : public SortedVectorBase<std::shared_ptr<T>, CompareLessPointer, CompareEqualPointer> {
  using Base = SortedVectorBase<std::shared_ptr<T>, CompareLessPointer, CompareEqualPointer>;

 public:
  using Base::Insert;
  /// @throws std::invalid_argument for a null pointer; otherwise as any sorted vector
  void Insert(const std::shared_ptr<T>& item) override {
    if (!item) {
      throw std::invalid_argument(
          "Oru::BusinessEntityModel::BaseTypes::SortedVectorSharedPointer: an element may not be null");
    }
    Base::Insert(item);
  }
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
