#include "Oru/DataModel/MediaAssets/VideoEssence.h"

namespace Oru::DataModel::MediaAssets {

VideoEssence::VideoEssence() : Essence(Type::Video) {}
VideoEssence::VideoEssence(const VideoEssence&) = default;
VideoEssence::VideoEssence(VideoEssence&&) noexcept = default;
VideoEssence& VideoEssence::operator=(const VideoEssence&) = default;
VideoEssence& VideoEssence::operator=(VideoEssence&&) noexcept = default;
VideoEssence::~VideoEssence() = default;

std::unique_ptr<Essence> VideoEssence::Clone() const {
  return CloneOf(*this);
}

bool VideoEssence::HasEqualFields(const Essence& other) const {
  const auto& video = static_cast<const VideoEssence&>(other);
  return videoCodec == video.videoCodec && bitRate == video.bitRate && bitRateMode == video.bitRateMode &&
         bitDepth == video.bitDepth && frameRate == video.frameRate && height == video.height &&
         width == video.width && chromaSubSampling == video.chromaSubSampling &&
         colorSpace == video.colorSpace && scanMode == video.scanMode && aspectRatio == video.aspectRatio &&
         boxing == video.boxing && fourCC == video.fourCC;
}

}  // namespace Oru::DataModel::MediaAssets
