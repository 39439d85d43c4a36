#pragma once

#include <CLI/App.hpp>

#include <string>

namespace Catalogue {

/// The man page of a program, from what its command line offers.
std::string ManPage(const CLI::App& app);

}  // namespace Catalogue
