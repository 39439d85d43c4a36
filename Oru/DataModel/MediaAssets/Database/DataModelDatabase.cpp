#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;

DataModelDatabase::DataModelDatabase(const std::string& connection, const std::shared_ptr<std::ostream>& log)
    : DatabaseSqlite(connection, log),
      mediaAssetTable(*this),
      mediaAssetGroupTable(mediaAssetTable),
      editTable(*this),
      properties("Props", *this) {
  Init();
}

DataModelDatabase::DataModelDatabase(const std::shared_ptr<std::ostream>& log)
    : DataModelDatabase(std::string(), log) {}

DataModelDatabase::~DataModelDatabase() {
  // Ahead of the tables, whose cached statements it closes.
  DatabaseSqlite::Close();
}

void DataModelDatabase::Init() {}

void DataModelDatabase::Open() {
  DatabaseSqlite::Open();
  try {
    Create();
  } catch (...) {
    Close();
    throw;
  }
}

bool DataModelDatabase::RebuildFullTextIndex() {
  return RebuildFullTextIndex("MediaAssetFts");
}

void DataModelDatabase::Create() {
  properties.Create();
  ExecuteStatement(createStatements);
  ExecuteStatement(indexStatements);
  ExecuteStatement(populateStatements);
  ExecuteStatement(lookupIndexStatements);
}

}  // namespace Oru::DataModel::MediaAssets::Database
