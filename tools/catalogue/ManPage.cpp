#include "ManPage.h"

#include "CommandParts.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <sstream>

namespace Catalogue {

namespace {

/// Text as roff takes it: its own signs escaped, and no line that it would obey.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char letter : text) {
    if (letter == '\\') {
      escaped += "\\e";
    } else if (letter == '-') {
      escaped += "\\-";
    } else {
      escaped += letter;
    }
  }
  return escaped.empty() || (escaped[0] != '.' && escaped[0] != '\'') ? escaped : "\\&" + escaped;
}

std::string Bold(const std::string& text) {
  return "\\fB" + Escaped(text) + "\\fR";
}

std::string Italic(const std::string& text) {
  return "\\fI" + Escaped(text) + "\\fR";
}

/// "FILE...", between brackets where it may be left out.
std::string PositionalText(const CLI::Option& option) {
  const std::string name = Italic(option.get_name()) + (option.get_items_expected_max() > 1 ? "..." : "");
  return option.get_required() ? name : "[" + name + "]";
}

void WriteOptions(std::ostream& page, const CLI::App& command) {
  for (const CLI::Option* option : PositionalsOf(command)) {
    page << ".TP\n" << Italic(option->get_name()) << '\n' << Escaped(option->get_description()) << '\n';
  }
  for (const CLI::Option* option : OptionsOf(command)) {
    page << ".TP\n";
    const char* separator = "";
    for (const std::string& name : NamesOf(*option)) {
      page << separator << Bold(name);
      separator = ", ";
    }
    if (!option->get_type_name().empty()) page << ' ' << Italic(option->get_type_name());
    page << '\n' << Escaped(option->get_description()) << '\n';
  }
}

}  // namespace

std::string ManPage(const CLI::App& app) {
  std::string title = app.get_name();
  std::transform(title.begin(), title.end(), title.begin(),
                 [](unsigned char letter) { return std::toupper(letter); });
  std::ostringstream page;
  page << ".TH " << title << " 1\n"
       << ".SH NAME\n"
       << Escaped(app.get_name()) << " \\- " << Escaped(app.get_description()) << '\n'
       << ".SH SYNOPSIS\n"
       << Bold(app.get_name()) << " [" << Italic("options") << "] " << Italic("command") << " ...\n"
       << ".SH OPTIONS\n"
       << "They may follow the command too.\n";
  WriteOptions(page, app);
  page << ".SH COMMANDS\n";
  for (const CLI::App* command : CommandsOf(app)) {
    page << ".SS " << Bold(command->get_name());
    for (const CLI::Option* option : PositionalsOf(*command))
      page << ' ' << PositionalText(*option);
    page << '\n' << Escaped(command->get_description()) << ".\n";
    WriteOptions(page, *command);
  }
  page << ".SH EXIT STATUS AND ENVIRONMENT\n";
  std::istringstream footer(app.get_footer());
  for (std::string line; std::getline(footer, line);)
    page << (line.empty() ? ".PP" : Escaped(line)) << '\n';
  return page.str();
}

}  // namespace Catalogue
