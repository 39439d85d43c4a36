#pragma once

#include "Oru/DataModel/MediaAssets/AspectRatio.h"
#include "Oru/DataModel/MediaAssets/AudioCodingFormat.h"
#include "Oru/DataModel/MediaAssets/BitRateMode.h"
#include "Oru/DataModel/MediaAssets/ChromaSubSampling.h"
#include "Oru/DataModel/MediaAssets/ColorSpace.h"
#include "Oru/DataModel/MediaAssets/ScanMode.h"
#include "Oru/DataModel/MediaAssets/VideoCodingFormat.h"
#include "Oru/DataModel/MediaAssets/WrapperFormat.h"

#include "MediaReport.h"

#include <string>

namespace Catalogue {

// From the words that MediaInfo uses to the enumerations of the data model. What has no counterpart
// there becomes `unknown`.

Oru::DataModel::MediaAssets::WrapperFormat WrapperFormatOf(const MediaReport& report);
Oru::DataModel::MediaAssets::VideoCodingFormat VideoCodecOf(const VideoReport& video);
Oru::DataModel::MediaAssets::AudioCodingFormat AudioCodecOf(const AudioReport& audio);
Oru::DataModel::MediaAssets::BitRateMode BitRateModeOf(const std::string& mode);
Oru::DataModel::MediaAssets::ChromaSubSampling ChromaSubSamplingOf(const std::string& subsampling);
/// By the matrix coefficients, or by the primaries where those are unknown.
Oru::DataModel::MediaAssets::ColorSpace ColorSpaceOf(const VideoReport& video);
Oru::DataModel::MediaAssets::ScanMode ScanModeOf(const std::string& scanType);
/// From "16:9" or "2.35:1", in lowest terms; 1:1 for anything else.
Oru::DataModel::MediaAssets::AspectRatio AspectRatioOf(const std::string& ratio);

}  // namespace Catalogue
