#pragma once

#include "ClipStore.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Catalogue {

/// What other processes do to the clips of a catalogue, seen by comparing keys, names and dates. Dates count seconds; so
/// a clip that was changed in the second of a comparison is compared with all that it holds.
class ClipWatch {
 public:
  struct Change {
    enum class Kind { New, Changed, Gone };
    Kind kind;
    std::string id;
    std::string name;
  };

  /// What is stored by now is no change.
  explicit ClipWatch(ClipStore& store);

  /// What has changed since the last call, in the order of the keys, those that are gone last.
  std::vector<Change> Changes();
  size_t Count() const { return mSeen.size(); }

 private:
  struct Seen {
    std::string id;
    std::string name;
    int64_t modified = 0;
    // Of all that the clip holds; 0 while its date shows each change.
    size_t hash = 0;

    bool operator==(const Seen& other) const {
      return id == other.id && name == other.name && modified == other.modified && hash == other.hash;
    }
  };

  std::map<int64_t, Seen> Read();

  ClipStore& mStore;
  std::map<int64_t, Seen> mSeen;
  // When the clips were read last, in seconds since 1970.
  int64_t mReadAt = 0;
};

}  // namespace Catalogue
