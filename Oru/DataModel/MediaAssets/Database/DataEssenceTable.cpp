#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"

namespace Oru::DataModel::MediaAssets::Database {

const std::string DataEssenceTable::tableName = "DataEssence";
const std::array<std::string, 1> DataEssenceTable::columnNames = {"refEssence"};
const std::string DataEssenceTable::fromClause =
    "Essence JOIN DataEssence ON Essence.key == DataEssence.refEssence";

DataEssenceTable::DataEssenceTable(EssenceTable& table) : EssenceKindTable(table) {
  GenerateStatements();
  SetOwnerColumn(EssenceTable::columnNames[EssenceTable::Column::RefStream]);
}

DataEssenceTable::~DataEssenceTable() = default;

}  // namespace Oru::DataModel::MediaAssets::Database
