#pragma once

#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <cstdint>

namespace Oru::DataModel::MediaAssets::Database {

/// One row of `TrackChannelTable`: which channel of which essence a track takes.
struct ORU_DATAMODEL_DATABASE_EXPORT TrackChannelEncapsulated {
  TrackChannelEncapsulated() = default;
  /// Refers to the object, which stays the caller's and must outlive this.
  TrackChannelEncapsulated(int64_t track, int64_t essence, int64_t number)
      : trackId(track), essenceId(essence), channelNr(number) {}

  /// Key of the track's row.
  int64_t trackId = -1;
  /// Key of the essence's row.
  int64_t essenceId = -1;
  /// The number of the channel in its track.
  int64_t channelNr = 0;
};

}  // namespace Oru::DataModel::MediaAssets::Database
