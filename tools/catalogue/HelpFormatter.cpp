#include "HelpFormatter.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace Catalogue {

namespace {

constexpr size_t width = 80;
constexpr size_t descriptionColumn = 30;

/// Breaks a line at blanks. What follows begins where the description of an option does, or where the line does.
std::string Wrapped(std::string line) {
  const size_t begin = line.find_first_not_of(' ');
  const size_t indent = begin == 0 || begin == std::string::npos ? 0 : descriptionColumn;
  std::string wrapped;
  while (line.size() > width) {
    const size_t blank = line.rfind(' ', width);
    if (blank == std::string::npos || blank <= indent) break;
    wrapped += line.substr(0, blank) + '\n';
    line = std::string(indent, ' ') + line.substr(blank + 1);
  }
  return wrapped + line;
}

}  // namespace

HelpFormatter::HelpFormatter() {
  column_width(descriptionColumn);
  label("SUBCOMMAND", "COMMAND");
}

std::string HelpFormatter::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const {
  std::istringstream lines(Formatter::make_help(app, std::move(name), mode));
  std::string help;
  std::string before;
  for (std::string line; std::getline(lines, line); before = line) {
    if (!line.empty() || !before.empty()) help += Wrapped(line) + '\n';
  }
  return help;
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
  return option->get_type_name().empty() ? "" : " " + option->get_type_name();
}

}  // namespace Catalogue
