#include "Oru/DataModel/MediaAssets/TrackLayoutItem.h"

namespace Oru::DataModel::MediaAssets {

bool TrackLayoutItem::operator==(const TrackLayoutItem& other) const {
  return id == other.id && name == other.name && tracks == other.tracks;
}

}  // namespace Oru::DataModel::MediaAssets
