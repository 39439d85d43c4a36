#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace Catalogue {

/// Rows of text in columns that are as wide as their widest cell. Widths count characters of UTF-8 text, and
/// control characters are shown as blanks.
class TextTable {
 public:
  explicit TextTable(std::vector<std::string> headings);

  /// One cell per heading.
  void Row(const std::vector<std::string>& cells);
  void Print(std::ostream& out) const;

 private:
  std::vector<std::vector<std::string>> mRows;
};

}  // namespace Catalogue
