#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>

namespace Oru::DataModel::MediaAssets {

/// Reads the strict text forms of identifiers from left to right. Internal to the parsers of this folder.
///
/// A read that fails leaves the position. The text must outlive the scanner.
class TextScanner {
 public:
  explicit TextScanner(std::string_view scannedText) : text(scannedText) {}

  std::size_t Position() const { return position; }
  bool IsAtEnd() const { return position == text.size(); }

  bool Accept(std::string_view expected) {
    if (text.substr(position, expected.size()) != expected) return false;
    position += expected.size();
    return true;
  }

  /// One character between the two, both included.
  std::optional<char> CharacterBetween(char first, char last) {
    if (IsAtEnd() || text[position] < first || text[position] > last) return std::nullopt;
    return text[position++];
  }

  /// A decimal number from `min` to `max`, neither below 0, without sign and without leading zeros.
  std::optional<int> Number(int min, int max) {
    const char* const begin = text.data() + position;
    const char* const end = text.data() + text.size();
    int value = 0;
    if (begin == end || *begin == '-') return std::nullopt;
    const auto [stop, error] = std::from_chars(begin, end, value);
    const bool hasLeadingZero = *begin == '0' && stop - begin > 1;
    if (error != std::errc{} || hasLeadingZero || value < min || value > max) return std::nullopt;
    position += static_cast<std::size_t>(stop - begin);
    return value;
  }

 private:
  std::string_view text;
  std::size_t position = 0;
};

}  // namespace Oru::DataModel::MediaAssets
