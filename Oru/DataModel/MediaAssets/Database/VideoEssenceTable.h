#pragma once

#include "Oru/DataModel/MediaAssets/Database/EssenceKindTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <array>
#include <cstddef>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// The video part of essences.
class ORU_DATAMODEL_DATABASE_EXPORT VideoEssenceTable : public EssenceKindTable<VideoEssenceTable> {
 public:
  /// @param essenceTable  the table of all kinds, which must outlive this one
  explicit VideoEssenceTable(EssenceTable& essenceTable);
  ~VideoEssenceTable() override;

  using EssenceKindTable::ReadFromCursor;

  bool BindToCursor(Common::Databases::Cursor& cursor, EssenceEncapsulated& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor,
                      BusinessEntityModel::BaseTypes::PersistentObject& obj, bool lazy) override;

  static const std::string tableName;
  struct Column {
    enum : std::size_t {
      RefEssence,
      VideoCodec,
      BitRate,
      BitRateMode,
      BitDepth,
      FrameRateNum,
      FrameRateDen,
      Height,
      Width,
      ChromaSubSampling,
      ColorSpace,
      ScanMode,
      FourCC,
      AspectRatioWidthFactor,
      AspectRatioHeightFactor,
      Boxing
    };
  };
  static const std::array<std::string, 16> columnNames;
  /// The join that a read selects from.
  static const std::string fromClause;
};

}  // namespace Oru::DataModel::MediaAssets::Database
