#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace Oru::Common::Databases::Sqlite {

/// A value that a statement runs with. A NaN is stored and compared as NULL.
using StatementValue = std::variant<int64_t, double, std::string, std::vector<uint8_t>>;

/// One statement and the values of its parameters, in the order of the text. Statements that differ only in
/// their values have one text, and SQLite prepares it once.
struct StatementText {
  /// The statement, with a question mark in place of each value.
  std::string text;
  /// The values of the question marks, in order.
  std::vector<StatementValue> values;
};

}  // namespace Oru::Common::Databases::Sqlite
