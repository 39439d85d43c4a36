#include "Oru/DataModel/MediaAssets/TrackLayout.h"

namespace Oru::DataModel::MediaAssets {

std::unique_ptr<TrackLayout> TrackLayout::Clone() const {
  return std::make_unique<TrackLayout>(*this);
}

bool TrackLayout::operator==(const TrackLayout& other) const {
  return id == other.id && name == other.name && trackLayoutItems == other.trackLayoutItems;
}

}  // namespace Oru::DataModel::MediaAssets
