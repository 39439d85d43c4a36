#include "Oru/DataModel/MediaAssets/Database/VideoEssenceTable.h"

#include "Oru/DataModel/MediaAssets/Database/Columns/RateColumns.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

namespace Oru::DataModel::MediaAssets::Database {

using BusinessEntityModel::BaseTypes::PersistentObject;
using Common::Databases::Cursor;

const std::string VideoEssenceTable::tableName = "VideoEssence";
const std::array<std::string, 16> VideoEssenceTable::columnNames = {"refEssence",
                                                                    "videoCodec",
                                                                    "bitRate",
                                                                    "bitRateMode",
                                                                    "bitDepth",
                                                                    "frameRateNum",
                                                                    "frameRateDen",
                                                                    "height",
                                                                    "width",
                                                                    "chromaSubSampling",
                                                                    "colorSpace",
                                                                    "scanMode",
                                                                    "fourCC",
                                                                    "aspectRatioWidthFactor",
                                                                    "aspectRatioHeightFactor",
                                                                    "boxing"};
const std::string VideoEssenceTable::fromClause =
    "Essence JOIN VideoEssence ON Essence.key == VideoEssence.refEssence";

VideoEssenceTable::VideoEssenceTable(EssenceTable& table) : EssenceKindTable(table) {
  GenerateStatements();
  OwnerStandsIn(EssenceTable::columnNames[1]);
}

VideoEssenceTable::~VideoEssenceTable() = default;

bool VideoEssenceTable::BindToCursor(Cursor& cursor, EssenceEncapsulated& obj) {
  const auto& video = static_cast<const VideoEssence&>(obj.essence);
  return EssenceKindTable::BindToCursor(cursor, obj) &&
         cursor.Bind(columnNames[1], static_cast<int32_t>(video.VideoCodec())) &&
         cursor.Bind(columnNames[2], video.BitRate()) &&
         cursor.Bind(columnNames[3], static_cast<int32_t>(video.BitRateMode())) &&
         cursor.Bind(columnNames[4], video.BitDepth()) &&
         BindRate(cursor, columnNames[5], columnNames[6], video.FrameRate()) &&
         cursor.Bind(columnNames[7], video.Height()) && cursor.Bind(columnNames[8], video.Width()) &&
         cursor.Bind(columnNames[9], static_cast<int32_t>(video.ChromaSubSampling())) &&
         cursor.Bind(columnNames[10], static_cast<int32_t>(video.ColorSpace())) &&
         cursor.Bind(columnNames[11], static_cast<int32_t>(video.ScanMode())) &&
         cursor.Bind(columnNames[12], video.FourCC()) &&
         cursor.Bind(columnNames[13], video.AspectRatio().WidthFactor()) &&
         cursor.Bind(columnNames[14], video.AspectRatio().HeightFactor()) &&
         cursor.Bind(columnNames[15], static_cast<int32_t>(video.Boxing()));
}

void VideoEssenceTable::ReadFromCursor(const Cursor& cursor, PersistentObject& obj, bool lazy) {
  EssenceKindTable::ReadFromCursor(cursor, obj, lazy);
  auto& video = static_cast<VideoEssence&>(obj);
  video.VideoCodec(static_cast<VideoCodingFormat>(cursor.GetInt32(columnNames[1])));
  video.BitRate(cursor.GetInt32(columnNames[2]));
  video.BitRateMode(static_cast<BitRateMode>(cursor.GetInt32(columnNames[3])));
  video.BitDepth(cursor.GetInt32(columnNames[4]));
  video.FrameRate(ReadRate(cursor, columnNames[5], columnNames[6]));
  video.Height(cursor.GetInt32(columnNames[7]));
  video.Width(cursor.GetInt32(columnNames[8]));
  video.ChromaSubSampling(static_cast<ChromaSubSampling>(cursor.GetInt32(columnNames[9])));
  video.ColorSpace(static_cast<ColorSpace>(cursor.GetInt32(columnNames[10])));
  video.ScanMode(static_cast<ScanMode>(cursor.GetInt32(columnNames[11])));
  video.FourCC(cursor.GetString(columnNames[12]));
  const int32_t widthFactor = cursor.GetInt32(columnNames[13]);
  const int32_t heightFactor = cursor.GetInt32(columnNames[14]);
  video.AspectRatio(AspectRatio(widthFactor, heightFactor));
  video.Boxing(static_cast<Boxing>(cursor.GetInt32(columnNames[15])));
}

}  // namespace Oru::DataModel::MediaAssets::Database
