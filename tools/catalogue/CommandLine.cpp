#include "CommandLine.h"

#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include "BashCompletion.h"
#include "ChangingCommands.h"
#include "HelpFormatter.h"
#include "LongCommands.h"
#include "ManPage.h"
#include "ReadingCommands.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Catalogue {

namespace {

using Oru::DataModel::MediaAssets::DapId;
using Oru::DataModel::MediaAssets::ZuServerId;

constexpr char footer[] =
    "Exit status: 0 when all was done; 1 when something couldn't be done, wasn't found or was left out, and when a "
    "check has found damage; 2 when the command line is wrong; 3 when the catalogue's file can't be opened, read or "
    "written; 130 when Ctrl-C has ended the work early. What was stored until then stays.\n"
    "\n"
    "Where NO_COLOR is set and not empty, nothing is shown in bold.";

DapId PlaceOf(int server, int page, int bank, int row, const std::string& camera) {
  const char letter = camera.empty() ? DapId::Empty().Camera() : camera[0];
  const DapId place(ZuServerId(server), page, bank, row, letter);
  if (camera.size() > 1 || !place.IsValid()) {
    throw std::invalid_argument(
        "a place is a page from 0 to 9, a bank from 1 to 9, a row from 0 to 9, and perhaps a camera from A "
        "to L");
  }
  return place;
}

}  // namespace

CommandLine::CommandLine()
    : mApp("Catalogues media files in one database file, and searches, changes, copies and checks it.",
           "oru-catalogue"),
      mJobs(std::max(1u, std::thread::hardware_concurrency())) {
  mApp.formatter(std::make_shared<HelpFormatter>());
  mApp.footer(footer);
  mApp.set_help_flag("-h,--help", "Print this help, or that of a command");
  mApp.set_version_flag("--version", ORU_CATALOGUE_VERSION, "Print the version");
  mApp.add_option("-f,--file", mFile, "The catalogue, a path or a SQLite URI; catalogue.db without it")
      ->type_name("FILE");
  mApp.require_subcommand(1);
  // For packages. They belong to no group, and so help doesn't show them.
  const auto prints = [this](const std::string& name, std::string (*text)(const CLI::App&)) {
    const auto print = [this, text] {
      std::cout << text(mApp);
      throw CLI::Success();
    };
    mApp.add_flag_callback(name, print)->group("");
  };
  prints("--man", ManPage);
  prints("--completion", BashCompletion);
  AddWork();
  AddReading();
  AddChanging();
}

std::optional<int> CommandLine::Parse(int argc, const char* const* argv) {
  try {
    mApp.parse(argc, argv);
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    return mApp.exit(error) == 0 ? done : wrongCommandLine;
  }
}

Console::Form CommandLine::Form() const {
  if (mIsJson) return Console::Form::JsonText;
  return mIsCsv ? Console::Form::CsvText : Console::Form::People;
}

CLI::App& CommandLine::Add(const std::string& name, const std::string& help, Command command) {
  CLI::App* sub = mApp.add_subcommand(name, help);
  sub->fallthrough();
  sub->group("Commands");
  sub->footer("");
  sub->final_callback([this, command = std::move(command)] { mCommand = command; });
  return *sub;
}

void CommandLine::TakesClip(CLI::App& command) {
  command.add_option("clip", mClip, "The start of its identifier, or its name")->required()->type_name("");
}

void CommandLine::ShowsOne(CLI::App& command) {
  command.add_flag("--json", mIsJson, "As JSON");
}

void CommandLine::ShowsList(CLI::App& command) {
  CLI::Option* json = command.add_flag("--json", mIsJson, "As JSON, an object a line");
  command.add_flag("--csv", mIsCsv, "As comma-separated values, the columns' names first")->excludes(json);
}

void CommandLine::AddWork() {
  CLI::App& add =
      Add("add", "Add media files, or read them again", [this](ClipStore& store, const Console& console) {
        return LongCommands(store, console).Add(mValues, mJobs);
      });
  add.add_option("files", mValues, "Media files, and folders, with the folders in them")
      ->required()
      ->type_name("");
  add.add_option("-j,--jobs", mJobs,
                 "How many files are read at a time; as many as there are processors without it")
      ->check(CLI::Range(1u, 64u).description(""))
      ->type_name("COUNT");
  add.add_flag("--json", mIsJson, "Report as JSON, an object a clip");
  add.parse_complete_callback([this] { mMakesFile = true; });

  Add("backup", "Copy the catalogue into a new file, while it may be in use",
      [this](ClipStore& store, const Console& console) { return LongCommands(store, console).Backup(mName); })
      .add_option("file", mName, "A path where no file is yet")
      ->required()
      ->type_name("");

  ShowsOne(
      Add("check", "Look for damage in the catalogue's file",
          [](ClipStore& store, const Console& console) { return LongCommands(store, console).Check(); }));

  Add("export", "Write all clips, groups and edits as lines of JSON",
      [this](ClipStore& store, const Console& console) {
        return LongCommands(store, console).ExportTo(mName);
      })
      .add_option("file", mName, "Where to, - for the output")
      ->required()
      ->type_name("");

  CLI::App& import =
      Add("import", "Store what an export holds", [this](ClipStore& store, const Console& console) {
        const Known known = mKeeps ? Known::Keep : mReplaces ? Known::Replace : Known::Refuse;
        const UnknownFields unknown = mIsLenient ? UnknownFields::PassOver : UnknownFields::Refuse;
        return LongCommands(store, console).ImportFrom(mName, known, unknown);
      });
  import.add_option("file", mName, "What export has written, - for the input")->required()->type_name("");
  CLI::Option* keep =
      import.add_flag("--keep", mKeeps, "Keep what is stored already, and pass over the same");
  import.add_flag("--replace", mReplaces, "Replace what is stored already")->excludes(keep);
  import.add_flag("--lenient", mIsLenient, "Pass over fields that are unknown");
  import.parse_complete_callback([this] { mMakesFile = true;
});

CLI::App& watch = Add("watch", "Report clips that are new, changed or gone, until Ctrl-C",
                      [this](ClipStore& store, const Console& console) {
                        return LongCommands(store, console).Watch(mSeconds);
                      });
mSeconds = 1;
watch.add_option("--interval", mSeconds, "Seconds from one look to the next; 1 without it")
    ->check(CLI::Range(0.02, 86400.0).description(""))
    ->type_name("SECONDS");
watch.add_flag("--json", mIsJson, "As JSON, an object a clip");
}  // namespace Catalogue

void CommandLine::AddReading() {
  CLI::App& list = Add("list", "List the clips", [this](ClipStore& store, const Console& console) {
    return ReadingCommands(store, console).List(mText, mSearch);
  });
  list.add_option("text", mText, "Only clips with this text in their names")->type_name("");
  ShowsList(list);
  mSearch.AddTo(list);

  CLI::App& search = Add("search", "Find clips by words of their names and descriptions",
                         [this](ClipStore& store, const Console& console) {
                           return ReadingCommands(store, console).Search(mValues, mSearch);
                         });
  search.add_option("words", mValues, "All of them, in any order; each may be the start of one")
      ->required()
      ->type_name("");
  ShowsList(search);
  mSearch.AddTo(search);

  CLI::App& show =
      Add("show", "Show all that is known of a clip", [this](ClipStore& store, const Console& console) {
        return ReadingCommands(store, console).Show(mClip);
      });
  TakesClip(show);
  ShowsOne(show);

  ShowsList(Add("groups", "List the groups", [](ClipStore& store, const Console& console) {
    return ReadingCommands(store, console).Groups();
  }));
  ShowsList(Add("edits", "List the edits", [](ClipStore& store, const Console& console) {
    return ReadingCommands(store, console).Edits();
  }));
}

void CommandLine::AddChanging() {
  CLI::App& describe =
      Add("describe", "Say what a clip shows", [this](ClipStore& store, const Console& console) {
        return ChangingCommands(store, console).Describe(mClip, mText);
      });
  TakesClip(describe);
  describe.add_option("text", mText, "In your words")->required()->type_name("");

  CLI::App& place =
      Add("place", "Put a clip on a server's grid", [this](ClipStore& store, const Console& console) {
        return ChangingCommands(store, console).Place(mClip, PlaceOf(mServer, mPage, mBank, mRow, mCamera));
      });
  TakesClip(place);
  place.add_option("server", mServer, "The server's number, a multiple of 10")->required()->type_name("");
  place.add_option("page", mPage, "0 to 9")->required()->type_name("");
  place.add_option("bank", mBank, "1 to 9")->required()->type_name("");
  place.add_option("row", mRow, "0 to 9")->required()->type_name("");
  place.add_option("camera", mCamera, "A to L, or none")->type_name("");

  CLI::App& tag = Add("tag", "Add keywords to a clip", [this](ClipStore& store, const Console& console) {
    return ChangingCommands(store, console).Tag(mClip, mValues);
  });
  TakesClip(tag);
  tag.add_option("keywords", mValues, "One or more")->required()->type_name("");

  CLI::App& protect =
      Add("protect", "Keep a clip from being removed", [this](ClipStore& store, const Console& console) {
        return ChangingCommands(store, console).Protect(mClip, !mIsOn);
      });
  TakesClip(protect);
  protect.add_flag("--off", mIsOn, "Lift the protection");

  CLI::App& cue = Add("cue", "Mark a place in a clip", [this](ClipStore& store, const Console& console) {
    return ChangingCommands(store, console).Cue(mClip, mSeconds, mText);
  });
  TakesClip(cue);
  cue.add_option("seconds", mSeconds, "From the start of the clip")->required()->type_name("");
  cue.add_option("text", mText, "What is there")->required()->type_name("");

  CLI::App& group = Add("group", "Make a group of clips", [this](ClipStore& store, const Console& console) {
    return ChangingCommands(store, console).Group(mName, mValues, mIsOn);
  });
  group.add_option("name", mName, "One that is known gets these clips in place of its own")
      ->required()
      ->type_name("");
  group.add_option("clips", mValues, "By their identifiers or names, in order")->required()->type_name("");
  group.add_flag("--angles", mIsOn, "The clips are angles of one scene");

  CLI::App& remove = Add("remove", "Remove clips", [this](ClipStore& store, const Console& console) {
    ChangingCommands commands(store, console);
    return mValues.empty() ? commands.RemoveByServer(mServer) : commands.Remove(mValues);
  });
  CLI::Option* server =
      remove.add_option("--server", mServer, "All clips on this server")->type_name("NUMBER");
  remove.add_option("clips", mValues, "By their identifiers or names")->excludes(server)->type_name("");
  remove.require_option();

  CLI::App& edit = Add("edit", "Make an edit that plays clips one after the other",
                       [this](ClipStore& store, const Console& console) {
                         return ChangingCommands(store, console).MakeEdit(mName, mValues);
                       });
  edit.add_option("name", mName, "One that is known gets these clips in place of its own")
      ->required()
      ->type_name("");
  edit.add_option("clips", mValues, "By their identifiers or names, in order")->required()->type_name("");
}

}  // namespace Catalogue
