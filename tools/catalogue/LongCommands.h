#pragma once

#include "ClipStore.h"
#include "Console.h"
#include "Interchange.h"

#include <string>
#include <vector>

namespace Catalogue {

/// The commands that may take long: each shows how far it has come. Each gives the exit status, `interrupted` when it
/// has ended early at the user's wish; what was stored until then stays, and nothing is stored by halves.
class LongCommands {
 public:
  static constexpr int interrupted = 130;

  LongCommands(ClipStore& store, const Console& console) : mStore(store), mConsole(console) {}

  /// Catalogues media files, and those in folders. One that is named and is no media is reported, status 1.
  /// @param jobs  how many are read at a time
  int Add(const std::vector<std::string>& names, unsigned jobs);
  /// Copies the catalogue into a new file, while others may use it.
  int Backup(const std::string& file);
  /// Reports what is damaged in the catalogue's file, status 1.
  int Check();
  /// Writes all that the catalogue holds to a file, which is there once it is whole, or to the output ("-").
  int ExportTo(const std::string& file);
  /// Reads a file, or the input ("-"), that `ExportTo` has written. Lines that can't be stored are reported, status 1.
  int ImportFrom(const std::string& file, Known known, UnknownFields unknown);
  /// Reports what other processes do to clips, until the user ends it, status 0.
  /// @param interval  in seconds
  int Watch(double interval);

 private:
  /// @return whether all were stored
  bool AddClips(std::vector<ClipStore::MediaAsset>& clips);

  ClipStore& mStore;
  const Console& mConsole;
};

}  // namespace Catalogue
