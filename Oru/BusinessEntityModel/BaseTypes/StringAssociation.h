#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace Oru::BusinessEntityModel::BaseTypes {

/// A two-way mapping between the values of an enumeration and their texts.
///
/// A value that is listed with several texts is written as the first of them and read from all; a text that
/// is listed again keeps its first value. The forms that give references give them into this object.
///
/// Without a fallback, an unknown item throws std::out_of_range. With one, an unknown text reads as the
/// fallback value, and an unknown value is written as the text of the fallback value. The forms with `found`
/// don't throw: where there is no fallback they give the empty text and `E()`.
///
/// Threads: a value belongs to one thread at a time; distinct values are independent. Const operations of one
/// value may run in several threads at once.
template <class E>
class StringAssociation {
 public:
  /// Lists the texts of the values; without `fallback` unknown ones are refused.
  StringAssociation(std::initializer_list<std::pair<E, std::string>> associations) {
    for (const auto& [value, text] : associations) {
      typeToString.emplace(value, text);
      stringToType.emplace(text, value);
    }
  }
  StringAssociation(std::initializer_list<std::pair<E, std::string>> associations, const E& fallback)
      : StringAssociation(associations) {
    fallbackValue = fallback;
  }

  /// The text of a value, or that of the fallback.
  /// @throws std::out_of_range where neither has one
  const std::string& ToString(const E& value) const {
    bool found = false;
    const std::string* text = Text(value, found);
    if (text == nullptr) throw Unknown("ToString", "a value that has no text");
    return *text;
  }
  /// `found` says whether the value itself has a text.
  const std::string& ToString(const E& value, bool& found) const {
    static const std::string empty;
    const std::string* text = Text(value, found);
    return text != nullptr ? *text : empty;
  }

  /// The value of a text, or the fallback.
  /// @throws std::out_of_range for an unknown text without a fallback
  E ToEnum(const std::string& text) const {
    bool found = false;
    const E value = ToEnum(text, found);
    if (!found && !fallbackValue) throw Unknown("ToEnum", "the unknown text '" + text + "'");
    return value;
  }
  /// `found` says whether the text itself is known.
  E ToEnum(const std::string& text, bool& found) const {
    const auto entry = stringToType.find(text);
    found = entry != stringToType.end();
    return found ? entry->second : fallbackValue.value_or(E());
  }

 private:
  const std::string* Text(const E& value, bool& found) const {
    auto entry = typeToString.find(value);
    found = entry != typeToString.end();
    if (!found && fallbackValue) entry = typeToString.find(*fallbackValue);
    return entry != typeToString.end() ? &entry->second : nullptr;
  }

  static std::out_of_range Unknown(const std::string& operation, const std::string& what) {
    return std::out_of_range("Oru::BusinessEntityModel::BaseTypes::StringAssociation::" + operation + ": " +
                             what);
  }

  std::map<E, std::string> typeToString;
  std::map<std::string, E> stringToType;
  std::optional<E> fallbackValue;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes
