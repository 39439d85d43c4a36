#include "Oru/DataModel/MediaAssets/MediaAsset.h"

#include "Oru/DataModel/MediaAssets/EntityGraph.h"
#include "Oru/DataModel/MediaAssets/StreamCopies.h"

#include <stdexcept>
#include <unordered_map>

namespace Oru::DataModel::MediaAssets {

namespace {

using TrackCopies = std::unordered_map<const Track*, std::shared_ptr<Track>>;

/// Makes a cloned layout name the cloned tracks. Tracks that aren't the asset's own stay.
void PointToCopies(TrackLayout& layout, const TrackCopies& copies) {
  for (TrackLayoutItem& item : layout.TrackLayoutItems()) {
    for (std::weak_ptr<Track>& track : item.Tracks()) {
      const auto copy = copies.find(track.lock().get());
      if (copy != copies.end()) track = copy->second;
    }
  }
}

}  // namespace

MediaAsset::MediaAsset() = default;
MediaAsset::MediaAsset(MediaAssetId assetId) : id(std::move(assetId)) {}
MediaAsset::MediaAsset(const MediaAsset&) = default;
MediaAsset::MediaAsset(MediaAsset&&) noexcept = default;
MediaAsset& MediaAsset::operator=(const MediaAsset&) = default;
MediaAsset& MediaAsset::operator=(MediaAsset&&) noexcept = default;
MediaAsset::~MediaAsset() = default;

void MediaAsset::CreationDate(BaseTypes::DateTime value) noexcept {
  creationDate = value;
  modificationDate = value;
}

void MediaAsset::ModificationDate(BaseTypes::DateTime value) {
  if (value < creationDate) {
    throw std::runtime_error(
        "Oru::DataModel::MediaAssets::MediaAsset::ModificationDate: New modification Date < creation date");
  }
  modificationDate = value;
}

bool MediaAsset::HasDapOperatorMetadata() const {
  return metadata.Has<DapOperatorMetadataProfile>();
}

const DapOperatorMetadataProfile& MediaAsset::DapOperatorMetadata() const {
  return metadata.Require<DapOperatorMetadataProfile>();
}

DapOperatorMetadataProfile& MediaAsset::DapOperatorMetadata() {
  return metadata.Require<DapOperatorMetadataProfile>();
}

std::unique_ptr<MediaAsset> MediaAsset::Clone() const {
  auto clone = std::make_unique<MediaAsset>(*this);
  StreamCopies streamCopies;
  for (auto& resource : clone->mediaResources) {
    if (resource)
      EntityGraph::HoldCopy(resource, std::shared_ptr<MediaResource>(streamCopies.CloneOf(*resource)));
  }
  TrackCopies trackCopies;
  for (std::shared_ptr<Track>& track : clone->tracks) {
    const Track* const original = track.get();
    track = streamCopies.CloneOf(*track);
    trackCopies.emplace(original, track);
  }
  for (std::shared_ptr<TrackLayout>& layout : clone->trackLayouts) {
    layout = layout->Clone();
    PointToCopies(*layout, trackCopies);
  }
  clone->annotations = EntityGraph::CloneElements(annotations);
  return clone;
}

bool MediaAsset::operator==(const MediaAsset& other) const {
  using EntityGraph::AreElementsEqual;
  using EntityGraph::ArePointeesEqual;
  using EntityGraph::AreReferencesEqual;
  return id == other.id && assetType == other.assetType && ancestor == other.ancestor &&
         parent == other.parent && name == other.name && description == other.description &&
         physicalTimebounds == other.physicalTimebounds && creationDate == other.creationDate &&
         modificationDate == other.modificationDate && *metadata == *other.metadata &&
         tracks == other.tracks && trackLayouts == other.trackLayouts &&
         AreElementsEqual(mediaResources, other.mediaResources, AreReferencesEqual<MediaResource>) &&
         AreElementsEqual(annotations, other.annotations, ArePointeesEqual<std::shared_ptr<Annotation>>);
}

}  // namespace Oru::DataModel::MediaAssets
