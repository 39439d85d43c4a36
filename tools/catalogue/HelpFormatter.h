#pragma once

#include <CLI/App.hpp>

#include <string>

namespace Catalogue {

/// Help that fits 80 columns.
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter();

  std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
  /// The type alone: what an option excludes is said where two are given.
  std::string make_option_opts(const CLI::Option* option) const override;
};

}  // namespace Catalogue
