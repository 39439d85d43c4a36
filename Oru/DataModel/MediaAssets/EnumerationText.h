#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/StringAssociation.h"

#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <system_error>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// How the values of one stored enumeration are written and read as text. Every number of 32 bits has exactly
/// one text that is written: its name, or the number in decimal when it has no name.
///
/// Threads: a value belongs to one thread at a time; distinct values are independent. Const operations of one
/// value may run in several threads at once.
template <class E>
class EnumerationText {
 public:
  EnumerationText(std::initializer_list<std::pair<E, std::string>> names) : association(names) {}

  std::string ToString(E value) const {
    bool found = false;
    std::string name = association.ToString(value, found);
    return found ? name : std::to_string(static_cast<int32_t>(value));
  }

  /// On false `value` stays as it was.
  bool TryParse(const std::string& text, E& value) const {
    bool found = false;
    const E named = association.ToEnum(text, found);
    if (found) {
      value = named;
      return true;
    }
    return TryParseNumber(text, value);
  }

 private:
  static bool TryParseNumber(const std::string& text, E& value) {
    int32_t number = 0;
    const std::errc error = std::from_chars(text.data(), text.data() + text.size(), number).ec;
    // Compared as texts: leading zeros and what may follow the digits are no part of a number that is
    // written.
    if (error != std::errc{} || std::to_string(number) != text) return false;
    value = static_cast<E>(number);
    return true;
  }

  BusinessEntityModel::BaseTypes::StringAssociation<E> association;
};

}  // namespace Oru::DataModel::MediaAssets
