#pragma once

#include <CLI/App.hpp>

#include <string>

namespace Catalogue {

/// A script that lets bash complete the commands, the options and the files of a program.
std::string BashCompletion(const CLI::App& app);

}  // namespace Catalogue
