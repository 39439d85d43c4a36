#pragma once

#include "Oru/DataModel/MediaAssets/Utils/DapId.h"

#include "ClipStore.h"

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace Catalogue {

/// The commands of the program. Each gives the exit status: 0, or 1 if something could not be done; and
/// throws `std::exception` if nothing could.
class CatalogueApp {
 public:
  /// Which streams are terminals that someone watches: what is found is shown in bold on `out`, and how far a
  /// long command has come on `errors`.
  struct Terminals {
    bool out = false;
    bool errors = false;
  };

  CatalogueApp(ClipStore& store, std::ostream& out, std::ostream& errors, Terminals terminals);

  /// Catalogues media files. One that is no media is named and passed over.
  int Add(const std::vector<std::string>& files);
  int List(const std::string& nameContains);
  /// Shows the clips that hold all of the words, or words that begin so, in their names and
  /// descriptions, the best first; status 1 for none.
  int Search(const std::vector<std::string>& words);
  int Show(const std::string& clip);

  /// Says of a clip what its file doesn't.
  int Describe(const std::string& clip, const std::string& description);

  /// Puts a clip on a server's grid.
  int Place(const std::string& clip, const Oru::DataModel::MediaAssets::DapId& place);
  /// Adds keywords to those that the clip has.
  int Tag(const std::string& clip, const std::vector<std::string>& keywords);
  int Protect(const std::string& clip, bool isProtected);
  /// Marks a place on the clip's time line.
  int Cue(const std::string& clip, double seconds, const std::string& text);

  int Group(const std::string& name, const std::vector<std::string>& clips, bool hasAngles);
  int ListGroups();
  /// Removes clips. One that is protected stays, and ends the command.
  int Remove(const std::vector<std::string>& clips);
  /// Removes all clips that lie on a server, or none if one of them is protected.
  int RemoveByServer(int server);

  /// An edit that plays clips one after the other, each whole.
  int MakeEdit(const std::string& name, const std::vector<std::string>& clips);
  int ListEdits();

  /// Copies the catalogue into a new file, while others may use it.
  int Backup(const std::string& file);
  /// Names what is damaged in the catalogue's file.
  int Check();

 private:
  /// What a search shows of a clip. What matched stands between "<b>" and "</b>".
  struct Texts {
    std::string name;
    std::string description;
  };

  bool AddFile(const std::string& file);
  /// The texts of the clips that a search has found, by their keys.
  std::map<int64_t, Texts> HighlightedTexts(const std::vector<ClipStore::MediaAsset>& hits,
                                            const std::string& words);
  /// What takes the line of progress back.
  const char* ClearLine() const;

  ClipStore& mStore;
  std::ostream& mOut;
  std::ostream& mErrors;
  Terminals mTerminals;
};

}  // namespace Catalogue
