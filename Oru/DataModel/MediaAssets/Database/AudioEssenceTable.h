#pragma once

#include "Oru/DataModel/MediaAssets/Database/EssenceKindTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <array>
#include <cstddef>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// The audio part of essences. Columns are addressed by name; their order here isn't that of the stored
/// table.
class ORU_DATAMODEL_DATABASE_EXPORT AudioEssenceTable : public EssenceKindTable<AudioEssenceTable> {
 public:
  /// @param essenceTable  the table of all kinds, which must outlive this one
  explicit AudioEssenceTable(EssenceTable& essenceTable);
  ~AudioEssenceTable() override;

  using EssenceKindTable::ReadFromCursor;

  bool BindToCursor(Common::Databases::Cursor& cursor, EssenceEncapsulated& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor,
                      BusinessEntityModel::BaseTypes::PersistentObject& obj, bool lazy) override;

  static const std::string tableName;
  struct Column {
    enum : std::size_t {
      RefEssence,
      AudioCodec,
      BitRate,
      BitRateMode,
      SampleRateNum,
      SampleRateDen,
      BitDepth,
      FourCC
    };
  };
  static const std::array<std::string, 8> columnNames;
  /// The join that a read selects from.
  static const std::string fromClause;
};

}  // namespace Oru::DataModel::MediaAssets::Database
