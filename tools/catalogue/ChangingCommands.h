#pragma once

#include "Oru/DataModel/MediaAssets/Utils/DapId.h"

#include "ClipStore.h"
#include "Console.h"

#include <string>
#include <vector>

namespace Catalogue {

/// The commands that change what people say of clips, groups and edits. Each gives the exit status, or throws
/// `std::exception` where nothing could be done.
class ChangingCommands {
 public:
  ChangingCommands(ClipStore& store, const Console& console) : mStore(store), mConsole(console) {}

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
  /// An edit that plays clips one after the other, each whole.
  int MakeEdit(const std::string& name, const std::vector<std::string>& clips);

  /// Removes clips. One that is protected stays, and ends the command.
  int Remove(const std::vector<std::string>& clips);
  /// Removes all clips that are on a server, or none if one of them is protected.
  int RemoveByServer(int server);

 private:
  ClipStore& mStore;
  const Console& mConsole;
};

}  // namespace Catalogue
