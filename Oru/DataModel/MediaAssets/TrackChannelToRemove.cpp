#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/StreamCopies.h"

namespace Oru::DataModel::MediaAssets {

TrackChannelToRemove::TrackChannelToRemove() = default;
TrackChannelToRemove::TrackChannelToRemove(const TrackChannelToRemove&) = default;
TrackChannelToRemove::TrackChannelToRemove(TrackChannelToRemove&&) noexcept = default;
TrackChannelToRemove& TrackChannelToRemove::operator=(const TrackChannelToRemove&) = default;
TrackChannelToRemove& TrackChannelToRemove::operator=(TrackChannelToRemove&&) noexcept = default;
TrackChannelToRemove::~TrackChannelToRemove() = default;

std::unique_ptr<TrackChannelToRemove> TrackChannelToRemove::Clone() const {
  StreamCopies copies;
  return copies.CloneOf(*this);
}

bool TrackChannelToRemove::operator==(const TrackChannelToRemove& other) const noexcept {
  return stream == other.stream && essenceNr == other.essenceNr && channelNr == other.channelNr;
}

}  // namespace Oru::DataModel::MediaAssets
