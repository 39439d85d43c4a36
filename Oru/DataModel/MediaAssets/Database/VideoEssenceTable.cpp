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
  SetOwnerColumn(EssenceTable::columnNames[EssenceTable::Column::RefStream]);
}

VideoEssenceTable::~VideoEssenceTable() = default;

bool VideoEssenceTable::BindToCursor(Cursor& cursor, EssenceEncapsulated& obj) {
  const auto& video = static_cast<const VideoEssence&>(obj.essence);
  return EssenceKindTable::BindToCursor(cursor, obj) &&
         cursor.Bind(columnNames[Column::VideoCodec], static_cast<int32_t>(video.VideoCodec())) &&
         cursor.Bind(columnNames[Column::BitRate], video.BitRate()) &&
         cursor.Bind(columnNames[Column::BitRateMode], static_cast<int32_t>(video.BitRateMode())) &&
         cursor.Bind(columnNames[Column::BitDepth], video.BitDepth()) &&
         BindRate(cursor, columnNames[Column::FrameRateNum], columnNames[Column::FrameRateDen],
                  video.FrameRate()) &&
         cursor.Bind(columnNames[Column::Height], video.Height()) &&
         cursor.Bind(columnNames[Column::Width], video.Width()) &&
         cursor.Bind(columnNames[Column::ChromaSubSampling],
                     static_cast<int32_t>(video.ChromaSubSampling())) &&
         cursor.Bind(columnNames[Column::ColorSpace], static_cast<int32_t>(video.ColorSpace())) &&
         cursor.Bind(columnNames[Column::ScanMode], static_cast<int32_t>(video.ScanMode())) &&
         cursor.Bind(columnNames[Column::FourCC], video.FourCC()) &&
         cursor.Bind(columnNames[Column::AspectRatioWidthFactor], video.AspectRatio().WidthFactor()) &&
         cursor.Bind(columnNames[Column::AspectRatioHeightFactor], video.AspectRatio().HeightFactor()) &&
         cursor.Bind(columnNames[Column::Boxing], static_cast<int32_t>(video.Boxing()));
}

void VideoEssenceTable::ReadFromCursor(const Cursor& cursor, PersistentObject& obj, bool lazy) {
  EssenceKindTable::ReadFromCursor(cursor, obj, lazy);
  auto& video = static_cast<VideoEssence&>(obj);
  video.VideoCodec(static_cast<VideoCodingFormat>(cursor.GetInt32(columnNames[Column::VideoCodec])));
  video.BitRate(cursor.GetInt32(columnNames[Column::BitRate]));
  video.BitRateMode(static_cast<BitRateMode>(cursor.GetInt32(columnNames[Column::BitRateMode])));
  video.BitDepth(cursor.GetInt32(columnNames[Column::BitDepth]));
  video.FrameRate(ReadRate(cursor, columnNames[Column::FrameRateNum], columnNames[Column::FrameRateDen]));
  video.Height(cursor.GetInt32(columnNames[Column::Height]));
  video.Width(cursor.GetInt32(columnNames[Column::Width]));
  video.ChromaSubSampling(
      static_cast<ChromaSubSampling>(cursor.GetInt32(columnNames[Column::ChromaSubSampling])));
  video.ColorSpace(static_cast<ColorSpace>(cursor.GetInt32(columnNames[Column::ColorSpace])));
  video.ScanMode(static_cast<ScanMode>(cursor.GetInt32(columnNames[Column::ScanMode])));
  video.FourCC(cursor.GetString(columnNames[Column::FourCC]));
  const int32_t widthFactor = cursor.GetInt32(columnNames[Column::AspectRatioWidthFactor]);
  const int32_t heightFactor = cursor.GetInt32(columnNames[Column::AspectRatioHeightFactor]);
  video.AspectRatio(AspectRatio(widthFactor, heightFactor));
  video.Boxing(static_cast<Boxing>(cursor.GetInt32(columnNames[Column::Boxing])));
}

}  // namespace Oru::DataModel::MediaAssets::Database
