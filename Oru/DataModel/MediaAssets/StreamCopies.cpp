#include "Oru/DataModel/MediaAssets/StreamCopies.h"

#include "Oru/DataModel/MediaAssets/EntityGraph.h"

namespace Oru::DataModel::MediaAssets {

StreamReference StreamCopies::CopyOf(StreamReference reference) {
  if (!reference) return reference;
  std::shared_ptr<Stream>& copy = copies[&*reference];
  if (!copy) copy = reference->Clone();
  EntityGraph::HoldCopy(reference, copy);
  return reference;
}

std::unique_ptr<MediaResource> StreamCopies::CloneOf(const MediaResource& resource) {
  auto clone = std::make_unique<MediaResource>(resource);
  for (StreamReference& stream : clone->Streams())
    stream = CopyOf(stream);
  return clone;
}

std::unique_ptr<TrackChannelToRemove> StreamCopies::CloneOf(const TrackChannelToRemove& channel) {
  auto clone = std::make_unique<TrackChannelToRemove>(channel);
  clone->Stream(CopyOf(channel.Stream()));
  return clone;
}

std::unique_ptr<Track> StreamCopies::CloneOf(const Track& track) {
  auto clone = std::make_unique<Track>(track);
  for (std::shared_ptr<TrackChannelToRemove>& channel : clone->Channels()) {
    if (channel) channel = CloneOf(*channel);
  }
  return clone;
}

}  // namespace Oru::DataModel::MediaAssets
