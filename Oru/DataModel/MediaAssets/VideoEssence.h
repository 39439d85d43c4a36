#pragma once

#include "Oru/DataModel/MediaAssets/AspectRatio.h"
#include "Oru/DataModel/MediaAssets/BitRateMode.h"
#include "Oru/DataModel/MediaAssets/Boxing.h"
#include "Oru/DataModel/MediaAssets/ChromaSubSampling.h"
#include "Oru/DataModel/MediaAssets/ColorSpace.h"
#include "Oru/DataModel/MediaAssets/Essence.h"
#include "Oru/DataModel/MediaAssets/Export.h"
#include "Oru/DataModel/MediaAssets/Rate.h"
#include "Oru/DataModel/MediaAssets/ScanMode.h"
#include "Oru/DataModel/MediaAssets/VideoCodingFormat.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace Oru::DataModel::MediaAssets {

/// A video content of a stream.
class ORU_DATAMODEL_EXPORT VideoEssence : public Essence {
 public:
  VideoEssence();
  VideoEssence(const VideoEssence&);
  VideoEssence(VideoEssence&&) noexcept;
  VideoEssence& operator=(const VideoEssence&);
  VideoEssence& operator=(VideoEssence&&) noexcept;
  ~VideoEssence() override;

  std::unique_ptr<Essence> Clone() const override;

  /// How the samples are coded.
  VideoCodingFormat VideoCodec() const noexcept { return videoCodec; }
  void VideoCodec(VideoCodingFormat value) noexcept { videoCodec = value; }
  /// Bits a second.
  int32_t BitRate() const noexcept { return bitRate; }
  void BitRate(int32_t value) noexcept { bitRate = value; }
  /// Whether the bit rate is constant.
  MediaAssets::BitRateMode BitRateMode() const noexcept { return bitRateMode; }
  void BitRateMode(MediaAssets::BitRateMode value) noexcept { bitRateMode = value; }
  /// Bits a sample of one component.
  int32_t BitDepth() const noexcept { return bitDepth; }
  void BitDepth(int32_t value) noexcept { bitDepth = value; }
  /// Frames a second.
  const Rate& FrameRate() const noexcept { return frameRate; }
  void FrameRate(const Rate& value) noexcept { frameRate = value; }
  /// Pixels.
  int32_t Height() const noexcept { return height; }
  void Height(int32_t value) noexcept { height = value; }
  /// Pixels.
  int32_t Width() const noexcept { return width; }
  void Width(int32_t value) noexcept { width = value; }
  /// How the picture is sampled and shown; `unknown` in a new essence:
  MediaAssets::ChromaSubSampling ChromaSubSampling() const noexcept { return chromaSubSampling; }
  void ChromaSubSampling(MediaAssets::ChromaSubSampling value) noexcept { chromaSubSampling = value; }
  MediaAssets::ColorSpace ColorSpace() const noexcept { return colorSpace; }
  void ColorSpace(MediaAssets::ColorSpace value) noexcept { colorSpace = value; }
  MediaAssets::ScanMode ScanMode() const noexcept { return scanMode; }
  void ScanMode(MediaAssets::ScanMode value) noexcept { scanMode = value; }
  /// The shape of the whole picture, not of one pixel.
  const MediaAssets::AspectRatio& AspectRatio() const noexcept { return aspectRatio; }
  void AspectRatio(const MediaAssets::AspectRatio& value) noexcept { aspectRatio = value; }
  /// What bars the picture carries; `unknown` in a new essence.
  MediaAssets::Boxing Boxing() const noexcept { return boxing; }
  void Boxing(MediaAssets::Boxing value) noexcept { boxing = value; }
  /// The code of the format in the file, usually of four characters.
  const std::string& FourCC() const noexcept { return fourCC; }
  void FourCC(std::string value) noexcept { fourCC = std::move(value); }

 private:
  bool HasEqualFields(const Essence& other) const override;

  VideoCodingFormat videoCodec = VideoCodingFormat::unknown;
  int32_t bitRate = 0;
  MediaAssets::BitRateMode bitRateMode = MediaAssets::BitRateMode::unknown;
  int32_t bitDepth = 0;
  Rate frameRate;
  int32_t height = 0;
  int32_t width = 0;
  MediaAssets::ChromaSubSampling chromaSubSampling = MediaAssets::ChromaSubSampling::unknown;
  MediaAssets::ColorSpace colorSpace = MediaAssets::ColorSpace::unknown;
  MediaAssets::ScanMode scanMode = MediaAssets::ScanMode::unknown;
  MediaAssets::AspectRatio aspectRatio;
  MediaAssets::Boxing boxing = MediaAssets::Boxing::unknown;
  std::string fourCC;
};

}  // namespace Oru::DataModel::MediaAssets
