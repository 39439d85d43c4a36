#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectIds.h"

#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

namespace Oru::DataModel::MediaAssets::Database {

using BusinessEntityModel::BaseTypes::PersistentObject;

namespace {

template <class Visit>
void VisitStream(Stream& stream, Visit visit) {
  visit(stream);
  for (const auto& essence : stream.Essences())
    visit(*essence);
}

// Calls `visit` with each object of the tree that has a row of its own, as far as it is loaded.
template <class Visit>
void VisitTree(MediaAsset& asset, Visit visit) {
  visit(asset);
  if (const auto profile = asset.Metadata().Get<DapOperatorMetadataProfile>()) visit(*profile);
  for (const auto& annotation : asset.Annotations()) {
    if (annotation) visit(*annotation);
  }
  for (auto& resource : asset.MediaResources()) {
    if (!resource) continue;
    visit(*resource);
    for (auto& stream : resource->Streams()) {
      if (stream) VisitStream(*stream, visit);
    }
  }
  for (const auto& track : asset.Tracks()) {
    if (track) visit(*track);
  }
}

}  // namespace

void RememberObjectIds(FormerObjectIds& former, MediaAsset& asset) {
  VisitTree(asset, [&former](PersistentObject& object) { former.Remember(object); });
}

void ForgetObjectIds(MediaAsset& asset) {
  const auto forget = [](PersistentObject& object) { object.ObjectId(-1); };
  VisitTree(asset, forget);
  for (const auto& track : asset.Tracks()) {
    if (!track) continue;
    for (const auto& channel : track->Channels()) {
      if (!channel) continue;
      if (StreamReference stream = channel->Stream()) VisitStream(*stream, forget);
    }
  }
}

}  // namespace Oru::DataModel::MediaAssets::Database
