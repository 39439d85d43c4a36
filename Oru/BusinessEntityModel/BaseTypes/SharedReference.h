#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"

#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A reference to an entity that holds the object, or knows only its identifier (as after a lazy read).
///
/// The object is shared with everyone who holds a pointer to it. `T` needs `Id()` and may be incomplete where
/// a reference is declared as a member.
///
/// The pointer forms take a shared, weak or unique pointer to `T` or to a class that derives from it; a weak
/// pointer whose object is gone counts as an empty one.
template <class T>
class SharedReference {
  template <class U>
  using IfPointsToT = std::enable_if_t<std::is_convertible_v<U*, T*>>;

 public:
  SharedReference() = default;
  /// Knows the identifier only.
  SharedReference(const Identifier& identifier) : id(identifier) {}
  SharedReference(Identifier&& identifier) noexcept : id(std::move(identifier)) {}
  /// Takes the pointer and the identifier of its object; an empty pointer gives an empty identifier.
  template <class U, class = IfPointsToT<U>>
  SharedReference(std::shared_ptr<U> object) : pointer(std::move(object)) {
    UpdateIdentifier();
  }
  template <class U, class = IfPointsToT<U>>
  SharedReference(const std::weak_ptr<U>& object) : SharedReference(object.lock()) {}
  template <class U, class = IfPointsToT<U>>
  SharedReference(std::unique_ptr<U>&& object) : SharedReference(std::shared_ptr<T>(std::move(object))) {}

  /// The same as a new reference from the pointer: an empty one leaves the identifier empty.
  template <class U, class = IfPointsToT<U>>
  SharedReference& operator=(std::shared_ptr<U> object) {
    *this = SharedReference(std::move(object));
    return *this;
  }
  template <class U, class = IfPointsToT<U>>
  SharedReference& operator=(const std::weak_ptr<U>& object) {
    *this = SharedReference(object);
    return *this;
  }
  template <class U, class = IfPointsToT<U>>
  SharedReference& operator=(std::unique_ptr<U>&& object) {
    *this = SharedReference(std::move(object));
    return *this;
  }

  /// Reads the identifier of the object again; without an object the identifier stays.
  void UpdateIdentifier() {
    if (pointer) id = pointer->Id();
  }

  /// Whether there is no identifier. The pointer doesn't count.
  bool IsEmpty() const noexcept { return id.IsEmpty(); }
  /// Whether the object is held.
  explicit operator bool() const noexcept { return static_cast<bool>(pointer); }
  operator Identifier() const { return id; }

  /// The identifier, also where the object isn't held.
  const Identifier& Id() const noexcept { return id; }
  /// Sets the identifier alone; neither the pointer nor its object changes.
  void Id(Identifier value) noexcept { id = std::move(value); }

  /// The object; null where only the identifier is known.
  std::shared_ptr<const T> Pointer() const noexcept { return pointer; }
  const std::shared_ptr<T>& Pointer() noexcept { return pointer; }
  /// Sets the pointer and runs `UpdateIdentifier`: an empty pointer lets the object go and keeps the
  /// identifier.
  template <class U, class = IfPointsToT<U>>
  void Pointer(std::shared_ptr<U> object) {
    pointer = std::move(object);
    UpdateIdentifier();
  }
  template <class U, class = IfPointsToT<U>>
  void Pointer(const std::weak_ptr<U>& object) {
    Pointer(object.lock());
  }
  template <class U, class = IfPointsToT<U>>
  void Pointer(std::unique_ptr<U>&& object) {
    Pointer(std::shared_ptr<T>(std::move(object)));
  }

  /// The object; std::logic_error when it isn't held.
  const T& Value() const { return Checked(); }
  T& Value() { return Checked(); }
  /// The object, which must be held.
  const T& operator*() const { return Checked(); }
  T& operator*() { return Checked(); }
  const T* operator->() const { return &Checked(); }
  T* operator->() { return &Checked(); }

 private:
  T& Checked() const {
    if (!pointer) {
      throw std::logic_error(
          "Oru::BusinessEntityModel::BaseTypes::SharedReference::Value: the object is not loaded");
    }
    return *pointer;
  }

  std::shared_ptr<T> pointer;
  Identifier id;
};

/// References compare by identifier; the pointers don't count.
template <class T>
bool operator==(const SharedReference<T>& left, const SharedReference<T>& right) noexcept {
  return left.Id() == right.Id();
}

template <class T>
bool operator!=(const SharedReference<T>& left, const SharedReference<T>& right) noexcept {
  return left.Id() != right.Id();
}

template <class T>
bool operator<(const SharedReference<T>& left, const SharedReference<T>& right) noexcept {
  return left.Id() < right.Id();
}

}  // namespace Oru::BusinessEntityModel::BaseTypes
