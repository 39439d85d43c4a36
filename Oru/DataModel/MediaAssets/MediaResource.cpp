#include "Oru/DataModel/MediaAssets/MediaResource.h"

#include "Oru/DataModel/MediaAssets/EntityGraph.h"
#include "Oru/DataModel/MediaAssets/StreamCopies.h"

#include <stdexcept>

namespace Oru::DataModel::MediaAssets {

MediaResource::MediaResource() = default;
MediaResource::MediaResource(MediaResourceId resourceId) : id(std::move(resourceId)) {}
MediaResource::MediaResource(const MediaResource&) = default;
MediaResource::MediaResource(MediaResource&&) noexcept = default;
MediaResource& MediaResource::operator=(const MediaResource&) = default;
MediaResource& MediaResource::operator=(MediaResource&&) noexcept = default;
MediaResource::~MediaResource() = default;

void MediaResource::CreationDate(BaseTypes::DateTime value) noexcept {
  creationDate = value;
  modificationDate = value;
}

void MediaResource::ModificationDate(BaseTypes::DateTime value) {
  if (value < modificationDate) {
    throw std::runtime_error(
        "Oru::DataModel::MediaAssets::MediaResource::ModificationDate: New modification Date < actual "
        "modification date");
  }
  modificationDate = value;
}

void MediaResource::Adopt(std::unique_ptr<Stream>&& stream) {
  if (!stream) {
    throw std::invalid_argument(
        "Oru::DataModel::MediaAssets::MediaResource::Adopt: the stream may not be null");
  }
  streams.emplace_back(std::move(stream));
}

void MediaResource::Add(const MediaResourceId& streamId) {
  streams.emplace_back(streamId);
}

std::unique_ptr<MediaResource> MediaResource::Clone() const {
  StreamCopies copies;
  return copies.CloneOf(*this);
}

bool MediaResource::operator==(const MediaResource& other) const {
  return id == other.id && name == other.name && generalFormat == other.generalFormat &&
         creationDate == other.creationDate && modificationDate == other.modificationDate &&
         timebounds == other.timebounds && *metadata == *other.metadata &&
         EntityGraph::AreElementsEqual(streams, other.streams, EntityGraph::AreReferencesEqual<Stream>);
}

}  // namespace Oru::DataModel::MediaAssets
