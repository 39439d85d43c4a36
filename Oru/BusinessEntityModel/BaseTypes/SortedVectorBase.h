#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A vector whose elements are always in the order of `Less`, and which refuses an element that is `Equal`
/// to one present. Elements that are equivalent by `Less` and yet not `Equal` may be next to each other.
///
/// The operations here keep the order. A caller who changes an element in place, through an iterator or a
/// reference, so that its rank changes, calls `Sort` afterwards. An operation that throws leaves the vector
/// as it was.
template <class T, class Less, class Equal, class Alloc = std::allocator<T>>
class SortedVectorBase {
 public:
  /// As the standard library's containers name them:
  using value_type = T;
  using iterator = typename std::vector<T, Alloc>::iterator;
  using const_iterator = typename std::vector<T, Alloc>::const_iterator;

  SortedVectorBase() = default;
  SortedVectorBase(const SortedVectorBase&) = default;
  SortedVectorBase(SortedVectorBase&&) noexcept = default;
  SortedVectorBase& operator=(const SortedVectorBase&) = default;
  SortedVectorBase& operator=(SortedVectorBase&&) noexcept = default;

  /// Inserts a copy of `item` in its place, before the elements that `Less` holds equivalent. If the first
  /// of those is `Equal` to `item`, throws std::runtime_error; the others are not tested.
  virtual void Insert(const T& item) {
    const iterator position = std::lower_bound(elements.begin(), elements.end(), item, Less());
    if (position != elements.end() && Equal()(*position, item)) {
      throw std::runtime_error(
          "Oru::DataModel::MediaAssets::SortedVector::Insert: item already present in the collection");
    }
    elements.insert(position, item);
  }
  virtual ~SortedVectorBase() = default;

  /// Inserts the items one by one, all of them or, when one is refused, none.
  void Insert(const std::vector<T>& items) {
    std::vector<T, Alloc> before = elements;
    try {
      for (const T& item : items)
        Insert(item);
    } catch (...) {
      elements.swap(before);
      throw;
    }
  }

  /// Iterators over the elements in their order, valid until the next change. A change of an element through
  /// one must leave its place in the order as it is:
  iterator begin() noexcept { return elements.begin(); }
  iterator end() noexcept { return elements.end(); }
  const_iterator begin() const noexcept { return elements.begin(); }
  const_iterator end() const noexcept { return elements.end(); }
  const_iterator cbegin() const noexcept { return elements.cbegin(); }
  const_iterator cend() const noexcept { return elements.cend(); }
  /// The number of elements.
  std::size_t Size() const noexcept { return elements.size(); }
  /// Whether there are no elements.
  bool Empty() const noexcept { return elements.empty(); }

  /// Whether there is an element at that index from 0.
  bool IsValidIndex(std::size_t index) const noexcept { return index < elements.size(); }
  /// Throws std::out_of_range for an index that isn't valid.
  void CheckIndex(std::size_t index) const {
    if (!IsValidIndex(index)) {
      throw std::out_of_range("Oru::BusinessEntityModel::BaseTypes::SortedVector: index is out of range");
    }
  }

  /// The element at a valid index, which isn't checked.
  T& operator[](std::size_t index) noexcept { return elements[index]; }
  const T& operator[](std::size_t index) const noexcept { return elements[index]; }
  /// The element at `index`; std::out_of_range for an index that isn't valid.
  T& At(std::size_t index) { return CheckIndex(index), elements[index]; }
  const T& At(std::size_t index) const { return CheckIndex(index), elements[index]; }
  /// The first and the last element; std::out_of_range in an empty vector.
  T& Front() { return At(0); }
  const T& Front() const { return At(0); }
  /// The last element; std::out_of_range if there is none.
  T& Back() { return At(elements.size() - 1); }
  const T& Back() const { return At(elements.size() - 1); }

  /// The first element that is `Equal` to `item`, or the end.
  const_iterator ConstFind(const T& item) const {
    const auto equivalent = std::equal_range(elements.begin(), elements.end(), item, Less());
    const auto found = std::find_if(equivalent.first, equivalent.second,
                                    [&item](const T& element) { return Equal()(element, item); });
    return found != equivalent.second ? found : elements.end();
  }
  /// The place of an equal element, the end if there is none.
  const_iterator Find(const T& item) const { return ConstFind(item); }
  iterator Find(const T& item) { return elements.begin() + (ConstFind(item) - elements.cbegin()); }

  /// Takes the element at `index` out and inserts `item`, in the place that its order gives.
  /// std::out_of_range for an index that isn't valid; what `Insert` throws if `item` is refused beside the
  /// other elements.
  void Replace(std::size_t index, const T& item) {
    CheckIndex(index);
    // `item` may be an element of this vector. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const T copy = item;
    std::vector<T, Alloc> before = elements;
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(index));
    try {
      Insert(copy);
    } catch (...) {
      elements.swap(before);
      throw;
    }
  }

  /// Takes out all elements.
  void Clear() noexcept { elements.clear(); }

  /// Erases the element at `index`; std::out_of_range for an index that isn't valid.
  void Erase(std::size_t index) {
    CheckIndex(index);
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(index));
  }
  /// Erases the first element that is `Equal` to `item`; false if there is none.
  bool Erase(const T& item) {
    const const_iterator found = ConstFind(item);
    if (found == elements.cend()) return false;
    elements.erase(found);
    return true;
  }
  /// Erases the element, or the range, and gives the position after it.
  iterator Erase(const_iterator position) { return elements.erase(position); }
  iterator Erase(const_iterator first, const_iterator last) { return elements.erase(first, last); }

  /// The elements in their order.
  const std::vector<T, Alloc>& Values() const noexcept { return elements; }
  /// Replaces all elements by the items, inserted one by one; when one is refused, nothing changes.
  void Values(std::vector<T> items) {
    std::vector<T, Alloc> before;
    elements.swap(before);
    try {
      elements.reserve(items.size());
      for (const T& item : items)
        Insert(item);
    } catch (...) {
      elements.swap(before);
      throw;
    }
  }

  /// Puts the elements in order after they were changed in place. Equivalent ones keep their order; ones that
  /// have become equal all stay.
  void Sort() { std::stable_sort(elements.begin(), elements.end(), Less()); }

  /// The same number of elements, `Equal` in pairs.
  bool operator==(const SortedVectorBase& other) const {
    return std::equal(elements.begin(), elements.end(), other.elements.begin(), other.elements.end(),
                      Equal());
  }
  bool operator!=(const SortedVectorBase& other) const { return !(*this == other); }

 private:
  std::vector<T, Alloc> elements;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
