#include "Oru/DataModel/MediaAssets/Track.h"

#include "Oru/DataModel/MediaAssets/StreamCopies.h"

namespace Oru::DataModel::MediaAssets {

Track::Track() = default;
Track::Track(TrackId trackId) : id(std::move(trackId)) {}
Track::Track(TrackId trackId, BaseTypes::Utf8String trackName)
    : id(std::move(trackId)), name(std::move(trackName)) {}
Track::Track(const Track&) = default;
Track::Track(Track&&) noexcept = default;
Track& Track::operator=(const Track&) = default;
Track& Track::operator=(Track&&) noexcept = default;
Track::~Track() = default;

std::unique_ptr<Track> Track::Clone() const {
  StreamCopies copies;
  return copies.CloneOf(*this);
}

}  // namespace Oru::DataModel::MediaAssets
