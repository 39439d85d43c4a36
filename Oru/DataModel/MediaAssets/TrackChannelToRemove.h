#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"
#include "Oru/DataModel/MediaAssets/StreamReference.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// One channel of one essence of one stream, as a member of a track. In spite of its name it says nothing of
/// removing: it is how a track holds its channels.
///
/// A copy shares the stream, if it is loaded, with its original; `Clone` has a stream of its own.
class ORU_DATAMODEL_EXPORT TrackChannelToRemove {
 public:
  TrackChannelToRemove();
  TrackChannelToRemove(const TrackChannelToRemove&);
  TrackChannelToRemove(TrackChannelToRemove&&) noexcept;
  TrackChannelToRemove& operator=(const TrackChannelToRemove&);
  TrackChannelToRemove& operator=(TrackChannelToRemove&&) noexcept;
  ~TrackChannelToRemove();

  /// The stream that holds the essence.
  const StreamReference& Stream() const noexcept { return stream; }
  void Stream(StreamReference value) noexcept { stream = std::move(value); }
  /// The `Nr` of the essence within the stream.
  int32_t EssenceNr() const noexcept { return essenceNr; }
  void EssenceNr(int32_t value) noexcept { essenceNr = value; }
  /// The number of the channel within the essence.
  int32_t ChannelNr() const noexcept { return channelNr; }
  void ChannelNr(int32_t value) noexcept { channelNr = value; }

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<TrackChannelToRemove> Clone() const;

  /// The same numbers, and the same identifier of the stream.
  bool operator==(const TrackChannelToRemove& other) const noexcept;
  bool operator!=(const TrackChannelToRemove& other) const noexcept { return !(*this == other); }

 private:
  StreamReference stream;
  int32_t essenceNr = 0;
  int32_t channelNr = 0;
};

}  // namespace Oru::DataModel::MediaAssets
