#pragma once

#include "Oru/TimePoints/Core/CheckedArithmetic.h"
#include "Oru/TimePoints/Core/Int128.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace Oru::TimePoints {

/// Walks through a text from beginning to end, piece by piece. A piece that isn't there, or isn't right,
/// throws `std::invalid_argument` with the text, the form that was wanted, and what is wrong.
class TextReader {
 public:
  /// `formDescription` says what the text should be: "a duration [-]HH:MM:SS.nnnnnnnnn".
  TextReader(std::string wholeText, std::string formDescription)
      : text(std::move(wholeText)), form(std::move(formDescription)) {}

  /// Throws what a piece that isn't right throws, for the reason given.
  [[noreturn]] void Fail(const std::string& reason) const {
    throw std::invalid_argument("\"" + text + "\" is not " + form + ": " + reason);
  }

  /// Passes over a character if it comes next; whether it did.
  bool TakeIf(char wanted) {
    if (position == text.size() || text[position] != wanted) return false;
    ++position;
    return true;
  }

  /// Passes over a character, which must come next.
  void Take(char wanted) {
    if (!TakeIf(wanted)) FailHere(std::string("'") + wanted + "'");
  }

  /// Makes sure that nothing is left.
  void End() const {
    if (position != text.size()) FailHere("the end");
  }

  /// A run of digits, of which there must be at least `least` and at most `most`. 38 digits are the most
  /// that fit the result.
  Int128 Digits(size_t least, size_t most) {
    const size_t begin = position;
    Int128 number = 0;
    for (; position < text.size() && IsDigit(text[position]); ++position) {
      if (position - begin == most) FailHere("at most " + std::to_string(most) + " digits");
      number = number * 10 + (text[position] - '0');
    }
    if (position - begin < least) FailHere("a digit");
    return number;
  }

  /// A field of two digits.
  int TwoDigits() { return static_cast<int>(Digits(2, 2)); }

  /// A whole number in decimal, with a minus sign or without, that fits 64 bits.
  int64_t Integer() {
    const bool negative = TakeIf('-');
    const Int128 magnitude = Digits(1, 19);
    return Narrow(negative ? -magnitude : magnitude);
  }

  /// The number in 64 bits, which it must fit.
  int64_t Narrow(Int128 value) const {
    if (!CheckedArithmetic::FitsInt64(value)) Fail("the value does not fit 64 bits");
    return static_cast<int64_t>(value);
  }

  /// Nanoseconds from `HH:MM:SS`, which 1 to 9 digits of a fraction may follow. The hours have from two up to
  /// `mostHourDigits` digits.
  Int128 Clock(size_t mostHourDigits) {
    const Int128 hours = Digits(2, mostHourDigits);
    Take(':');
    const int minutes = Sixtieth("minute");
    Take(':');
    const int seconds = Sixtieth("second");
    return ((hours * 60 + minutes) * 60 + seconds) * 1000000000 + Fraction();
  }

 private:
  static bool IsDigit(char character) { return character >= '0' && character <= '9'; }

  [[noreturn]] void FailHere(const std::string& wanted) const {
    Fail("expected " + wanted + " at position " + std::to_string(position));
  }

  int Sixtieth(const char* name) {
    const int value = TwoDigits();
    if (value > 59) Fail(name + (" " + std::to_string(value)) + " is above 59");
    return value;
  }

  Int128 Fraction() {
    if (!TakeIf('.')) return 0;
    const size_t begin = position;
    Int128 nanoseconds = Digits(1, 9);
    for (size_t digits = position - begin; digits < 9; ++digits)
      nanoseconds *= 10;
    return nanoseconds;
  }

  std::string text;
  std::string form;
  size_t position = 0;
};

}  // namespace Oru::TimePoints
