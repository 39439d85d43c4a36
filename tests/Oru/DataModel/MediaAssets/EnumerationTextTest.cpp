#include "Oru/DataModel/MediaAssets/EnumerationText.h"

#include "Oru/DataModel/MediaAssets/AnnotationType.h"
#include "Oru/DataModel/MediaAssets/ArchiveStatus.h"
#include "Oru/DataModel/MediaAssets/AssetType.h"
#include "Oru/DataModel/MediaAssets/AudioCodingFormat.h"
#include "Oru/DataModel/MediaAssets/BitRateMode.h"
#include "Oru/DataModel/MediaAssets/Boxing.h"
#include "Oru/DataModel/MediaAssets/ChromaSubSampling.h"
#include "Oru/DataModel/MediaAssets/ColorSpace.h"
#include "Oru/DataModel/MediaAssets/FillAndKeyType.h"
#include "Oru/DataModel/MediaAssets/Location.h"
#include "Oru/DataModel/MediaAssets/ResourceFormat.h"
#include "Oru/DataModel/MediaAssets/ScanMode.h"
#include "Oru/DataModel/MediaAssets/TimecodePrimary.h"
#include "Oru/DataModel/MediaAssets/UserTimecodeType.h"
#include "Oru/DataModel/MediaAssets/VideoCodingFormat.h"
#include "Oru/DataModel/MediaAssets/WrapperFormat.h"

#include "support/EnumerationTable.h"

#include <gtest/gtest.h>

namespace Oru::DataModel::MediaAssets {
namespace {

using TestSupport::ExpectEnumeration;

// The numbers are in stored files.
TEST(EnumerationTextTest, StoredEnumerations) {
  ExpectEnumeration<AssetType>("unknown train media");
  ExpectEnumeration<ResourceFormat>("unknown ToBeDefined");
  ExpectEnumeration<WrapperFormat>(
      "unknown AIFF ASF AVI BDAVMPEGTS BWAVE DCP ORUMPEGMultistream ORUMXF ORUZU HLS ISO_BMFF MP4 MPEGDASH "
      "MPEGPS MPEGTS MXFOP1a MXFOP1a_AFN100 MXFOP1a_ARDZDFHDF MXFOP1a_AS11UKDPP MXFOP1a_SonyXAVC "
      "MXFOP1a_SonyXDCAMSxS MXFOP1a_SonyXDCAM MXFOP1b MXFOPAtom_Avid MXFOPAtom_P2 QuickTime QuickTimeRef RAW "
      "R3D SmoothStreaming VOB WAVE WebM KvContentTrack MPEGDASH_Index");
  ExpectEnumeration<VideoCodingFormat>(
      "unknown AppleProRes422 AppleProRes422HQ AppleProRes422LT AppleProRes422Proxy AppleProRes4444 "
      "AppleProRes4444XQ AppleQuickTimeRLE AvidDNxHDLow AvidDNxHDHigh AvidDNxHDHigh10b BMP CameraRaw DPX "
      "DV25 DVCPRO DVCPRO50 DVCPROHD ORUCGTemplate ORUKM ORUMJPEG GXFillAndKey H264 H265 JPEG JPEG2000 MJPEG "
      "MPEG1 MPEG2 MPEG4 PanasonicAVCIntraHD100 PanasonicAVCIntraHD50 PanasonicAVCLongG PNG Raw REDCODERaw "
      "SGI SonyIMX30 SonyIMX40 SonyIMX50 SonyXAVCLongGOP SonyXAVCIntra4K100 SonyXAVCIntra4K300 "
      "SonyXAVCIntra4K480 SonyXAVCIntraHD100 SonyXAVCIntraHD200 SonyXAVCIntraHD50 SonyXDCAMEX SonyXDCAMHD "
      "TIFF TGA VC1 VP8 VP9");
  ExpectEnumeration<AudioCodingFormat>("unknown AAC Alaw DolbyE MP1 MP2 MP3 PCM WMA");
  ExpectEnumeration<BitRateMode>("unknown cbr vbr");
  ExpectEnumeration<ChromaSubSampling>("unknown CS_444 CS_422 CS_421 CS_411 CS_420 CS_410 CS_311");
  ExpectEnumeration<ColorSpace>("unknown BT709 BT601 BT601_JPEG BT2020 FCC SMPTE_170M SMPTE_240M SRGB");
  ExpectEnumeration<ScanMode>("unknown progressive interlaced");
  ExpectEnumeration<Boxing>(
      "unknown topaligned wide fullframe pillarbox letterbox window protect14x9 protect4x3");
  ExpectEnumeration<AnnotationType>("unknown CuePoint");
  ExpectEnumeration<ArchiveStatus>("None ToArchive Archived");
  ExpectEnumeration<UserTimecodeType>("HancVitc HancLtc AnalLtc");
  ExpectEnumeration<TimecodePrimary>("NotSet Tod User");
  ExpectEnumeration<FillAndKeyType>("unknown fill key");
}

TEST(EnumerationTextTest, KindsOfLocations) {
  ExpectEnumeration<Location::Type>("unknown file folder network");
}

}  // namespace
}  // namespace Oru::DataModel::MediaAssets
