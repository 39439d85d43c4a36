// A catalogue of media files: reads what each says of itself, and keeps it as a media asset in one database
// file. `oru-catalogue --help` lists the commands.

#include "Oru/DataModel/MediaAssets/Utils/DapId.h"
#include "Oru/DataModel/MediaAssets/Utils/ZuServerId.h"

#include "CatalogueApp.h"
#include "ClipStore.h"

#include <CLI/CLI.hpp>

#include <clocale>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Oru::DataModel::MediaAssets::DapId;
using Oru::DataModel::MediaAssets::ZuServerId;

/// What the command line asks for.
struct Options {
  std::string file = "catalogue.db";
  std::string clip;
  std::string name;
  std::string text;
  std::vector<std::string> values;
  int server = 0;
  int page = 0;
  int bank = 0;
  int row = 0;
  std::string camera;
  double seconds = 0;
  bool isOn = false;
};

DapId PlaceOf(const Options& options) {
  const char camera = options.camera.empty() ? DapId::Empty().Camera() : options.camera[0];
  const DapId place(ZuServerId(options.server), options.page, options.bank, options.row, camera);
  if (options.camera.size() > 1 || !place.IsValid()) {
    throw std::invalid_argument(
        "a place is a page from 0 to 9, a bank from 1 to 9, a row from 0 to 9, and perhaps a camera from A "
        "to L");
  }
  return place;
}

}  // namespace

int main(int argc, char** argv) {
  Oru::DataModel::MediaAssets::Database::DataModelDatabase::TuneForThreads();
  // For the names of files; where the environment names no locale, they are UTF-8.
  if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");

  using Catalogue::CatalogueApp;
  Options options;
  std::function<int(CatalogueApp&)> command;
  bool makesFile = false;

  CLI::App cli("Catalogues media files in one database file.", "oru-catalogue");
  cli.add_option("-f,--file", options.file, "The catalogue, a path or a SQLite URI")->capture_default_str();
  cli.require_subcommand(1);

  const auto addCommand = [&](const std::string& name, const std::string& help,
                              std::function<int(CatalogueApp&)> run) {
    CLI::App* sub = cli.add_subcommand(name, help);
    sub->fallthrough();
    sub->final_callback([&command, run = std::move(run)] { command = run; });
    return sub;
  };
  const auto takesClip = [&options](CLI::App* sub) {
    sub->add_option("clip", options.clip, "The start of its identifier, or its name")->required();
  };

  CLI::App* add = addCommand("add", "Add media files, or read them again",
                             [&](CatalogueApp& app) { return app.Add(options.values); });
  add->add_option("files", options.values, "Media files")->required();
  add->parse_complete_callback([&makesFile] { makesFile = true; });

  CLI::App* list =
      addCommand("list", "List the clips", [&](CatalogueApp& app) { return app.List(options.text); });
  list->add_option("text", options.text, "Only clips with this text in their names");

  CLI::App* search = addCommand("search", "Find clips by words of their names and descriptions",
                                [&](CatalogueApp& app) { return app.Search(options.values); });
  search->add_option("words", options.values, "All of them, in any order; each may be the start of one")
      ->required();

  takesClip(addCommand("show", "Show all that is known of a clip",
                       [&](CatalogueApp& app) { return app.Show(options.clip); }));

  CLI::App* describe = addCommand("describe", "Say what a clip shows", [&](CatalogueApp& app) {
    return app.Describe(options.clip, options.text);
  });
  takesClip(describe);
  describe->add_option("text", options.text)->required();

  CLI::App* place = addCommand("place", "Put a clip on a server's grid",
                               [&](CatalogueApp& app) { return app.Place(options.clip, PlaceOf(options)); });
  takesClip(place);
  place->add_option("server", options.server, "The server's number, a multiple of 10")->required();
  place->add_option("page", options.page, "0 to 9")->required();
  place->add_option("bank", options.bank, "1 to 9")->required();
  place->add_option("row", options.row, "0 to 9")->required();
  place->add_option("camera", options.camera, "A to L, or none");

  CLI::App* tag = addCommand("tag", "Add keywords to a clip",
                             [&](CatalogueApp& app) { return app.Tag(options.clip, options.values); });
  takesClip(tag);
  tag->add_option("keywords", options.values)->required();

  CLI::App* protect = addCommand("protect", "Keep a clip from being removed",
                                 [&](CatalogueApp& app) { return app.Protect(options.clip, !options.isOn); });
  takesClip(protect);
  protect->add_flag("--off", options.isOn, "Lift the protection");

  CLI::App* cue = addCommand("cue", "Mark a place in a clip", [&](CatalogueApp& app) {
    return app.Cue(options.clip, options.seconds, options.text);
  });
  takesClip(cue);
  cue->add_option("seconds", options.seconds, "From the start of the clip")->required();
  cue->add_option("text", options.text)->required();

  CLI::App* group = addCommand("group", "Make a group of clips", [&](CatalogueApp& app) {
    return app.Group(options.name, options.values, options.isOn);
  });
  group->add_option("name", options.name)->required();
  group->add_option("clips", options.values)->required();
  group->add_flag("--angles", options.isOn, "The clips are angles of one scene");

  addCommand("groups", "List the groups", [](CatalogueApp& app) { return app.ListGroups(); });

  CLI::App* remove = addCommand("remove", "Remove clips", [&](CatalogueApp& app) {
    return options.values.empty() ? app.RemoveByServer(options.server) : app.Remove(options.values);
  });
  CLI::Option* removeServer = remove->add_option("--server", options.server, "All clips on this server");
  remove->add_option("clips", options.values)->excludes(removeServer);
  remove->require_option();

  CLI::App* edit = addCommand("edit", "Make an edit that plays clips one after the other",
                              [&](CatalogueApp& app) { return app.MakeEdit(options.name, options.values); });
  edit->add_option("name", options.name)->required();
  edit->add_option("clips", options.values)->required();

  addCommand("edits", "List the edits", [](CatalogueApp& app) { return app.ListEdits(); });

  addCommand("backup", "Copy the catalogue into a new file, while it may be in use",
             [&](CatalogueApp& app) { return app.Backup(options.name); })
      ->add_option("file", options.name, "A path where no file is yet")
      ->required();

  addCommand("check", "Look for damage in the catalogue's file",
             [](CatalogueApp& app) { return app.Check(); });

  CLI11_PARSE(cli, argc, argv);

  try {
    const bool isUri = options.file.compare(0, 5, "file:") == 0;
    if (!makesFile && !isUri && !std::filesystem::exists(options.file)) {
      throw std::runtime_error("there is no catalogue " + options.file + ", 'add' makes one");
    }
    const std::shared_ptr<std::ostream> log(&std::cerr, [](std::ostream*) {});
    Catalogue::ClipStore store(options.file, log);
    const CatalogueApp::Terminals terminals{::isatty(STDOUT_FILENO) != 0, ::isatty(STDERR_FILENO) != 0};
    CatalogueApp app(store, std::cout, std::cerr, terminals);
    return command(app);
  } catch (const std::exception& reason) {
    std::cerr << "oru-catalogue: " << reason.what() << '\n';
    return 1;
  }
}
