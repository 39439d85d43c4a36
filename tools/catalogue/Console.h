#pragma once

#include <ostream>

namespace Catalogue {

/// Where the program writes, and how.
struct Console {
  /// For people as tables and sentences, for programs as JSON (a document, or a line for each of a list) or as CSV.
  enum class Form { People, JsonText, CsvText };

  std::ostream& out;
  std::ostream& errors;
  /// Whether `out` shows bold letters.
  bool hasColor = false;
  /// Whether `errors` is a terminal, on which a line can be taken back.
  bool isWatched = false;
  Form form = Form::People;
};

}  // namespace Catalogue
