#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <chrono>
#include <thread>

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

void DataModelDatabase::Create() {
  properties.Create();
  RunScript(createStatements);
  RunScript(indexStatements);
  RunScript(populateStatements);
  RunScript(lookupIndexStatements);
}

void DataModelDatabase::RunScript(const std::string& script) {
  ExecuteStatement(script);
}

}  // namespace Oru::DataModel::MediaAssets::Database
