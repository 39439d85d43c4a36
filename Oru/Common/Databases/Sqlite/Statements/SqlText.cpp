#include "Oru/Common/Databases/Sqlite/Statements/SqlText.h"

#include "Oru/Common/Databases/ArgumentException.h"

#include <charconv>
#include <cmath>

namespace Oru::Common::Databases::Sqlite::SqlText {

namespace {

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string Quoted(const std::string& text, char quote) {
  std::string quoted;
  quoted.reserve(text.size() + 2);
  quoted += quote;
  for (const char c : text) {
    if (c == quote) quoted += quote;
    quoted += c;
  }
  quoted += quote;
  return quoted;
}

}  // namespace

const std::string& CheckedName(const std::string& name) {
  bool atStart = true;
  for (const char c : name) {
    if (atStart ? !IsLetter(c) : !(IsLetter(c) || IsDigit(c) || c == '.')) throw ArgumentException();
    atStart = c == '.';
  }
  if (atStart) throw ArgumentException();
  return name;
}

std::string QuotedName(const std::string& name) {
  return Quoted(name, '"');
}

std::string Literal(int64_t value) {
  return std::to_string(value);
}

std::string Literal(double value) {
  if (std::isnan(value)) return "NULL";
  if (std::isinf(value)) return value > 0 ? "9e999" : "-9e999";
  // Not printf, which follows the program's locale.
  char text[40];
  const char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 17).ptr;
  std::string literal(static_cast<const char*>(text), end);
  // Without a point or an exponent the text would be an integer.
  if (literal.find_first_of(".e") == std::string::npos) literal += ".0";
  return literal;
}

std::string Literal(const std::string& value) {
  if (value.find('\0') != std::string::npos) {
    return "CAST(" + Literal(std::vector<uint8_t>(value.begin(), value.end())) + " AS TEXT)";
  }
  return Quoted(value, '\'');
}

std::string Literal(const std::vector<uint8_t>& bytes) {
  static constexpr char Digits[] = "0123456789abcdef";
  std::string literal("x'");
  literal.reserve(2 * bytes.size() + 3);
  for (const uint8_t byte : bytes) {
    literal += Digits[byte >> 4];
    literal += Digits[byte & 15];
  }
  literal += '\'';
  return literal;
}

std::string EscapedForLike(std::string_view text) {
  std::string pattern;
  for (const char c : text) {
    if (c == '%' || c == '_' || c == '\\') pattern += '\\';
    pattern += c;
  }
  return pattern;
}

}  // namespace Oru::Common::Databases::Sqlite::SqlText
