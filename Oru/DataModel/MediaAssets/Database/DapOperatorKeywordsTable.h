#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Utf8String.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/KeywordEncapsulated.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// The keywords of clips, in the operator's order.
class ORU_DATAMODEL_DATABASE_EXPORT DapOperatorKeywordsTable
    : public Common::Databases::Sqlite::KeylessTable<DapOperatorKeywordsTable, KeywordEncapsulated,
                                                     KeywordEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit DapOperatorKeywordsTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~DapOperatorKeywordsTable() override;

  using KeylessTable::ReadFromCursor;

  /// Stores keywords of a clip, empty ones included, by their places. Stored keywords aren't deleted first
  /// and block new ones: see `DeleteOnKey`.
  /// @return false, with a log entry, at the first keyword that is refused; those before it are written
  bool Write(std::vector<BusinessEntityModel::BaseTypes::Utf8String>& keywords, int64_t fk);
  /// Deletes the keywords of a clip.
  bool DeleteOnKey(int64_t fk);

  bool BindToCursor(Common::Databases::Cursor& cursor, KeywordEncapsulated& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, KeywordEncapsulated& obj, bool lazy) override;

  static const std::string tableName;
  struct Column {
    enum : std::size_t { RefDapOperatorMetadata, Nr, Keyword };
  };
  static const std::array<std::string, 3> columnNames;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::KeywordEncapsulated)
