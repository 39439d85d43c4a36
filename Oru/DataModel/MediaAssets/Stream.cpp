#include "Oru/DataModel/MediaAssets/Stream.h"

namespace Oru::DataModel::MediaAssets {

Stream::Stream() = default;
Stream::Stream(StreamId id) : streamId(std::move(id)) {}
Stream::Stream(const Stream&) = default;
Stream::Stream(Stream&&) noexcept = default;
Stream& Stream::operator=(const Stream&) = default;
Stream& Stream::operator=(Stream&&) noexcept = default;
Stream::~Stream() = default;

std::unique_ptr<Stream> Stream::Clone() const {
  return std::make_unique<Stream>(*this);
}

bool Stream::operator==(const Stream& other) const {
  return streamId == other.streamId && format == other.format && timebounds == other.timebounds &&
         *metadata == *other.metadata && essences == other.essences && locations == other.locations;
}

}  // namespace Oru::DataModel::MediaAssets
