#include "Oru/Common/Databases/Sqlite/Connection/ConnectionText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>

namespace Oru::Common::Databases::Sqlite {

namespace {

constexpr std::array<std::string_view, 6> JournalModes = {"delete", "truncate", "persist",
                                                          "wal",    "memory",   "off"};
constexpr std::array<std::string_view, 4> SynchronousModes = {"off", "normal", "full", "extra"};

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// See https://sqlite.org/uri.html: %HH is a byte, and an unfinished escape is itself.
std::string PercentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isEscape =
        text[i] == '%' && i + 2 < text.size() && HexDigit(text[i + 1]) >= 0 && HexDigit(text[i + 2]) >= 0;
    if (isEscape) {
      decoded += static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]));
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

template <std::size_t N>
bool IsOneOf(const std::string& value, const std::array<std::string_view, N>& values) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

template <class Number>
bool TakeNumber(const std::string& value, Number min, Number& result) {
  const char* end = value.data() + value.size();
  const auto [stop, error] = std::from_chars(value.data(), end, result);
  return error == std::errc() && stop == end && result >= min;
}

// False for an option that is unknown or whose value is bad.
bool Take(const std::string& name, const std::string& value, ConnectionText& result) {
  if (name == "_busy_timeout") return TakeNumber(value, 0, result.busyTimeout);
  if (name == "_statement_timeout") return TakeNumber(value, 1, result.statementTimeout.emplace());
  if (name == "_journal_mode") {
    result.journalMode = value;
    return IsOneOf(value, JournalModes);
  }
  if (name == "_synchronous") {
    result.synchronous = value;
    return IsOneOf(value, SynchronousModes);
  }
  if (name == "_cache_size") {
    result.cacheSize = value;
    int32_t size = 0;
    return TakeNumber(value, std::numeric_limits<int32_t>::min(), size);
  }
  if (name == "_mmap_size") {
    result.mmapSize = value;
    int64_t size = 0;
    return TakeNumber(value, int64_t{0}, size);
  }
  return false;
}

// What a path means as a URI: https://sqlite.org/uri.html
std::string AsUri(std::string_view path) {
  std::string uri("file:");
  for (const char c : path) {
    if (c == '%') uri += "%25";
    if (c == '#') uri += "%23";
    if (c != '%' && c != '#') uri += c;
  }
  return uri;
}

// Whether a name=value follows the first question mark.
bool HasOption(std::string_view text) {
  const std::size_t mark = text.find('?');
  if (mark == std::string_view::npos) return false;
  const std::string_view option = text.substr(mark + 1);
  const std::size_t equals = option.find('=');
  const auto isOfName = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  };
  return equals != std::string_view::npos && equals > 0 &&
         std::all_of(option.begin(), option.begin() + static_cast<std::ptrdiff_t>(equals), isOfName);
}

// What is wrong with the whole of a text, empty for nothing.
std::string FaultOf(const std::string& text) {
  const bool isUri = text.compare(0, 5, "file:") == 0;
  // SQLite would take what is before it for the whole name.
  const bool hasNul = text.find('\0') != std::string::npos ||
                      (isUri && text.substr(0, text.find('#')).find("%00") != std::string::npos);
  if (hasNul) return "the connection text holds a NUL byte";
  // SQLite would make a file of that name.
  if (!isUri && HasOption(text))
    return "options need a URI: write \"" + AsUri(text) + "\" in place of \"" + text + "\"";
  return {};
}

}  // namespace

ConnectionText ConnectionText::Parse(const std::string& text) {
  ConnectionText result;
  result.fault = FaultOf(text);
  std::string_view uri = text;
  if (!result.fault.empty() || uri.substr(0, 5) != "file:") return result;
  uri = uri.substr(0, uri.find('#'));
  const std::size_t mark = uri.find('?');
  std::string_view options = mark == std::string_view::npos ? std::string_view() : uri.substr(mark + 1);

  while (!options.empty()) {
    const std::string_view option = options.substr(0, options.find('&'));
    options.remove_prefix(std::min(option.size() + 1, options.size()));
    const std::size_t equals = option.find('=');
    const std::string name = PercentDecoded(option.substr(0, equals));
    const std::string value =
        equals == std::string_view::npos ? std::string() : PercentDecoded(option.substr(equals + 1));
    // Options without the underscore are SQLite's or those of a virtual file system.
    if (name.empty() || name[0] != '_' || Take(name, value, result)) continue;
    result.fault.append("connection option \"").append(name);
    result.fault.append("\" is unknown or its value \"").append(value).append("\" is not one of its own");
    return result;
  }
  return result;
}

}  // namespace Oru::Common::Databases::Sqlite
