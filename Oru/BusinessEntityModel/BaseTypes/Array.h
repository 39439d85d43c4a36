#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/ArrayElementTraits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace Oru::BusinessEntityModel::BaseTypes {

/// An array that owns its elements. Pointers to elements stay valid while the array grows, shrinks and moves.
///
/// A copy is deep: an element with `Clone() const` returning a `std::unique_ptr` is copied by it, any other
/// by its copy constructor. `ArrayElementTraits<T>` lets elements carry their position. `T` may be incomplete
/// where an array is declared as a member.
///
/// Null elements are refused with std::invalid_argument, positions outside the array with std::out_of_range;
/// the array is then as it was, and an element passed by unique pointer stays with the caller.
template <class T>
class Array {
 public:
  /// As the standard library's containers name them:
  using value_type = std::unique_ptr<T>;
  using iterator = typename std::vector<std::unique_ptr<T>>::iterator;
  using const_iterator = typename std::vector<std::unique_ptr<T>>::const_iterator;

  Array() = default;
  Array(const Array& other) : collection(CloneAll(other)) {}
  Array(Array&&) noexcept = default;
  Array& operator=(const Array& other) {
    if (this != &other) collection = CloneAll(other);
    return *this;
  }
  Array& operator=(Array&&) noexcept = default;
  ~Array() = default;

  /// Appends an element and gives its position.
  int32_t Add(std::unique_ptr<T>&& element) {
    RequireElement(element);
    const int32_t position = Size();
    collection.emplace_back();
    Place(position, std::move(element));
    return position;
  }
  /// Moves the object into a new element of its own class, `T` or a class that derives from it.
  template <class U, class = std::enable_if_t<!std::is_reference_v<U> && std::is_base_of_v<T, U>>>
  int32_t Add(U&& element) {
    return Add(std::unique_ptr<T>(std::make_unique<U>(std::forward<U>(element))));
  }

  /// Moves each unique pointer of the range, in order, through `Add`. If one is refused, those before it
  /// stay added.
  template <class Iterator>
  void Adopt(Iterator first, Iterator last) {
    for (; first != last; ++first)
      Add(std::move(*first));
  }
  /// Moves all elements of another array, in order, through `Add`; it is empty afterwards. Adopting itself
  /// changes nothing.
  void Adopt(Array& other) {
    if (this == &other) return;
    Adopt(other.begin(), other.end());
    other.Clear();
  }
  /// Adds a copy of each element of `other`, in order.
  void Copy(const Array& other) {
    for (std::unique_ptr<T>& element : CloneAll(other))
      Add(std::move(element));
  }

  /// Inserts before the element at `position`; the size as position appends.
  void Insert(int32_t position, std::unique_ptr<T>&& element) {
    RequireElement(element);
    if (position != Size()) CheckPosition(position);
    collection.emplace(collection.begin() + position);
    Place(position, std::move(element));
    RenumberFrom(position + 1);
  }
  /// Puts the element in place of the one at `position`, which is handed back.
  std::unique_ptr<T> Replace(int32_t position, std::unique_ptr<T>&& element) {
    RequireElement(element);
    CheckPosition(position);
    std::unique_ptr<T> previous = std::move(collection[Index(position)]);
    Place(position, std::move(element));
    return previous;
  }
  /// Takes the element at `position` out and hands it back.
  std::unique_ptr<T> Erase(int32_t position) {
    CheckPosition(position);
    std::unique_ptr<T> previous = std::move(collection[Index(position)]);
    collection.erase(collection.begin() + position);
    RenumberFrom(position);
    return previous;
  }
  /// Takes out all elements.
  void Clear() noexcept { collection.clear(); }

  /// The number of elements.
  int32_t Size() const noexcept { return static_cast<int32_t>(collection.size()); }
  /// Whether there are no elements.
  bool Empty() const noexcept { return collection.empty(); }
  /// Iterate over the unique pointers; none is null.
  iterator begin() noexcept { return collection.begin(); }
  /// Iterators, valid until the next change:
  iterator end() noexcept { return collection.end(); }
  const_iterator begin() const noexcept { return collection.begin(); }
  const_iterator end() const noexcept { return collection.end(); }
  const_iterator cbegin() const noexcept { return collection.cbegin(); }
  const_iterator cend() const noexcept { return collection.cend(); }

  /// The element at a position inside the array, which isn't checked.
  T& operator[](int32_t position) noexcept { return *collection[Index(position)]; }
  const T& operator[](int32_t position) const noexcept { return *collection[Index(position)]; }
  /// The element at `position`, checked.
  T& At(int32_t position) { return CheckPosition(position), *collection[Index(position)]; }
  const T& At(int32_t position) const { return CheckPosition(position), *collection[Index(position)]; }

  /// The same number of elements, equal in pairs by their `==`.
  bool operator==(const Array& other) const {
    return std::equal(
        begin(), end(), other.begin(), other.end(),
        [](const std::unique_ptr<T>& left, const std::unique_ptr<T>& right) { return *left == *right; });
  }
  bool operator!=(const Array& other) const { return !(*this == other); }

 private:
  template <class U, class = void>
  struct ClonesToUnique : std::false_type {};
  template <class U>
  struct ClonesToUnique<U, std::void_t<decltype(std::declval<const U&>().Clone())>>
      : std::is_convertible<decltype(std::declval<const U&>().Clone()), std::unique_ptr<U>> {};

  static std::unique_ptr<T> CloneOf(const T& element) {
    if constexpr (ClonesToUnique<T>::value) {
      return element.Clone();
    } else {
      static_assert(
          !std::is_polymorphic_v<T>,
          "a polymorphic element needs std::unique_ptr<T> Clone() const: its copy constructor would slice");
      return std::make_unique<T>(element);
    }
  }

  static std::vector<std::unique_ptr<T>> CloneAll(const Array& other) {
    std::vector<std::unique_ptr<T>> clones;
    clones.reserve(other.collection.size());
    for (const std::unique_ptr<T>& element : other.collection)
      clones.push_back(CloneOf(*element));
    return clones;
  }

  static std::size_t Index(int32_t position) noexcept { return static_cast<std::size_t>(position); }

  static void RequireElement(const std::unique_ptr<T>& element) {
    if (!element) {
      throw std::invalid_argument("Oru::BusinessEntityModel::BaseTypes::Array: an element may not be null");
    }
  }

  void CheckPosition(int32_t position) const {
    if (position < 0 || position >= Size()) {
      throw std::out_of_range("Oru::BusinessEntityModel::BaseTypes::Array: position is out of range");
    }
  }

  void Place(int32_t position, std::unique_ptr<T>&& element) noexcept {
    ArrayElementTraits<T>::Adding(*element, position);
    collection[Index(position)] = std::move(element);
  }

  void RenumberFrom(int32_t first) noexcept {
    for (int32_t position = first; position < Size(); ++position) {
      ArrayElementTraits<T>::Adding(*collection[Index(position)], position);
    }
  }

  std::vector<std::unique_ptr<T>> collection;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
