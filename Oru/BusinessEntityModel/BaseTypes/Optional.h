#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A value that may be absent, stored in place.
///
/// Threads: a value belongs to one thread at a time; distinct values are independent.
template <class T>
class Optional {
 public:
  Optional() = default;
  Optional(const T& value) : content(value) {}
  Optional(T&& value) : content(std::move(value)) {}

  /// The shared absent value.
  static const Optional& Null() {
    static const Optional null;
    return null;
  }

  /// Assigning the value that is held to itself does nothing.
  Optional& operator=(const T& value) {
    if (!Holds(value)) content = value;
    return *this;
  }
  Optional& operator=(T&& value) {
    if (!Holds(value)) content = std::move(value);
    return *this;
  }

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
