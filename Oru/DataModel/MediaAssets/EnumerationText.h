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
/// Threads: immutable once built; may be used from several threads at once.
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
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end) return false;
    value = static_cast<E>(number);
    return true;
  }

  BusinessEntityModel::BaseTypes::StringAssociation<E> association;
};

}  // namespace Oru::DataModel::MediaAssets
