#include "FormatMapping.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <string_view>

namespace Catalogue {
namespace {

using Oru::DataModel::MediaAssets::AspectRatio;
using Oru::DataModel::MediaAssets::AudioCodingFormat;
using Oru::DataModel::MediaAssets::BitRateMode;
using Oru::DataModel::MediaAssets::ChromaSubSampling;
using Oru::DataModel::MediaAssets::ColorSpace;
using Oru::DataModel::MediaAssets::ScanMode;
using Oru::DataModel::MediaAssets::VideoCodingFormat;
using Oru::DataModel::MediaAssets::WrapperFormat;

/// A format and a word that must occur in what further describes it; an empty word occurs in all.
template <class E>
struct Rule {
  std::string_view format;
  std::string_view word;
  E value;
};

/// The first rule that holds.
template <class E, size_t N>
E Match(const Rule<E> (&rules)[N], const std::string& format, const std::string& description) {
  for (const Rule<E>& rule : rules) {
    if (format == rule.format && description.find(rule.word) != std::string::npos) return rule.value;
  }
  return E::unknown;
}

constexpr Rule<WrapperFormat> wrapperRules[] = {
    {"MXF", "AS-11 UKDPP", WrapperFormat::MXFOP1a_AS11UKDPP},
    {"MXF", "OP-1a|Sony|XDCAM", WrapperFormat::MXFOP1a_SonyXDCAM},
    {"MXF", "OP-1a", WrapperFormat::MXFOP1a},
    {"MXF", "OP-1b", WrapperFormat::MXFOP1b},
    {"MXF", "OP-Atom|Panasonic", WrapperFormat::MXFOPAtom_P2},
    {"MXF", "OP-Atom", WrapperFormat::MXFOPAtom_Avid},
    {"MPEG-4", "QuickTime", WrapperFormat::QuickTime},
    {"MPEG-4", "mp4", WrapperFormat::MP4},
    {"MPEG-4", "", WrapperFormat::ISO_BMFF},
    {"Wave", "bext", WrapperFormat::BWAVE},
    {"Wave", "", WrapperFormat::WAVE},
    {"AIFF", "", WrapperFormat::AIFF},
    {"AVI", "", WrapperFormat::AVI},
    {"BDAV", "", WrapperFormat::BDAVMPEGTS},
    {"DASH MPD", "", WrapperFormat::MPEGDASH},
    {"DCP", "", WrapperFormat::DCP},
    {"DVD Video", "", WrapperFormat::VOB},
    {"HLS", "", WrapperFormat::HLS},
    {"ISM", "", WrapperFormat::SmoothStreaming},
    {"MPEG-PS", "", WrapperFormat::MPEGPS},
    {"MPEG-TS", "", WrapperFormat::MPEGTS},
    {"R3D", "", WrapperFormat::R3D},
    {"WebM", "", WrapperFormat::WebM},
    {"Windows Media", "", WrapperFormat::ASF},
};

constexpr Rule<VideoCodingFormat> videoRules[] = {
    {"AVC", "AVC-Intra 100", VideoCodingFormat::PanasonicAVCIntraHD100},
    {"AVC", "AVC-Intra 50", VideoCodingFormat::PanasonicAVCIntraHD50},
    {"AVC", "AVC-LongG", VideoCodingFormat::PanasonicAVCLongG},
    {"AVC", "", VideoCodingFormat::H264},
    {"Bitmap", "", VideoCodingFormat::BMP},
    {"DPX", "", VideoCodingFormat::DPX},
    {"DV", "DVCPRO HD", VideoCodingFormat::DVCPROHD},
    {"DV", "DVCPRO 50", VideoCodingFormat::DVCPRO50},
    {"DV", "|dv5", VideoCodingFormat::DVCPRO50},
    {"DV", "DVCPRO", VideoCodingFormat::DVCPRO},
    {"DV", "", VideoCodingFormat::DV25},
    {"HEVC", "", VideoCodingFormat::H265},
    {"JPEG", "in motion", VideoCodingFormat::MJPEG},
    {"JPEG", "", VideoCodingFormat::JPEG},
    {"JPEG 2000", "", VideoCodingFormat::JPEG2000},
    {"MPEG Video", "IMX 30", VideoCodingFormat::SonyIMX30},
    {"MPEG Video", "IMX 40", VideoCodingFormat::SonyIMX40},
    {"MPEG Video", "IMX 50", VideoCodingFormat::SonyIMX50},
    {"MPEG Video", "XDCAM EX", VideoCodingFormat::SonyXDCAMEX},
    {"MPEG Video", "XDCAM HD", VideoCodingFormat::SonyXDCAMHD},
    {"MPEG Video", "Version 1", VideoCodingFormat::MPEG1},
    {"MPEG Video", "Version 2", VideoCodingFormat::MPEG2},
    {"MPEG-4 Visual", "", VideoCodingFormat::MPEG4},
    {"PNG", "", VideoCodingFormat::PNG},
    {"ProRes", "4444 XQ", VideoCodingFormat::AppleProRes4444XQ},
    {"ProRes", "4444", VideoCodingFormat::AppleProRes4444},
    {"ProRes", "422 HQ", VideoCodingFormat::AppleProRes422HQ},
    {"ProRes", "422 LT", VideoCodingFormat::AppleProRes422LT},
    {"ProRes", "422 Proxy", VideoCodingFormat::AppleProRes422Proxy},
    {"ProRes", "422", VideoCodingFormat::AppleProRes422},
    {"R3D", "", VideoCodingFormat::REDCODERaw},
    {"RGB", "", VideoCodingFormat::Raw},
    {"RLE", "|rle ", VideoCodingFormat::AppleQuickTimeRLE},
    {"TGA", "", VideoCodingFormat::TGA},
    {"TIFF", "", VideoCodingFormat::TIFF},
    {"VC-1", "", VideoCodingFormat::VC1},
    {"VC-3", "HD@HQX", VideoCodingFormat::AvidDNxHDHigh10b},
    {"VC-3", "HD@HQ", VideoCodingFormat::AvidDNxHDHigh},
    {"VC-3", "HD@", VideoCodingFormat::AvidDNxHDLow},
    {"VP8", "", VideoCodingFormat::VP8},
    {"VP9", "", VideoCodingFormat::VP9},
    {"YUV", "", VideoCodingFormat::Raw},
};

constexpr Rule<AudioCodingFormat> audioRules[] = {
    {"AAC", "", AudioCodingFormat::AAC},
    {"ADPCM", "A-Law", AudioCodingFormat::Alaw},
    {"Dolby E", "", AudioCodingFormat::DolbyE},
    {"MPEG Audio", "Layer 1", AudioCodingFormat::MP1},
    {"MPEG Audio", "Layer 2", AudioCodingFormat::MP2},
    {"MPEG Audio", "Layer 3", AudioCodingFormat::MP3},
    {"PCM", "", AudioCodingFormat::PCM},
    {"WMA", "", AudioCodingFormat::WMA},
};

constexpr Rule<ChromaSubSampling> chromaRules[] = {
    {"4:4:4", "", ChromaSubSampling::CS_444}, {"4:2:2", "", ChromaSubSampling::CS_422},
    {"4:2:1", "", ChromaSubSampling::CS_421}, {"4:1:1", "", ChromaSubSampling::CS_411},
    {"4:2:0", "", ChromaSubSampling::CS_420}, {"4:1:0", "", ChromaSubSampling::CS_410},
    {"3:1:1", "", ChromaSubSampling::CS_311},
};

constexpr Rule<ColorSpace> colorRules[] = {
    {"BT.709", "", ColorSpace::BT709},
    {"BT.601", "", ColorSpace::BT601},
    {"BT.601 PAL", "", ColorSpace::BT601},
    {"BT.601 NTSC", "", ColorSpace::SMPTE_170M},
    {"BT.470 System B/G", "", ColorSpace::BT601},
    {"BT.2020", "", ColorSpace::BT2020},
    {"BT.2020 constant", "", ColorSpace::BT2020},
    {"BT.2020 non-constant", "", ColorSpace::BT2020},
    {"FCC 73.682", "", ColorSpace::FCC},
    {"SMPTE 240M", "", ColorSpace::SMPTE_240M},
};

}  // namespace

WrapperFormat WrapperFormatOf(const MediaReport& report) {
  std::string description = report.formatProfile + '|' + report.company + '|' + report.commercialName + '|' +
                            report.compatibleBrands;
  for (const DataReport& data : report.data)
    description += '|' + data.format;
  if (report.hasBroadcastExtension) description += "|bext";
  const WrapperFormat format = Match(wrapperRules, report.format, description);
  if (format != WrapperFormat::unknown) return format;
  // A bare elementary stream: the file is of the format of its only track.
  const bool isBareVideo = report.audio.empty() && report.video.size() == 1 && report.video[0].frameRate &&
                           report.format == report.video[0].format;
  const bool isBareAudio =
      report.video.empty() && report.audio.size() == 1 && report.format == report.audio[0].format;
  return isBareVideo || isBareAudio ? WrapperFormat::RAW : WrapperFormat::unknown;
}

VideoCodingFormat VideoCodecOf(const VideoReport& video) {
  return Match(videoRules, video.format,
               video.formatProfile + '|' + video.formatVersion + '|' + video.commercialName + '|' +
                   video.codecId + (video.frameRate ? "|in motion" : ""));
}

AudioCodingFormat AudioCodecOf(const AudioReport& audio) {
  return Match(audioRules, audio.format, audio.formatProfile);
}

BitRateMode BitRateModeOf(const std::string& mode) {
  if (mode == "CBR") return BitRateMode::cbr;
  if (mode == "VBR") return BitRateMode::vbr;
  return BitRateMode::unknown;
}

ChromaSubSampling ChromaSubSamplingOf(const std::string& subsampling) {
  return Match(chromaRules, subsampling, "");
}

ColorSpace ColorSpaceOf(const VideoReport& video) {
  const ColorSpace byMatrix = Match(colorRules, video.matrix, "");
  return byMatrix != ColorSpace::unknown ? byMatrix : Match(colorRules, video.primaries, "");
}

ScanMode ScanModeOf(const std::string& scanType) {
  if (scanType == "Progressive") return ScanMode::progressive;
  if (scanType == "Interlaced" || scanType == "MBAFF" || scanType == "PAFF") return ScanMode::interlaced;
  return ScanMode::unknown;
}

AspectRatio AspectRatioOf(const std::string& ratio) {
  const size_t colon = ratio.find(':');
  if (colon == std::string::npos) return {};
  const int32_t width = static_cast<int32_t>(std::lround(std::strtod(ratio.c_str(), nullptr) * 1000));
  const int32_t height =
      static_cast<int32_t>(std::lround(std::strtod(ratio.c_str() + colon + 1, nullptr) * 1000));
  if (width <= 0 || height <= 0) return {};
  const int32_t divisor = std::gcd(width, height);
  return {width / divisor, height / divisor};
}

}  // namespace Catalogue
