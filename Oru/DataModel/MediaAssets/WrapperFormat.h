#pragma once

#include "Oru/DataModel/MediaAssets/Export.h"

#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets {

/// The file or transport format that wraps the essences of a stream. The numbers are stored in files and
/// never change; a number without a name can come out of a file and is carried as it is.
enum class WrapperFormat : int32_t {
  unknown = 0,
  AIFF = 1,
  ASF = 2,
  AVI = 3,
  BDAVMPEGTS = 4,
  BWAVE = 5,
  DCP = 6,
  ORUMPEGMultistream = 7,
  ORUMXF = 8,
  ORUZU = 9,
  HLS = 10,
  ISO_BMFF = 11,
  MP4 = 12,
  MPEGDASH = 13,
  MPEGPS = 14,
  MPEGTS = 15,
  MXFOP1a = 16,
  MXFOP1a_AFN100 = 17,
  MXFOP1a_ARDZDFHDF = 18,
  MXFOP1a_AS11UKDPP = 19,
  MXFOP1a_SonyXAVC = 20,
  MXFOP1a_SonyXDCAMSxS = 21,
  MXFOP1a_SonyXDCAM = 22,
  MXFOP1b = 23,
  MXFOPAtom_Avid = 24,
  MXFOPAtom_P2 = 25,
  QuickTime = 26,
  QuickTimeRef = 27,
  RAW = 28,
  R3D = 29,
  SmoothStreaming = 30,
  VOB = 31,
  WAVE = 32,
  WebM = 33,
  KvContentTrack = 34,
  MPEGDASH_Index = 35,
};

/// The name of the value, or its number in decimal when it has none.
ORU_DATAMODEL_EXPORT std::string ToString(WrapperFormat value);

/// Reads what `ToString` writes, also the number of a value that has a name. On false `value` stays.
ORU_DATAMODEL_EXPORT bool TryParse(const std::string& text, WrapperFormat& value);

}  // namespace Oru::DataModel::MediaAssets
