#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace Catalogue {

// What a command line offers, for those who write it down: man page and completion.

/// The commands in the order in which they were added.
std::vector<const CLI::App*> CommandsOf(const CLI::App& app);
/// The options that help shows, `--help` with the program alone, and positional arguments.
std::vector<const CLI::Option*> OptionsOf(const CLI::App& command);
std::vector<const CLI::Option*> PositionalsOf(const CLI::App& command);
/// "-f", "--file".
std::vector<std::string> NamesOf(const CLI::Option& option);

}  // namespace Catalogue
