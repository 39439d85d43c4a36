#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// How names and values are written into SQL text.
namespace Oru::Common::Databases::Sqlite::SqlText {

/// Gives the name back if it is one or more plain identifiers joined by dots.
/// @throws ArgumentException otherwise
const std::string& CheckedName(const std::string& name);

/// Any one name between double quotes, with its quotes doubled.
std::string QuotedName(const std::string& name);

std::string Literal(int64_t value);
/// 17 significant digits, which give the same double back; infinities as +-9e999, NaN as NULL.
std::string Literal(double value);
/// Text between single quotes, quotes doubled. A NUL byte would end the statement's text, so text that holds
/// one is written as bytes and cast.
std::string Literal(const std::string& value);
std::string Literal(const std::vector<uint8_t>& bytes);

/// A pattern for `LIKE ... ESCAPE '\'` that matches the text itself.
std::string EscapedForLike(std::string_view text);

}  // namespace Oru::Common::Databases::Sqlite::SqlText
