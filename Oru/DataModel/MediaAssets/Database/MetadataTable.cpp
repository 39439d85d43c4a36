#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include <memory>

ORU_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::Database::MetadataRow,
                    Oru::DataModel::MediaAssets::Database::MetadataEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using namespace BusinessEntityModel::BaseTypes;

const std::array<std::string, 4> MetadataTable::columnNames = {"foreignKey", "fullyQualifiedName", "name",
                                                               "value"};
const std::string MetadataTable::emptyString;

MetadataTable::MetadataTable(const std::string& name, Sqlite::DatabaseSqlite& db)
    : KeylessTable(db), tableName(name) {
  GenerateStatementsWithoutUpdate();
  SetOwnerColumn(columnNames[Column::ForeignKey]);
}

MetadataTable::~MetadataTable() = default;

bool MetadataTable::Write(MetadataProfileDictionary& metadataDictionary, int64_t fk) {
  return Write(metadataDictionary, fk, Sqlite::OwnerRow::Stored);
}

bool MetadataTable::Write(MetadataProfileDictionary& metadataDictionary, int64_t fk, Sqlite::OwnerRow owner) {
  static const FullyQualifiedName operatorName = DapOperatorMetadataProfile::StaticFullyQualifiedName();
  return DeleteOwned(fk, owner) && metadataDictionary.Iterate([&](MetadataProfile& profile) {
    if (profile.FullyQualifiedName() == operatorName) return true;
    return WriteEntries(dynamic_cast<GenericMetadataProfile&>(profile), fk);
  });
}

bool MetadataTable::Write(GenericMetadataProfile& metadata, int64_t fk) {
  return DeleteOnKey(fk) && WriteEntries(metadata, fk);
}

bool MetadataTable::WriteEntries(const GenericMetadataProfile& profile, int64_t fk) {
  const FullyQualifiedName name = profile.FullyQualifiedName();
  return Sqlite::WriteEach(profile.Entries(), [&](const auto& entry) {
    MetadataEncapsulated row(fk, name, entry.first, entry.second);
    return Save(row);
  });
}

bool MetadataTable::DeleteOnKey(int64_t key) {
  return DeleteOwned(key);
}

void MetadataTable::Read(int64_t fk, MetadataProfileDictionary& metadataDictionary) {
  ForEachOwned(fk, [&](const MetadataRow& row) { Fold(metadataDictionary, row); });
}

void MetadataTable::Fold(MetadataProfileDictionary& metadataDictionary, const MetadataRow& row) {
  const FullyQualifiedName name(row.first);
  if (!metadataDictionary.Contains(name)) {
    metadataDictionary.Set(std::make_shared<GenericMetadataProfile>(name));
  }
  dynamic_cast<GenericMetadataProfile&>(metadataDictionary.At(name)).Set(row.second.first, row.second.second);
}

bool MetadataTable::BindToCursor(Cursor& cursor, MetadataEncapsulated& obj) {
  return cursor.Bind(columnNames[Column::ForeignKey], obj.fk) &&
         cursor.Bind(columnNames[Column::FullyQualifiedName], obj.fullyQualifiedName.Value()) &&
         cursor.Bind(columnNames[Column::Name], obj.key) &&
         cursor.Bind(columnNames[Column::Value], obj.value);
}

void MetadataTable::ReadFromCursor(const Cursor& cursor, MetadataRow& obj, bool) {
  obj.first = cursor.GetString(columnNames[Column::FullyQualifiedName]);
  obj.second.first = cursor.GetString(columnNames[Column::Name]);
  obj.second.second = cursor.GetString(columnNames[Column::Value]);
}

}  // namespace Oru::DataModel::MediaAssets::Database
