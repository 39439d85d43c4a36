#pragma once

#include "Oru/DataModel/MediaAssets/Utils/DapId.h"

#include "ClipStore.h"

#include <ostream>
#include <string>
#include <vector>

namespace Catalogue {

/// The commands of the program. Each gives the exit status: 0, or 1 if something could not be done; and
/// throws `std::exception` if nothing could.
class CatalogueApp {
 public:
  /// @param isTerminal  whether someone watches `errors`, and wants to see how far a long command has come
  CatalogueApp(ClipStore& store, std::ostream& out, std::ostream& errors, bool isTerminal);

  /// Catalogues media files. One that is no media is named and passed over.
  int Add(const std::vector<std::string>& files);
  int List(const std::string& nameContains);
  int Show(const std::string& clip);

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

 private:
  bool AddFile(const std::string& file);

  ClipStore& mStore;
  std::ostream& mOut;
  std::ostream& mErrors;
  bool mIsTerminal;
};

}  // namespace Catalogue
