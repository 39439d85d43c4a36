#pragma once

#include "Oru/DataModel/MediaAssets/Database/PutProgress.h"

#include "ClipStore.h"
#include "InterchangeFields.h"

#include <cstdint>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace Catalogue {

// All clips, groups and edits of a catalogue as lines of JSON, as docs/interchange.md describes them.

/// What an import does with a clip, a group or an edit that is stored already.
enum class Known { Refuse, Keep, Replace };

/// What an import has done.
struct ImportResult {
  /// A line that was left out.
  struct Refused {
    int64_t line;
    std::string reason;
  };

  int64_t stored = 0;
  int64_t kept = 0;
  std::vector<Refused> refused;
  /// Whether all lines were handled, and not the progress function has ended the import.
  bool isComplete = true;
};

/// Writes all that the file holds, as one view of it.
/// @param progress  called after each clip; false ends the export
/// @return false when `progress` has ended it
bool Export(ClipStore& store, std::ostream& lines,
            const Oru::DataModel::MediaAssets::Database::PutProgress& progress = nullptr);

/// Stores what the lines hold, some hundreds in a transaction. A line that can't be stored is left out, and the
/// reason names what is wrong with it.
/// @param progress  called after each line with the bytes that were read, and their total where it is known; false
///                  ends the import, and what was handled stays
/// @throws std::invalid_argument when the first line isn't the header of a version that is known
ImportResult Import(ClipStore& store, std::istream& lines, Known known, UnknownFields unknown,
                    const Oru::DataModel::MediaAssets::Database::PutProgress& progress = nullptr);

}  // namespace Catalogue
