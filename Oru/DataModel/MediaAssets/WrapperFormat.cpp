#include "Oru/DataModel/MediaAssets/WrapperFormat.h"

#include "Oru/DataModel/MediaAssets/EnumerationText.h"

namespace Oru::DataModel::MediaAssets {

namespace {

const EnumerationText<WrapperFormat>& Texts() {
  static const EnumerationText<WrapperFormat> texts{
      {WrapperFormat::unknown, "unknown"},
      {WrapperFormat::AIFF, "AIFF"},
      {WrapperFormat::ASF, "ASF"},
      {WrapperFormat::AVI, "AVI"},
      {WrapperFormat::BDAVMPEGTS, "BDAVMPEGTS"},
      {WrapperFormat::BWAVE, "BWAVE"},
      {WrapperFormat::DCP, "DCP"},
      {WrapperFormat::ORUMPEGMultistream, "ORUMPEGMultistream"},
      {WrapperFormat::ORUMXF, "ORUMXF"},
      {WrapperFormat::ORUZU, "ORUZU"},
      {WrapperFormat::HLS, "HLS"},
      {WrapperFormat::ISO_BMFF, "ISO_BMFF"},
      {WrapperFormat::MP4, "MP4"},
      {WrapperFormat::MPEGDASH, "MPEGDASH"},
      {WrapperFormat::MPEGPS, "MPEGPS"},
      {WrapperFormat::MPEGTS, "MPEGTS"},
      {WrapperFormat::MXFOP1a, "MXFOP1a"},
      {WrapperFormat::MXFOP1a_AFN100, "MXFOP1a_AFN100"},
      {WrapperFormat::MXFOP1a_ARDZDFHDF, "MXFOP1a_ARDZDFHDF"},
      {WrapperFormat::MXFOP1a_AS11UKDPP, "MXFOP1a_AS11UKDPP"},
      {WrapperFormat::MXFOP1a_SonyXAVC, "MXFOP1a_SonyXAVC"},
      {WrapperFormat::MXFOP1a_SonyXDCAMSxS, "MXFOP1a_SonyXDCAMSxS"},
      {WrapperFormat::MXFOP1a_SonyXDCAM, "MXFOP1a_SonyXDCAM"},
      {WrapperFormat::MXFOP1b, "MXFOP1b"},
      {WrapperFormat::MXFOPAtom_Avid, "MXFOPAtom_Avid"},
      {WrapperFormat::MXFOPAtom_P2, "MXFOPAtom_P2"},
      {WrapperFormat::QuickTime, "QuickTime"},
      {WrapperFormat::QuickTimeRef, "QuickTimeRef"},
      {WrapperFormat::RAW, "RAW"},
      {WrapperFormat::R3D, "R3D"},
      {WrapperFormat::SmoothStreaming, "SmoothStreaming"},
      {WrapperFormat::VOB, "VOB"},
      {WrapperFormat::WAVE, "WAVE"},
      {WrapperFormat::WebM, "WebM"},
      {WrapperFormat::KvContentTrack, "KvContentTrack"},
      {WrapperFormat::MPEGDASH_Index, "MPEGDASH_Index"},
  };
  return texts;
}

}  // namespace

std::string ToString(WrapperFormat value) {
  return Texts().ToString(value);
}

bool TryParse(const std::string& text, WrapperFormat& value) {
  return Texts().TryParse(text, value);
}

}  // namespace Oru::DataModel::MediaAssets
