#include "Listing.h"

#include "TextForms.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace Catalogue {

namespace {

std::vector<std::string> InCapitals(std::vector<std::string> names) {
  for (std::string& name : names) {
    for (char& letter : name)
      letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
  }
  return names;
}

std::string Quoted(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char letter : text)
    quoted += letter == '"' ? std::string("\"\"") : std::string(1, letter);
  return quoted + '"';
}

std::string CsvOf(const Listing::Cell& cell) {
  if (cell.value.is_null()) return "";
  return Quoted(cell.value.is_primitive() && !cell.value.is_string() ? cell.value.dump() : cell.text);
}

template <class Values, class TextOf>
void WriteCsvLine(std::ostream& out, const Values& values, const TextOf& textOf) {
  const char* separator = "";
  for (const auto& value : values) {
    out << separator << textOf(value);
    separator = ",";
  }
  out << "\r\n";
}

}  // namespace

Listing::Cell::Cell(const std::string& cellText) : text(cellText), value(ToJson(cellText)) {}

Listing::Cell::Cell(std::string cellText, Json cellValue)
    : text(std::move(cellText)), value(std::move(cellValue)) {}

Listing::Cell Listing::Cell::IfAny(const std::string& cellText) {
  if (cellText.empty() || cellText == "-") return {"-", nullptr};
  return cellText;
}

Listing::Listing(const Console& console, std::vector<std::string> columns)
    : mConsole(console), mColumns(std::move(columns)), mTable(InCapitals(mColumns)) {
  if (mConsole.form == Console::Form::CsvText) WriteCsvLine(mConsole.out, mColumns, Quoted);
}

void Listing::Row(const std::vector<Cell>& cells) {
  if (mConsole.form == Console::Form::CsvText) return WriteCsvLine(mConsole.out, cells, CsvOf);
  if (mConsole.form == Console::Form::People) {
    std::vector<std::string> texts;
    texts.reserve(cells.size());
    for (const Cell& cell : cells)
      texts.push_back(cell.text);
    return mTable.Row(texts);
  }
  Json line;
  for (size_t n = 0; n < cells.size(); ++n)
    line[mColumns[n]] = cells[n].value;
  mConsole.out << line.dump() << '\n';
}

void Listing::Finish() {
  if (mConsole.form == Console::Form::People) mTable.Print(mConsole.out);
}

void WriteEvent(const Console& console, const std::string& event, const std::string& id,
                const std::string& name) {
  if (console.form == Console::Form::JsonText) {
    console.out << Json{{"event", event}, {"id", ToJson(id)}, {"name", ToJson(name)}}.dump() << std::endl;
    return;
  }
  constexpr size_t eventWidth = 9;
  std::string column = event;
  column.resize(std::max(event.size() + 1, eventWidth), ' ');
  console.out << column << Printable(id) << "  " << Printable(name) << std::endl;
}

}  // namespace Catalogue
