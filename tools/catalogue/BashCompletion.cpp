#include "BashCompletion.h"

#include "CommandParts.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace Catalogue {

namespace {

std::string OptionNames(const CLI::App& command) {
  std::string names;
  for (const CLI::Option* option : OptionsOf(command)) {
    for (const std::string& name : NamesOf(*option))
      names += (names.empty() ? "" : " ") + name;
  }
  return names;
}

}  // namespace

std::string BashCompletion(const CLI::App& app) {
  std::string function = "_" + app.get_name();
  std::replace(function.begin(), function.end(), '-', '_');
  std::ostringstream script;
  std::string commands;
  for (const CLI::App* command : CommandsOf(app))
    commands += (commands.empty() ? "" : " ") + command->get_name();
  script << "# Completion of " << app.get_name() << " for bash\n"
         << function << "() {\n"
         << "  local word current=${COMP_WORDS[COMP_CWORD]} options='" << OptionNames(app) << "' command=''\n"
         << "  for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
         << "    case $word in\n";
  for (const CLI::App* command : CommandsOf(app)) {
    script << "      " << command->get_name() << ") command=$word; options='" << OptionNames(*command) << " "
           << OptionNames(app) << "'; break ;;\n";
  }
  script << "    esac\n"
         << "  done\n"
         << "  if [[ $current == -* ]]; then\n"
         << "    COMPREPLY=($(compgen -W \"$options\" -- \"$current\"))\n"
         << "  elif [[ -z $command && ${COMP_WORDS[COMP_CWORD-1]} != -* ]]; then\n"
         << "    COMPREPLY=($(compgen -W '" << commands << "' -- \"$current\"))\n"
         << "  fi\n"
         << "}\n"
         << "complete -o default -F " << function << ' ' << app.get_name() << '\n';
  return script.str();
}

}  // namespace Catalogue
