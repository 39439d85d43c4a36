#pragma once

#include "Oru/DataModel/MediaAssets/MediaResource.h"
#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/StreamReference.h"
#include "Oru/DataModel/MediaAssets/Track.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include <memory>
#include <unordered_map>

namespace Oru::DataModel::MediaAssets {

/// Clones resources and tracks that refer to the same streams: a stream is copied once, and every clone that
/// was made here refers to that copy. Internal to the model; one object serves one `Clone`.
class StreamCopies {
 public:
  std::unique_ptr<MediaResource> CloneOf(const MediaResource& resource);
  std::unique_ptr<Track> CloneOf(const Track& track);
  std::unique_ptr<TrackChannelToRemove> CloneOf(const TrackChannelToRemove& channel);

 private:
  /// A reference that only knows an identifier gives itself.
  StreamReference CopyOf(StreamReference reference);

  std::unordered_map<const Stream*, std::shared_ptr<Stream>> copies;
};

}  // namespace Oru::DataModel::MediaAssets
