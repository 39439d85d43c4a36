#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/BusinessEntityModel/BaseTypes/MetadataProfileDictionary.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MetadataEncapsulated.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace Oru::DataModel::MediaAssets::Database {

/// A row of a metadata table: (name of the profile, (name of the entry, its value)).
using MetadataRow = std::pair<std::string, std::pair<std::string, std::string>>;

/// The generic metadata of one kind of owner: each kind has a stored table of its own, a row per entry. The
/// rows of an owner are always written as a whole. The operator's profile isn't among them: it has tables of
/// its own.
class ORU_DATAMODEL_DATABASE_EXPORT MetadataTable
    : public Common::Databases::Sqlite::KeylessTable<MetadataTable, MetadataRow, MetadataEncapsulated> {
 public:
  /// @param tableName  the stored table, as "MetadataMediaAsset"
  MetadataTable(const std::string& tableName, Common::Databases::Sqlite::DatabaseSqlite& database);
  ~MetadataTable() override;

  using KeylessTable::ReadFromCursor;
  using KeylessTable::Save;

  /// Replaces the metadata of an owner by the entries of all generic profiles of the dictionary. A profile
  /// without entries leaves no row.
  /// @return false, with a log entry, at the first row that is refused; the old rows are gone then, and those
  ///         before it are written
  /// @throws std::bad_cast at a profile that is neither generic nor the operator's; likewise
  bool Write(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadataDictionary, int64_t fk);
  bool Write(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadataDictionary, int64_t fk,
             Common::Databases::Sqlite::OwnerRow owner);
  /// Replaces the metadata of an owner by the entries of one profile.
  bool Write(BusinessEntityModel::BaseTypes::GenericMetadataProfile& metadata, int64_t fk);
  /// Deletes the metadata of an owner.
  bool DeleteOnKey(int64_t key);
  /// Folds the stored metadata of an owner into a dictionary.
  /// @throws std::bad_cast as `Fold`
  void Read(int64_t fk, BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadataDictionary);
  /// Sets one row's entry in a dictionary, in a new profile if there is none of the row's name.
  /// @throws std::bad_cast when the profile of that name isn't a generic one
  static void Fold(BusinessEntityModel::BaseTypes::MetadataProfileDictionary& metadataDictionary,
                   const MetadataRow& row);

  /// Inserts the entry.
  bool Save(MetadataEncapsulated& obj, bool lazy) override { return Insert(obj, lazy); }

  bool BindToCursor(Common::Databases::Cursor& cursor, MetadataEncapsulated& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, MetadataRow& obj, bool lazy) override;

  /// The name of the stored table of this object.
  const std::string tableName;
  struct Column {
    enum : std::size_t { ForeignKey, FullyQualifiedName, Name, Value };
  };
  static const std::array<std::string, 4> columnNames;
  /// The empty text.
  static const std::string emptyString;

 private:
  bool WriteEntries(const BusinessEntityModel::BaseTypes::GenericMetadataProfile& profile, int64_t fk);
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::Database::MetadataRow,
                    Oru::DataModel::MediaAssets::Database::MetadataEncapsulated)
