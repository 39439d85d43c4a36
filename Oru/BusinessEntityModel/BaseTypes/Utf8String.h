#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Export.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Oru::BusinessEntityModel::BaseTypes {

/// One byte of UTF-8 text.
using Utf8 = char;

/// A string of UTF-8 text, with every operation of `std::string`, which counts bytes. The bytes are taken as
/// they come: text that isn't well-formed is held as it is.
///
/// The operations that count characters take a character to be a well-formed sequence (one code point, as in
/// table 3-7 of the Unicode standard); each byte outside such a sequence counts as a character of its own, so
/// that no text is refused and the characters put together give the text again.
class ORU_BASETYPES_EXPORT Utf8String : public std::string {
 public:
  Utf8String() = default;
  /// Holds the text, which isn't checked.
  Utf8String(const std::string& text) : std::string(text) {}
  Utf8String(std::string&& text) noexcept : std::string(std::move(text)) {}
  /// Up to the first NUL; a null pointer gives the empty text.
  Utf8String(const char* text) : std::string(text != nullptr ? text : "") {}
  Utf8String(const char* text, std::size_t length) : std::string(text, length) {}
  /// Up to the first NUL; a null pointer gives the empty text.
  Utf8String(const uint8_t* text) : Utf8String(reinterpret_cast<const char*>(text)) {}
  Utf8String(const uint8_t* text, std::size_t length)
      : std::string(reinterpret_cast<const char*>(text), length) {}

  /// The number of characters.
  std::size_t GetCharactersCount() const noexcept;
  /// The characters in order, each as a text.
  std::vector<Utf8String> Characters() const;
  /// Whether every byte is below 0x80.
  bool IsAscii() const noexcept;
  /// The number of bytes, 1 to 4, of the character that begins at the byte `position`; 0 at or after the
  /// end.
  std::size_t GetCharacterLength(std::size_t position) const noexcept;
};

}  // namespace Oru::BusinessEntityModel::BaseTypes

template <>
struct std::hash<Oru::BusinessEntityModel::BaseTypes::Utf8String> {
  std::size_t operator()(const Oru::BusinessEntityModel::BaseTypes::Utf8String& text) const noexcept {
    return std::hash<std::string>()(text);
  }
};
