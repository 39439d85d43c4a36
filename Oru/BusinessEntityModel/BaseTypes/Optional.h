#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A value that may be absent, stored in place.
template <class T>
class Optional {
 public:
  Optional() = default;
  /// Holds the value.
  Optional(const T& value) : content(value) {}
  Optional(T&& value) : content(std::move(value)) {}

  /// The shared absent value.
  static const Optional& Null() {
    static const Optional null;
    return null;
  }

  /// Replaces the value. Assigning the value that is held to itself does nothing; `= {}` leaves no value.
  template <class U, class = std::enable_if_t<std::is_convertible_v<U&&, T> &&
                                              !std::is_same_v<std::decay_t<U>, Optional>>>
  Optional& operator=(U&& value) {
    if constexpr (std::is_same_v<std::decay_t<U>, T>) {
      if (Holds(value)) return *this;
    }
    content = std::forward<U>(value);
    return *this;
  }

  /// Whether a value is held:
  bool HasValue() const noexcept { return content.has_value(); }
  explicit operator bool() const noexcept { return content.has_value(); }
  /// Destroys the value, if there is one.
  void Undefine() noexcept { content.reset(); }

  /// The value; std::logic_error when it is absent.
  const T& Value() const {
    Require();
    return *content;
  }
  T& Value() {
    Require();
    return *content;
  }
  /// `Value()`, or its address.
  const T& operator*() const { return Value(); }
  T& operator*() { return Value(); }
  const T* operator->() const { return std::addressof(Value()); }
  T* operator->() { return std::addressof(Value()); }

  /// Both absent, or both present with equal values.
  friend bool operator==(const Optional& left, const Optional& right) {
    return left.content == right.content;
  }
  friend bool operator!=(const Optional& left, const Optional& right) { return !(left == right); }

 private:
  bool Holds(const T& value) const noexcept {
    return content.has_value() && std::addressof(*content) == std::addressof(value);
  }
  void Require() const {
    if (!content) {
      throw std::logic_error("Oru::BusinessEntityModel::BaseTypes::Optional::Value: there is no value");
    }
  }

  std::optional<T> content;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
