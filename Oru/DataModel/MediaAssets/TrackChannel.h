#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/DataModel/MediaAssets/Identifiers.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// A channel of the essence that holds this object, and the track that carries it. Not stored: what is stored
/// of a track are its `TrackChannelToRemove` objects.
class TrackChannel {
 public:
  TrackChannel() = default;
  /// @param track    the identifier of the track
  /// @param channel  the number of its channel
  TrackChannel(BaseTypes::Identifier track, int32_t channel)
      : trackId(std::move(track)), channelNr(channel) {}

  /// The identifier of the track.
  const BaseTypes::Identifier& TrackId() const noexcept { return trackId; }
  void TrackId(BaseTypes::Identifier value) noexcept { trackId = std::move(value); }
  /// The number of its channel.
  int32_t ChannelNr() const noexcept { return channelNr; }
  void ChannelNr(int32_t value) noexcept { channelNr = value; }

  /// A copy; the class says what it shares with its original.
  std::unique_ptr<TrackChannel> Clone() const { return std::make_unique<TrackChannel>(*this); }

  /// The same channel of the same track.
  bool operator==(const TrackChannel& other) const noexcept {
    return trackId == other.trackId && channelNr == other.channelNr;
  }
  bool operator!=(const TrackChannel& other) const noexcept { return !(*this == other); }
  /// By channel number.
  bool operator<(const TrackChannel& other) const noexcept { return channelNr < other.channelNr; }

 private:
  BaseTypes::Identifier trackId;
  int32_t channelNr = 0;
};

}  // namespace Oru::DataModel::MediaAssets
