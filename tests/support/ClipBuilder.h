#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Oru::TestSupport {

inline TimePoints::TimeBounds BoundsOf(int64_t in, int64_t out) {
  return {TimePoints::TimePoint::FromNanoseconds(in), TimePoints::TimePoint::FromNanoseconds(out)};
}

/// Sets one entry "entry" in the profile "editorial", in place of whatever metadata there was.
inline void SetOneEntry(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadata,
                        const std::string& value) {
  auto profile = std::make_shared<BusinessEntityModel::BaseTypes::GenericMetadataProfile>("editorial");
  profile->Set("entry", value);
  metadata.Clear();
  metadata.Set(std::move(profile));
}

inline std::shared_ptr<DataModel::MediaAssets::TrackChannelToRemove> Channel(const std::string& streamId,
                                                                             int32_t essenceNr,
                                                                             int32_t channelNr) {
  auto channel = std::make_shared<DataModel::MediaAssets::TrackChannelToRemove>();
  channel->Stream(BusinessEntityModel::BaseTypes::Identifier(streamId));
  channel->EssenceNr(essenceNr);
  channel->ChannelNr(channelNr);
  return channel;
}

/// A resource with bounds, metadata and one stream, which has bounds, metadata and an essence of each kind:
/// video, audio, data. The stream's identifier is that of the resource and "/stream".
/// @param version  is in one text of each part
inline std::shared_ptr<DataModel::MediaAssets::MediaResource> MakeResource(
    const std::string& id, const std::string& version = "first") {
  using namespace DataModel::MediaAssets;
  auto stream = std::make_unique<Stream>(StreamId(id + "/stream"));
  stream->Format(WrapperFormat::MXFOP1a);
  stream->Timebounds().Insert(BoundsOf(5, 6));
  stream->Essences().Add(std::make_unique<VideoEssence>());
  stream->Essences().Add(std::make_unique<AudioEssence>());
  stream->Essences().Add(std::make_unique<DataEssence>());
  SetOneEntry(*stream->Metadata(), version);
  for (const auto& essence : stream->Essences()) {
    essence->ChannelCount(2);
    SetOneEntry(*essence->Metadata(), version);
  }
  auto resource = std::make_shared<MediaResource>(MediaResourceId(id));
  resource->Name(version);
  resource->CreationDate(7);
  resource->Timebounds().Insert(BoundsOf(3, 4));
  SetOneEntry(*resource->Metadata(), version);
  resource->Adopt(std::move(stream));
  return resource;
}

/// A clip that has rows in every table below an asset: an annotation, bounds, operator metadata with two
/// keywords, metadata, the resource `MakeResource(id + "/resource")`, and a track `id + "/track"` over its
/// video and audio.
/// @param version  is in the name and in one text of each part
inline DataModel::MediaAssets::MediaAsset MakeClip(const std::string& id,
                                                   const std::string& version = "first") {
  using namespace DataModel::MediaAssets;
  MediaAsset clip{MediaAssetId(id)};
  clip.Name(version);
  clip.CreationDate(1000);
  clip.PhysicalTimebounds().Insert(BoundsOf(1, 2));
  SetOneEntry(clip.Metadata(), version);
  auto profile = std::make_shared<DapOperatorMetadataProfile>();
  profile->ServerId(ZuServerId(110));
  profile->Icon(version);
  profile->Keyword(0, version);
  profile->Keyword(1, "goal");
  clip.Metadata().Set(std::move(profile));
  auto annotation = std::make_shared<Annotation>(AnnotationType::CuePoint, version);
  SetOneEntry(annotation->Metadata(), version);
  clip.Annotations().push_back(std::move(annotation));
  const auto resource = MakeResource(id + "/resource", version);
  clip.MediaResources().Insert(resource);
  const auto track = std::make_shared<Track>(TrackId(id + "/track"), version);
  for (const int32_t number : {0, 1}) {
    track->Channels().push_back(Channel(id + "/resource/stream", number, number));
    track->Channels().back()->Stream(resource->Streams().front());
  }
  clip.Tracks().Insert(track);
  return clip;
}

/// A multi-angle group of clips, by their identifiers.
/// @param version  the name of the group and of each angle
inline DataModel::MediaAssets::AnglesMediaAssetGroup MakeGroup(const std::string& id,
                                                               const std::vector<std::string>& clips,
                                                               const std::string& version = "first") {
  using namespace DataModel::MediaAssets;
  AnglesMediaAssetGroup group(MediaAssetGroupId(id), version);
  for (const std::string& clip : clips) {
    group.Items().push_back(
        std::make_shared<AnglesMediaAssetGroupItem>(version, MediaAssetReference(MediaAssetId(clip))));
  }
  return group;
}

}  // namespace Oru::TestSupport
