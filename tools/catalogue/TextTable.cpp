#include "TextTable.h"

#include "TextForms.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Catalogue {
namespace {

/// Every byte but the continuing ones of a character.
size_t Width(const std::string& text) {
  return static_cast<size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

}  // namespace

TextTable::TextTable(std::vector<std::string> headings) {
  mRows.push_back(std::move(headings));
}

void TextTable::Row(const std::vector<std::string>& cells) {
  std::transform(cells.begin(), cells.end(), std::back_inserter(mRows.emplace_back()), Printable);
}

void TextTable::Print(std::ostream& out) const {
  std::vector<size_t> widths(mRows.front().size(), 0);
  for (const auto& row : mRows) {
    for (size_t n = 0; n < row.size(); ++n)
      widths[n] = std::max(widths[n], Width(row[n]));
  }
  for (const auto& row : mRows) {
    std::string line;
    for (size_t n = 0; n < row.size(); ++n) {
      line += row[n];
      if (n + 1 < row.size()) line += std::string(widths[n] - Width(row[n]) + 2, ' ');
    }
    out << line << '\n';
  }
}

}  // namespace Catalogue
