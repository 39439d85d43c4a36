#include "Oru/DataModel/MediaAssets/Database/DapOperatorKeywordsTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"

#include <string>

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::KeywordEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Utf8String;

const std::string DapOperatorKeywordsTable::tableName = "DapOperatorKeywords";
const std::array<std::string, 3> DapOperatorKeywordsTable::columnNames = {"refDapOperatorMetadata", "nr",
                                                                          "keyword"};

DapOperatorKeywordsTable::DapOperatorKeywordsTable(Sqlite::DatabaseSqlite& db) : KeylessTable(db) {
  GenerateStatementsWithoutUpdate();
  SetOwnerColumn(columnNames[Column::RefDapOperatorMetadata]);
}

DapOperatorKeywordsTable::~DapOperatorKeywordsTable() = default;

bool DapOperatorKeywordsTable::Write(std::vector<Utf8String>& keywords, int64_t fk) {
  int32_t place = 0;
  return Sqlite::WriteEach(keywords, [&](const Utf8String& keyword) {
    KeywordEncapsulated row(fk, place++, keyword);
    return Save(row);
  });
}

bool DapOperatorKeywordsTable::DeleteOnKey(int64_t fk) {
  return DeleteOwned(fk);
}

bool DapOperatorKeywordsTable::BindToCursor(Cursor& cursor, KeywordEncapsulated& obj) {
  if (obj.nr < 0 || static_cast<unsigned int>(obj.nr) > DapOperatorMetadataProfile::MaxKeywordIndex) {
    AttachedDatabase().LogFailure("no profile could hold a keyword at " + std::to_string(obj.nr));
    return false;
  }
  return cursor.Bind(columnNames[Column::RefDapOperatorMetadata], obj.fk) &&
         cursor.Bind(columnNames[Column::Nr], obj.nr) && cursor.Bind(columnNames[Column::Keyword], obj.value);
}

void DapOperatorKeywordsTable::ReadFromCursor(const Cursor& cursor, KeywordEncapsulated& obj, bool) {
  obj.fk = cursor.GetInt64(columnNames[Column::RefDapOperatorMetadata]);
  obj.nr = cursor.GetInt32(columnNames[Column::Nr]);
  obj.value = cursor.GetString(columnNames[Column::Keyword]);
}

}  // namespace Oru::DataModel::MediaAssets::Database
