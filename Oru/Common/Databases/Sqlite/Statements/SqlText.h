#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// How names and values are written into SQL text. Internal to the access layer.
namespace Oru::Common::Databases::Sqlite::SqlText {

/// Gives the name back if it is one or more plain identifiers joined by dots.
/// @throws ArgumentException otherwise: a name is never a place for anything else
const std::string& CheckedName(const std::string& name);

/// One name between double quotes, quotes doubled, whatever it is made of.
std::string QuotedName(const std::string& name);

std::string Literal(int64_t value);
/// 17 significant digits, which give the same double back; infinities as +-9e999, NaN as NULL.
std::string Literal(double value);
/// Text between single quotes, quotes doubled. A NUL byte would end the statement's text, so text that holds
/// one is written as bytes and cast.
std::string Literal(const std::string& value);
std::string Literal(const std::vector<uint8_t>& bytes);

/// A pattern for `LIKE ... ESCAPE '\'` in which the text stands for itself.
std::string EscapedForLike(std::string_view text);

}  // namespace Oru::Common::Databases::Sqlite::SqlText
