#include "FormatMapping.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Catalogue {
namespace {

using Oru::DataModel::MediaAssets::AspectRatio;
using Oru::DataModel::MediaAssets::VideoCodingFormat;
using Oru::DataModel::MediaAssets::WrapperFormat;

TEST(FormatMappingTest, TellsWrappersApart) {
  const struct {
    const char *format, *profile, *company, *commercialName, *brands;
    WrapperFormat expected;
  } cases[] = {
      {"MXF", "OP-1a", "FFmpeg", "XDCAM HD422", "", WrapperFormat::MXFOP1a},
      {"MXF", "OP-1a", "Sony", "XDCAM HD422", "", WrapperFormat::MXFOP1a_SonyXDCAM},
      {"MXF", "OP-1b", "", "", "", WrapperFormat::MXFOP1b},
      {"MXF", "OP-Atom", "Panasonic", "AVC-Intra 100", "", WrapperFormat::MXFOPAtom_P2},
      {"MXF", "OP-Atom", "FFmpeg", "DNxHD 120", "", WrapperFormat::MXFOPAtom_Avid},
      {"MPEG-4", "QuickTime", "", "", "qt  ", WrapperFormat::QuickTime},
      {"MPEG-4", "Base Media", "", "", "isom/iso2/avc1/mp41", WrapperFormat::MP4},
      {"MPEG-4", "Base Media", "", "", "M4A /isom/iso2", WrapperFormat::ISO_BMFF},
      {"Wave", "", "", "", "", WrapperFormat::WAVE},
      {"MPEG-TS", "", "", "", "", WrapperFormat::MPEGTS},
      {"Matroska", "", "", "", "", WrapperFormat::unknown},
  };
  MediaReport report;
  for (const auto& [format, profile, company, commercialName, brands, expected] : cases) {
    report.format = format;
    report.formatProfile = profile;
    report.company = company;
    report.commercialName = commercialName;
    report.compatibleBrands = brands;
    EXPECT_EQ(WrapperFormatOf(report), expected)
        << format << ' ' << profile << ' ' << company << ' ' << brands;
  }
  report.format = "Wave";
  report.hasBroadcastExtension = true;
  EXPECT_EQ(WrapperFormatOf(report), WrapperFormat::BWAVE);
}

TEST(FormatMappingTest, CallsABareElementaryStreamRaw) {
  MediaReport report;
  report.format = "MPEG Audio";
  report.audio.resize(1);
  report.audio[0].format = "MPEG Audio";
  EXPECT_EQ(WrapperFormatOf(report), WrapperFormat::RAW);

  report.video.resize(1);
  EXPECT_EQ(WrapperFormatOf(report), WrapperFormat::unknown);
}

TEST(FormatMappingTest, TellsVideoCodecsApart) {
  const struct {
    const char *format, *version, *profile, *commercialName, *codecId;
    VideoCodingFormat expected;
  } cases[] = {
      {"MPEG Video", "Version 1", "", "", "", VideoCodingFormat::MPEG1},
      {"MPEG Video", "Version 2", "Main@Main", "", "2", VideoCodingFormat::MPEG2},
      {"MPEG Video", "Version 2", "4:2:2@High", "XDCAM HD422", "", VideoCodingFormat::SonyXDCAMHD},
      {"MPEG Video", "Version 2", "Main@High", "XDCAM EX 35", "", VideoCodingFormat::SonyXDCAMEX},
      {"ProRes", "Version 0", "422 Proxy", "", "apco", VideoCodingFormat::AppleProRes422Proxy},
      {"ProRes", "Version 0", "422", "", "apcn", VideoCodingFormat::AppleProRes422},
      {"ProRes", "Version 0", "4444", "", "ap4h", VideoCodingFormat::AppleProRes4444},
      {"ProRes", "Version 0", "4444 XQ", "", "ap4x", VideoCodingFormat::AppleProRes4444XQ},
      {"VC-3", "Version 1", "HD@HQX", "DNxHD 185x", "AVdn", VideoCodingFormat::AvidDNxHDHigh10b},
      {"VC-3", "Version 1", "HD@HQ", "DNxHD 185", "AVdn", VideoCodingFormat::AvidDNxHDHigh},
      {"VC-3", "Version 1", "HD@SQ", "DNxHD 120", "AVdn", VideoCodingFormat::AvidDNxHDLow},
      {"VC-3", "Version 1", "RI@SQ", "DNxHR SQ", "AVdh", VideoCodingFormat::unknown},
      {"DV", "", "", "", "dvc ", VideoCodingFormat::DV25},
      {"DV", "", "", "", "dv5p", VideoCodingFormat::DVCPRO50},
      {"DV", "", "", "DVCPRO HD", "dvh5", VideoCodingFormat::DVCPROHD},
      {"AVC", "", "High@L3", "", "avc1", VideoCodingFormat::H264},
      {"AVC", "", "High 4:2:2 Intra@L4.1", "AVC-Intra 100", "", VideoCodingFormat::PanasonicAVCIntraHD100},
      {"RLE", "", "", "", "rle ", VideoCodingFormat::AppleQuickTimeRLE},
      {"Theora", "", "", "", "", VideoCodingFormat::unknown},
  };
  for (const auto& [format, version, profile, commercialName, codecId, expected] : cases) {
    VideoReport video;
    video.format = format;
    video.formatVersion = version;
    video.formatProfile = profile;
    video.commercialName = commercialName;
    video.codecId = codecId;
    EXPECT_EQ(VideoCodecOf(video), expected) << format << ' ' << profile;
  }
}

TEST(FormatMappingTest, AStillIsJpegAndMovingPicturesAreMotionJpeg) {
  VideoReport video;
  video.format = "JPEG";
  EXPECT_EQ(VideoCodecOf(video), VideoCodingFormat::JPEG);
  video.frameRate = {25, 1};
  EXPECT_EQ(VideoCodecOf(video), VideoCodingFormat::MJPEG);
}

TEST(FormatMappingTest, ReadsAspectRatiosInLowestTerms) {
  EXPECT_EQ(AspectRatioOf("16:9"), AspectRatio(16, 9));
  EXPECT_EQ(AspectRatioOf("2.35:1"), AspectRatio(47, 20));
  EXPECT_EQ(AspectRatioOf("10:8"), AspectRatio(5, 4));
  for (const char* text : {"", "1.778", "0:0", ":", "-4:3"})
    EXPECT_EQ(AspectRatioOf(text), AspectRatio()) << text;
}

}  // namespace
}  // namespace Catalogue
