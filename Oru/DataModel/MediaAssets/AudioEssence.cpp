#include "Oru/DataModel/MediaAssets/AudioEssence.h"

namespace Oru::DataModel::MediaAssets {

AudioEssence::AudioEssence() : Essence(Type::Audio) {}
AudioEssence::AudioEssence(const AudioEssence&) = default;
AudioEssence::AudioEssence(AudioEssence&&) noexcept = default;
AudioEssence& AudioEssence::operator=(const AudioEssence&) = default;
AudioEssence& AudioEssence::operator=(AudioEssence&&) noexcept = default;
AudioEssence::~AudioEssence() = default;

std::unique_ptr<Essence> AudioEssence::Clone() const {
  return CloneOf(*this);
}

bool AudioEssence::HasEqualFields(const Essence& other) const {
  const auto& audio = static_cast<const AudioEssence&>(other);
  return audioCodec == audio.audioCodec && bitRate == audio.bitRate && bitRateMode == audio.bitRateMode &&
         sampleRate == audio.sampleRate && bitDepth == audio.bitDepth && fourCC == audio.fourCC;
}

}  // namespace Oru::DataModel::MediaAssets
