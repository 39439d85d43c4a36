#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace Oru::TimePoints {

/// What the parsers of all time values share. A concrete parser writes `Parse`; the other two follow it.
template <class T>
class ValueParser {
 public:
  /// The value that the text spells. Throws `std::invalid_argument` saying what is wrong with the text.
  virtual T Parse(const std::string& text) = 0;

  /// True exactly when `Parse` accepts the text.
  virtual bool IsStringFormatValid(const std::string& text) { return TryParse(text).first; }

  /// True and the value; or, for a text that `Parse` refuses, false and a default value.
  virtual std::pair<bool, T> TryParse(const std::string& text) {
    try {
      return {true, Parse(text)};
    } catch (const std::invalid_argument&) {
      return {false, T()};
    }
  }

  virtual ~ValueParser() = default;
};

}  // namespace Oru::TimePoints
