#pragma once

#include <ostream>
#include <string>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

/// What the classes that are one string under a name of their own have in common; `Derived` is the class.
///
/// Distinct classes neither compare with nor convert into each other, so that an identifier isn't taken for
/// the name of a profile. Literals and strings convert in silence.
template <class Derived>
class StringValue {
 public:
  StringValue() = default;
  /// Holds the text as it is.
  StringValue(const std::string& text) : value(text) {}
  StringValue(std::string&& text) noexcept : value(std::move(text)) {}
  /// A null pointer gives the empty text.
  StringValue(const char* text) : value(text != nullptr ? text : "") {}

  /// Whether the text is empty.
  bool IsEmpty() const noexcept { return value.empty(); }
  /// The text.
  const std::string& Value() const noexcept { return value; }
  operator std::string() const { return value; }

  /// Whether the texts are the same, byte by byte.
  friend bool operator==(const Derived& left, const Derived& right) noexcept {
    return left.Value() == right.Value();
  }
  friend bool operator!=(const Derived& left, const Derived& right) noexcept {
    return left.Value() != right.Value();
  }
  /// Orders by bytes as unsigned over the common length; of two that agree there the shorter comes first.
  friend bool operator<(const Derived& left, const Derived& right) noexcept {
    return left.Value() < right.Value();
  }
  friend bool operator>(const Derived& left, const Derived& right) noexcept { return right < left; }
  friend bool operator<=(const Derived& left, const Derived& right) noexcept { return !(right < left); }
  friend bool operator>=(const Derived& left, const Derived& right) noexcept { return !(left < right); }
  friend std::ostream& operator<<(std::ostream& stream, const Derived& item) {
    return stream << item.Value();
  }

 private:
  std::string value;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
