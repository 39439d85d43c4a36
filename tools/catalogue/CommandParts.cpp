#include "CommandParts.h"

namespace Catalogue {

std::vector<const CLI::App*> CommandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<const CLI::Option*> OptionsOf(const CLI::App& command) {
  return command.get_options([&command](const CLI::Option* option) {
    const bool isHelpOfCommand = option == command.get_help_ptr() && command.get_parent() != nullptr;
    return option->nonpositional() && !option->get_group().empty() && !isHelpOfCommand;
  });
}

std::vector<const CLI::Option*> PositionalsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<std::string> NamesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames())
    names.push_back("-" + name);
  for (const std::string& name : option.get_lnames())
    names.push_back("--" + name);
  return names;
}

}  // namespace Catalogue
