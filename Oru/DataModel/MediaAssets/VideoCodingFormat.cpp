#include "Oru/DataModel/MediaAssets/VideoCodingFormat.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<VideoCodingFormat>& Texts() {
  static const EnumerationText<VideoCodingFormat> texts{
      {VideoCodingFormat::unknown, "unknown"},
      {VideoCodingFormat::AppleProRes422, "AppleProRes422"},
      {VideoCodingFormat::AppleProRes422HQ, "AppleProRes422HQ"},
      {VideoCodingFormat::AppleProRes422LT, "AppleProRes422LT"},
      {VideoCodingFormat::AppleProRes422Proxy, "AppleProRes422Proxy"},
      {VideoCodingFormat::AppleProRes4444, "AppleProRes4444"},
      {VideoCodingFormat::AppleProRes4444XQ, "AppleProRes4444XQ"},
      {VideoCodingFormat::AppleQuickTimeRLE, "AppleQuickTimeRLE"},
      {VideoCodingFormat::AvidDNxHDLow, "AvidDNxHDLow"},
      {VideoCodingFormat::AvidDNxHDHigh, "AvidDNxHDHigh"},
      {VideoCodingFormat::AvidDNxHDHigh10b, "AvidDNxHDHigh10b"},
      {VideoCodingFormat::BMP, "BMP"},
      {VideoCodingFormat::CameraRaw, "CameraRaw"},
      {VideoCodingFormat::DPX, "DPX"},
      {VideoCodingFormat::DV25, "DV25"},
      {VideoCodingFormat::DVCPRO, "DVCPRO"},
      {VideoCodingFormat::DVCPRO50, "DVCPRO50"},
      {VideoCodingFormat::DVCPROHD, "DVCPROHD"},
      {VideoCodingFormat::ORUCGTemplate, "ORUCGTemplate"},
      {VideoCodingFormat::ORUKM, "ORUKM"},
      {VideoCodingFormat::ORUMJPEG, "ORUMJPEG"},
      {VideoCodingFormat::GXFillAndKey, "GXFillAndKey"},
      {VideoCodingFormat::H264, "H264"},
      {VideoCodingFormat::H265, "H265"},
      {VideoCodingFormat::JPEG, "JPEG"},
      {VideoCodingFormat::JPEG2000, "JPEG2000"},
      {VideoCodingFormat::MJPEG, "MJPEG"},
      {VideoCodingFormat::MPEG1, "MPEG1"},
      {VideoCodingFormat::MPEG2, "MPEG2"},
      {VideoCodingFormat::MPEG4, "MPEG4"},
      {VideoCodingFormat::PanasonicAVCIntraHD100, "PanasonicAVCIntraHD100"},
      {VideoCodingFormat::PanasonicAVCIntraHD50, "PanasonicAVCIntraHD50"},
      {VideoCodingFormat::PanasonicAVCLongG, "PanasonicAVCLongG"},
      {VideoCodingFormat::PNG, "PNG"},
      {VideoCodingFormat::Raw, "Raw"},
      {VideoCodingFormat::REDCODERaw, "REDCODERaw"},
      {VideoCodingFormat::SGI, "SGI"},
      {VideoCodingFormat::SonyIMX30, "SonyIMX30"},
      {VideoCodingFormat::SonyIMX40, "SonyIMX40"},
      {VideoCodingFormat::SonyIMX50, "SonyIMX50"},
      {VideoCodingFormat::SonyXAVCLongGOP, "SonyXAVCLongGOP"},
      {VideoCodingFormat::SonyXAVCIntra4K100, "SonyXAVCIntra4K100"},
      {VideoCodingFormat::SonyXAVCIntra4K300, "SonyXAVCIntra4K300"},
      {VideoCodingFormat::SonyXAVCIntra4K480, "SonyXAVCIntra4K480"},
      {VideoCodingFormat::SonyXAVCIntraHD100, "SonyXAVCIntraHD100"},
      {VideoCodingFormat::SonyXAVCIntraHD200, "SonyXAVCIntraHD200"},
      {VideoCodingFormat::SonyXAVCIntraHD50, "SonyXAVCIntraHD50"},
      {VideoCodingFormat::SonyXDCAMEX, "SonyXDCAMEX"},
      {VideoCodingFormat::SonyXDCAMHD, "SonyXDCAMHD"},
      {VideoCodingFormat::TIFF, "TIFF"},
      {VideoCodingFormat::TGA, "TGA"},
      {VideoCodingFormat::VC1, "VC1"},
      {VideoCodingFormat::VP8, "VP8"},
      {VideoCodingFormat::VP9, "VP9"},
  };
  return texts;
}

}  // namespace

std::string ToString(VideoCodingFormat value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, VideoCodingFormat& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
