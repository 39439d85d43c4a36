#include "Oru/DataModel/MediaAssets/Essence.h"

#include "Oru/DataModel/MediaAssets/EntityGraph.h"

namespace Oru::DataModel::MediaAssets {

Essence::Essence(Type kind) : type(kind) {}
Essence::Essence(const Essence&) = default;
Essence::Essence(Essence&&) noexcept = default;
Essence& Essence::operator=(const Essence&) = default;
Essence& Essence::operator=(Essence&&) noexcept = default;
Essence::~Essence() = default;

void Essence::CloneSharedParts() {
  trackChannels = EntityGraph::CloneElements(trackChannels);
  timeCodeTables = EntityGraph::CloneElements(timeCodeTables);
}

bool Essence::operator==(const Essence& other) const {
  return type == other.type && nr == other.nr && channelCount == other.channelCount &&
         *metadata == *other.metadata && trackChannels == other.trackChannels &&
         timeCodeTables == other.timeCodeTables && HasEqualFields(other);
}

}  // namespace Oru::DataModel::MediaAssets
