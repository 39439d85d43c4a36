#pragma once

#include "Oru/DataModel/MediaAssets/AudioCodingFormat.h"
#include "Oru/DataModel/MediaAssets/BitRateMode.h"
#include "Oru/DataModel/MediaAssets/Essence.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Rate.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// An audio content of a stream, of one or several channels.
class ORU_DATAMODEL_EXPORT AudioEssence : public Essence {
 public:
  AudioEssence();
  AudioEssence(const AudioEssence&);
  AudioEssence(AudioEssence&&) noexcept;
  AudioEssence& operator=(const AudioEssence&);
  AudioEssence& operator=(AudioEssence&&) noexcept;
  ~AudioEssence() override;

  std::unique_ptr<Essence> Clone() const override;

  /// How the samples are coded.
  AudioCodingFormat AudioCodec() const noexcept { return audioCodec; }
  void AudioCodec(AudioCodingFormat value) noexcept { audioCodec = value; }
  /// Bits a second.
  int32_t BitRate() const noexcept { return bitRate; }
  void BitRate(int32_t value) noexcept { bitRate = value; }
  /// Whether the bit rate is constant.
  MediaAssets::BitRateMode BitRateMode() const noexcept { return bitRateMode; }
  void BitRateMode(MediaAssets::BitRateMode value) noexcept { bitRateMode = value; }
  /// Samples a second.
  const Rate& SampleRate() const noexcept { return sampleRate; }
  void SampleRate(const Rate& value) noexcept { sampleRate = value; }
  /// Bits a sample.
  int32_t BitDepth() const noexcept { return bitDepth; }
  void BitDepth(int32_t value) noexcept { bitDepth = value; }
  /// The code of the format in the file, usually of four characters.
  const std::string& FourCC() const noexcept { return fourCC; }
  void FourCC(std::string value) noexcept { fourCC = std::move(value); }

 private:
  bool HasEqualFields(const Essence& other) const override;

  AudioCodingFormat audioCodec = AudioCodingFormat::unknown;
  int32_t bitRate = 0;
  MediaAssets::BitRateMode bitRateMode = MediaAssets::BitRateMode::unknown;
  Rate sampleRate;
  int32_t bitDepth = 0;
  std::string fourCC;
};

}  // namespace Oru::DataModel::MediaAssets
