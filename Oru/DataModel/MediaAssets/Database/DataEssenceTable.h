#pragma once

#include "Oru/DataModel/MediaAssets/Database/EssenceKindTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"

#include <array>
#include <cstddef>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// Marks essences as data; they have nothing beyond what all kinds have.
class ORU_DATAMODEL_DATABASE_EXPORT DataEssenceTable : public EssenceKindTable<DataEssenceTable> {
 public:
  /// @param essenceTable  the table of all kinds, which must outlive this one
  explicit DataEssenceTable(EssenceTable& essenceTable);
  ~DataEssenceTable() override;

  using EssenceKindTable::ReadFromCursor;

  static const std::string tableName;
  struct Column {
    enum : std::size_t { RefEssence };
  };
  static const std::array<std::string, 1> columnNames;
  /// The join that a read selects from.
  static const std::string fromClause;
};

}  // namespace Oru::DataModel::MediaAssets::Database
