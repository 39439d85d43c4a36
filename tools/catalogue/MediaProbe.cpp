#include "MediaProbe.h"

#include <MediaInfo/MediaInfo.h>

#include <ZenLib/Ztring.h>
#include <cmath>
#include <cstdlib>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace Catalogue {
namespace {

using MediaInfoLib::stream_t;

/// One stream of an opened file, asked by the names of MediaInfo's fields.
class StreamFields {
 public:
  StreamFields(MediaInfoLib::MediaInfo& info, stream_t kind, size_t number)
      : mInfo(info), mKind(kind), mNumber(number) {}

  std::string Text(const char* field) const {
    return ZenLib::Ztring(mInfo.Get(mKind, mNumber, ZenLib::Ztring().From_UTF8(field))).To_UTF8();
  }

  /// The number that the field begins with, 0 for none: a field can list several ("8 / 6").
  double Real(const char* field) const { return std::strtod(Text(field).c_str(), nullptr); }
  int64_t Number(const char* field) const { return std::llround(Real(field)); }
  bool Flag(const char* field) const { return Text(field) == "Yes"; }

 private:
  MediaInfoLib::MediaInfo& mInfo;
  stream_t mKind;
  size_t mNumber;
};

Fraction FrameRate(const StreamFields& stream) {
  const Fraction exact{stream.Number("FrameRate_Num"), stream.Number("FrameRate_Den")};
  if (exact) return exact;
  const int64_t thousandths = std::llround(stream.Real("FrameRate") * 1000);
  if (thousandths % 1000 == 0) return {thousandths / 1000, 1};
  return {thousandths, 1000};
}

void ReadCoding(const StreamFields& stream, CodingReport& coding) {
  coding.format = stream.Text("Format");
  coding.formatVersion = stream.Text("Format_Version");
  coding.formatProfile = stream.Text("Format_Profile");
  coding.codecId = stream.Text("CodecID");
  coding.bitRate = stream.Number("BitRate");
  coding.bitRateMode = stream.Text("BitRate_Mode");
  coding.bitDepth = stream.Number("BitDepth");
}

VideoReport ReadVideo(const StreamFields& stream) {
  VideoReport video;
  ReadCoding(stream, video);
  video.commercialName = stream.Text("Format_Commercial_IfAny");
  video.frameRate = FrameRate(stream);
  video.frameCount = stream.Number("FrameCount");
  video.width = stream.Number("Width");
  video.height = stream.Number("Height");
  video.displayAspectRatio = stream.Text("DisplayAspectRatio/String");
  video.chromaSubsampling = stream.Text("ChromaSubsampling");
  video.colorSpace = stream.Text("ColorSpace");
  video.matrix = stream.Text("matrix_coefficients");
  video.primaries = stream.Text("colour_primaries");
  video.scanType = stream.Text("ScanType");
  return video;
}

AudioReport ReadAudio(const StreamFields& stream) {
  AudioReport audio;
  ReadCoding(stream, audio);
  audio.sampleRate = stream.Number("SamplingRate");
  audio.sampleCount = stream.Number("SamplingCount");
  audio.channels = stream.Number("Channel(s)");
  return audio;
}

std::optional<StartTimeCode> ReadTimeCode(const StreamFields& stream, const char* sourceField,
                                          Fraction fallbackRate) {
  StartTimeCode timeCode;
  timeCode.text = stream.Text("TimeCode_FirstFrame");
  if (timeCode.text.empty()) return std::nullopt;
  timeCode.frameRate = FrameRate(stream);
  if (!timeCode.frameRate) timeCode.frameRate = fallbackRate;
  timeCode.isDrop = stream.Flag("TimeCode_DropFrame") || timeCode.text.find(';') != std::string::npos;
  timeCode.source = stream.Text(sourceField);
  return timeCode;
}

void ReadWrapper(const StreamFields& general, MediaReport& report) {
  report.format = general.Text("Format");
  report.formatVersion = general.Text("Format_Version");
  report.formatProfile = general.Text("Format_Profile");
  report.commercialName = general.Text("Format_Commercial_IfAny");
  report.compatibleBrands = general.Text("CodecID_Compatible");
  report.company = general.Text("Encoded_Application_CompanyName");
  report.application = general.Text("Encoded_Application/String");
  report.hasBroadcastExtension = general.Flag("bext_Present");
  report.durationSeconds = general.Real("Duration") / 1000;
}

void ReadStreams(MediaInfoLib::MediaInfo& info, MediaReport& report) {
  const auto count = [&info](stream_t kind) { return info.Count_Get(kind); };

  for (size_t n = 0; n < count(MediaInfoLib::Stream_Video); ++n) {
    report.video.push_back(ReadVideo({info, MediaInfoLib::Stream_Video, n}));
  }
  for (size_t n = 0; n < count(MediaInfoLib::Stream_Image); ++n) {
    VideoReport still = ReadVideo({info, MediaInfoLib::Stream_Image, n});
    // A picture's stream names how the pixels are packed, the file what kind of picture it is.
    if (!report.format.empty()) still.format = report.format;
    report.video.push_back(std::move(still));
  }
  for (size_t n = 0; n < count(MediaInfoLib::Stream_Audio); ++n) {
    const StreamFields stream{info, MediaInfoLib::Stream_Audio, n};
    report.audio.push_back(ReadAudio(stream));
    if (report.hasBroadcastExtension && !report.timeReferenceMicroseconds) {
      report.timeReferenceMicroseconds = std::llround(stream.Real("Delay") * 1000);
    }
  }

  const Fraction videoRate = report.video.empty() ? Fraction{} : report.video.front().frameRate;
  for (size_t n = 0; n < count(MediaInfoLib::Stream_Other); ++n) {
    const StreamFields stream{info, MediaInfoLib::Stream_Other, n};
    // An MXF file states its time code twice; that of the material package has no track of its own.
    if (stream.Text("TimeCode_Settings") != "Material Package") {
      report.data.push_back({stream.Text("Type"), stream.Text("Format")});
    }
    if (!report.startTimeCode) report.startTimeCode = ReadTimeCode(stream, "Format", videoRate);
  }
  for (size_t n = 0; n < count(MediaInfoLib::Stream_Text); ++n) {
    const StreamFields stream{info, MediaInfoLib::Stream_Text, n};
    report.data.push_back({"Text", stream.Text("Format")});
  }
  if (!report.startTimeCode && !report.video.empty()) {
    report.startTimeCode = ReadTimeCode({info, MediaInfoLib::Stream_Video, 0}, "TimeCode_Source", videoRate);
  }
}

std::time_t ModificationTime(const std::filesystem::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_mtime : 0;
}

}  // namespace

MediaReport ProbeMedia(const std::filesystem::path& path) {
  MediaReport report;
  std::error_code error;
  report.path = std::filesystem::canonical(path, error);
  if (error) throw NotMedia(error.message());
  if (!std::filesystem::is_regular_file(report.path)) throw NotMedia("not a file");
  report.fileSize = std::filesystem::file_size(report.path);
  report.modified = ModificationTime(report.path);

  MediaInfoLib::MediaInfo info;
  // One file is one clip: without these, files that are numbered in a row or lie in the folder
  // layout of a camera card are read as one.
  info.Option(__T("File_TestContinuousFileNames"), __T("0"));
  info.Option(__T("File_TestDirectory"), __T("0"));
  if (info.Open(ZenLib::Ztring().From_Local(report.path.c_str())) == 0) throw NotMedia("can't be read");

  ReadWrapper({info, MediaInfoLib::Stream_General, 0}, report);
  ReadStreams(info, report);
  if (report.video.empty() && report.audio.empty()) {
    throw NotMedia("no picture and no sound in it" +
                   (report.format.empty() ? std::string() : " (" + report.format + ")"));
  }
  return report;
}

}  // namespace Catalogue
