// A catalogue of media files: reads what each says of itself, and keeps it as a media asset in one database
// file. `oru-catalogue --help` lists the commands.

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"

#include "ClipStore.h"
#include "CommandLine.h"
#include "Console.h"
#include "Interruption.h"

#include <clocale>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <unistd.h>

namespace {

using Catalogue::CommandLine;

int Complain(const char* reason, int status) {
  std::cerr << "oru-catalogue: " << reason << '\n';
  return status;
}

Catalogue::Console ConsoleOf(const CommandLine& line) {
  const char* noColor = std::getenv("NO_COLOR");
  const bool isColorWanted = noColor == nullptr || *noColor == '\0';
  return {std::cout, std::cerr, isColorWanted && ::isatty(STDOUT_FILENO) != 0, ::isatty(STDERR_FILENO) != 0,
          line.Form()};
}

}  // namespace

int main(int argc, char** argv) {
  Oru::DataModel::MediaAssets::Database::DataModelDatabase::TuneForThreads();
  // For the names of files; where the environment names no locale, they are UTF-8.
  if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");

  CommandLine line;
  if (const auto status = line.Parse(argc, argv)) return *status;
  try {
    const bool isUri = line.File().compare(0, 5, "file:") == 0;
    if (!line.MakesFile() && !isUri && !std::filesystem::exists(line.File())) {
      const std::string reason = "there is no catalogue " + line.File() + ", 'add' or 'import' makes one";
      return Complain(reason.c_str(), CommandLine::noCatalogue);
    }
    Catalogue::Interruption::Watch();
    const std::shared_ptr<std::ostream> log(&std::cerr, [](std::ostream*) {});
    Catalogue::ClipStore store(line.File(), log);
    const Catalogue::Console console = ConsoleOf(line);
    return line.Run(store, console);
  } catch (const Oru::Common::Databases::InvalidOperationException& reason) {
    return Complain(reason.what(), CommandLine::noCatalogue);
  } catch (const Oru::Common::Databases::NotSupportedException& reason) {
    return Complain(reason.what(), CommandLine::noCatalogue);
  } catch (const std::exception& reason) {
    return Complain(reason.what(), CommandLine::notDone);
  }
}
