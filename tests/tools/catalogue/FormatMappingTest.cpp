#include "FormatMapping.h"

#include "support/Prelude.h"
#include "support/StoredHash.h"

namespace Catalogue {
namespace {

using Oru::DataModel::MediaAssets::AspectRatio;

// Files that were added keep what their formats meant, each with each further word. A failure prints the meanings.
TEST(FormatMappingTest, FormatsMeanWhatTheyMeant) {
  std::ostringstream meanings;
  for (const char* format : {"MXF", "MPEG-4", "Wave", "AIFF", "AVI", "BDAV", "DASH MPD", "DCP", "DVD Video",
                             "HLS", "ISM", "MPEG-PS", "MPEG-TS", "R3D", "WebM", "Windows Media", "OGG"}) {
    for (const std::string word : {"", "OP-1a", "OP-1a|Sony|XDCAM", "OP-1b", "OP-Atom", "OP-Atom|Panasonic",
                                   "QuickTime", "mp42", "AS-11 UKDPP", "bext"}) {
      MediaReport report;
      report.format = format;
      report.hasBroadcastExtension = word == "bext";
      (word == "mp42" ? report.compatibleBrands : report.formatProfile) = word;
      meanings << format << ' ' << word << ": " << ToString(WrapperFormatOf(report)) << '\n';
    }
  }
  for (const char* format :
       {"AVC",           "Bitmap", "DPX",    "DV",  "HEVC", "JPEG",  "JPEG 2000", "MPEG Video",
        "MPEG-4 Visual", "PNG",    "ProRes", "R3D", "RGB",  "RLE",   "TGA",       "TIFF",
        "VC-1",          "VC-3",   "VP8",    "VP9", "YUV",  "Theora"}) {
    for (const std::string word : {"",          "AVC-Intra 100", "AVC-Intra 50", "AVC-LongG",   "DVCPRO HD",
                                   "DVCPRO 50", "DVCPRO",        "dv5p",         "rle ",        "IMX 30",
                                   "IMX 40",    "IMX 50",        "XDCAM EX 35",  "XDCAM HD422", "Version 1",
                                   "Version 2", "4444 XQ",       "4444",         "422 HQ",      "422 LT",
                                   "422 Proxy", "422",           "HD@HQX",       "HD@HQ",       "HD@SQ",
                                   "moving"}) {
      VideoReport video;
      video.format = format;
      if (word == "moving") video.frameRate = {25, 1};
      (word == "dv5p" || word == "rle " ? video.codecId : video.commercialName) = word;
      meanings << format << ' ' << word << ": " << ToString(VideoCodecOf(video)) << '\n';
    }
  }
  EXPECT_EQ(Oru::TestSupport::StoredHash(meanings.str()), 7835762004215351635U) << meanings.str();
}

TEST(FormatMappingTest, CallsABareElementaryStreamRaw) {
  MediaReport report;
  report.format = "MPEG Audio";
  report.audio.resize(1);
  report.audio[0].format = "MPEG Audio";
  EXPECT_EQ(ToString(WrapperFormatOf(report)), "RAW");
  report.video.resize(1);
  EXPECT_EQ(ToString(WrapperFormatOf(report)), "unknown");
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
