#include "Oru/DataModel/MediaAssets/Database/Writing/TreeRenaming.h"

#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectIds.h"

#include <set>

namespace Oru::DataModel::MediaAssets::Database {

using BusinessEntityModel::BaseTypes::Identifier;

void RenameTree(MediaAsset& asset, const Identifier& id) {
  const auto below = [&id](const Identifier& old) { return Identifier(id.Value() + "/" + old.Value()); };
  std::set<Identifier> renamedStreams;
  for (auto& resource : asset.MediaResources()) {
    for (auto& stream : resource->Streams()) {
      renamedStreams.insert(stream->Id());
      stream->Id(below(stream->Id()));
      stream.UpdateIdentifier();
    }
    resource->Id(below(resource->Id()));
    resource.UpdateIdentifier();
  }
  for (const auto& track : asset.Tracks()) {
    track->Id(below(track->Id()));
    for (const auto& channel : track->Channels()) {
      const Identifier stream = channel->Stream().Id();
      if (renamedStreams.count(stream) > 0) channel->Stream(StreamReference(below(stream)));
    }
  }
  // One beginning for all leaves their order as it is.
  asset.Id(id);
  ForgetObjectIds(asset);
}

}  // namespace Oru::DataModel::MediaAssets::Database
