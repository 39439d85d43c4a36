#pragma once

#include "ClipStore.h"
#include "Console.h"
#include "SearchOptions.h"

#include <CLI/App.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Catalogue {

/// What the command line offers, and what it asks for. Help, man page and completion are made from it.
class CommandLine {
 public:
  /// The exit statuses, beside that of `LongCommands::interrupted`: all was done; something couldn't be done, wasn't
  /// found or was left out; the command line is wrong; the catalogue's file can't be opened, read or written.
  static constexpr int done = 0, notDone = 1, wrongCommandLine = 2, noCatalogue = 3;

  CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  /// @return the exit status where the line is wrong or asked for help alone, else nothing
  std::optional<int> Parse(int argc, const char* const* argv);

  /// The catalogue's file, a path or a URI.
  const std::string& File() const { return mFile; }
  /// Whether the command makes the file if it isn't there.
  bool MakesFile() const { return mMakesFile; }
  Console::Form Form() const;
  /// Runs the command.
  /// @return the exit status
  int Run(ClipStore& store, const Console& console) const { return mCommand(store, console); }

 private:
  using Command = std::function<int(ClipStore&, const Console&)>;

  CLI::App& Add(const std::string& name, const std::string& help, Command command);
  void TakesClip(CLI::App& command);
  void ShowsOne(CLI::App& command);
  void ShowsList(CLI::App& command);
  void AddWork();
  void AddReading();
  void AddChanging();

  CLI::App mApp;
  Command mCommand;
  SearchOptions mSearch;
  std::string mFile = "catalogue.db";
  bool mMakesFile = false;
  bool mIsJson = false;
  bool mIsCsv = false;

  std::string mClip;
  std::string mName;
  std::string mText;
  std::string mCamera;
  std::vector<std::string> mValues;
  int mServer = 0;
  int mPage = 0;
  int mBank = 0;
  int mRow = 0;
  unsigned mJobs = 1;
  double mSeconds = 0;
  bool mIsOn = false;
  bool mIsLenient = false;
  bool mKeeps = false;
  bool mReplaces = false;
};

}  // namespace Catalogue
