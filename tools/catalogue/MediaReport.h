#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Catalogue {

/// A fraction as a file states it; 0/1 where it says nothing.
struct Fraction {
  int64_t numerator = 0;
  int64_t denominator = 1;

  explicit operator bool() const { return numerator > 0 && denominator > 0; }
};

/// The time code of a clip's first frame.
struct StartTimeCode {
  std::string text;    ///< hh:mm:ss:ff, with ';' before the frames when they are counted with drops
  Fraction frameRate;  ///< 0/1 if neither the time code track nor the video has one
  bool isDrop = false;
  std::string source;  ///< what carries it, for example "MXF TC"
};

/// How a track is coded. Texts stay empty and numbers 0 where the file says nothing.
struct CodingReport {
  std::string format;         ///< for example "MPEG Video"
  std::string formatVersion;  ///< for example "Version 2"
  std::string formatProfile;  ///< for example "4:2:2@High"
  std::string codecId;        ///< four characters in QuickTime and AVI, a label in MXF
  int64_t bitRate = 0;        ///< bits a second
  std::string bitRateMode;
  int64_t bitDepth = 0;
};

/// One video track, or a still picture.
struct VideoReport : CodingReport {
  std::string commercialName;
  Fraction frameRate;
  int64_t frameCount = 0;
  int64_t width = 0;
  int64_t height = 0;
  std::string displayAspectRatio;  ///< "16:9"
  std::string chromaSubsampling;   ///< "4:2:2"
  std::string colorSpace;          ///< "YUV"
  std::string matrix;
  std::string primaries;
  std::string scanType;
};

/// One sound track.
struct AudioReport : CodingReport {
  int64_t sampleRate = 0;  ///< samples a second
  int64_t sampleCount = 0;
  int64_t channels = 0;
};

/// A track that is neither picture nor sound: time code, captions, ancillary data.
struct DataReport {
  std::string kind;    ///< for example "Time code"
  std::string format;  ///< for example "QuickTime TC"
};

/// What a media file says of itself.
struct MediaReport {
  std::filesystem::path path;  ///< canonical
  uint64_t fileSize = 0;       ///< bytes
  std::time_t modified = 0;    ///< seconds since 1970

  std::string format;  ///< of the wrapper: "MXF", "MPEG-4", ...
  std::string formatVersion;
  std::string formatProfile;  ///< for example "OP-1a" or "QuickTime"
  std::string commercialName;
  std::string compatibleBrands;  ///< of an ISO base media file, for example "isom/mp41"
  std::string company;           ///< whose product wrote the file
  std::string application;       ///< which product wrote the file
  bool hasBroadcastExtension = false;
  double durationSeconds = 0;                        ///< as the wrapper states it
  std::optional<int64_t> timeReferenceMicroseconds;  ///< since midnight, of a broadcast wave

  std::optional<StartTimeCode> startTimeCode;
  std::vector<VideoReport> video;
  std::vector<AudioReport> audio;
  std::vector<DataReport> data;
};

}  // namespace Catalogue
