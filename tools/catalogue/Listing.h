#pragma once

#include "Console.h"
#include "InterchangeValues.h"
#include "TextTable.h"

#include <string>
#include <vector>

namespace Catalogue {

/// A list in the form that the console asks for: a table, comma-separated values with the columns' names first, or a
/// JSON object a line.
class Listing {
 public:
  struct Cell {
    /// A text, the same in all forms.
    Cell(const std::string& cellText);
    /// @param cellText   for a table, and for CSV if the value has parts
    /// @param cellValue  for JSON and CSV
    Cell(std::string cellText, Json cellValue);
    /// "-" in a table and null elsewhere when the text is empty or "-".
    static Cell IfAny(const std::string& cellText);

    std::string text;
    Json value;
  };

  /// @param columns  their names as JSON has them; a table's headings are in capitals
  Listing(const Console& console, std::vector<std::string> columns);

  /// One cell per column.
  void Row(const std::vector<Cell>& cells);
  /// To be called after the last row: a table is as wide as its rows ask for.
  void Finish();

 private:
  const Console& mConsole;
  const std::vector<std::string> mColumns;
  TextTable mTable;
};

/// What has happened to something: "added    4c8h2v0p1x  promo" for people, an object for programs.
void WriteEvent(const Console& console, const std::string& event, const std::string& id,
                const std::string& name);

}  // namespace Catalogue
