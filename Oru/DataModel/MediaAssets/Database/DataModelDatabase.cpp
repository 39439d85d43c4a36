#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <string_view>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;

namespace {

const char* const StatisticsTable = "sqlite_stat1";

// The objects that a script makes, unless they are there.
std::set<std::string> ObjectsOf(const std::string& script) {
  constexpr std::string_view made = "IF NOT EXISTS ", comment = "/*", commentEnd = "*/";
  std::set<std::string> names;
  std::string_view rest = script;
  for (std::size_t at = 0; (at = rest.find(made)) != std::string_view::npos;) {
    if (const std::size_t aside = rest.find(comment); aside < at) {
      rest.remove_prefix(rest.find(commentEnd, aside));
      continue;
    }
    rest.remove_prefix(at + made.size());
    names.emplace(rest.substr(0, rest.find_first_of(" (\n")));
  }
  return names;
}

// A script without its own begin and commit.
std::string WithoutTransaction(std::string script) {
  for (const char* control : {"BEGIN TRANSACTION ", "COMMIT TRANSACTION "}) {
    const std::size_t begin = script.find(control);
    script.erase(begin, script.find(';', begin) + 1 - begin);
  }
  return script;
}

// The first column of what a select gives.
// @throws NotSupportedException, with SQLite's text and a log entry, when the file can't be read
std::vector<std::string> ReadColumn(Sqlite::DatabaseSqlite& database, const std::string& select) {
  Sqlite::CursorSqlite cursor(database, select);
  std::vector<std::string> values;
  try {
    while (cursor.Step())
      values.push_back(cursor.GetString(0));
  } catch (const std::exception&) {
    throw NotSupportedException(database.ErrorText().c_str(), __FILE__, __LINE__);
  }
  return values;
}

}  // namespace

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
  // Before the tables, whose cached statements it closes.
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
  if (IsComplete()) return;
  const bool isReadable = MissingObjects().count(properties.GetTableName()) == 0;
  if (isReadable && (IsReadOnly() || IsInReadOnlyFolder())) return;
  try {
    MakeMissing();
  } catch (const NotSupportedException&) {
    if (IsInTransaction()) ExecuteStatement("ROLLBACK");
    // The transaction stays when memory lacks for its rollback as well. What is written later would be lost in it.
    if (!isReadable || IsInTransaction()) throw;
  }
}

void DataModelDatabase::MakeMissing() {
  // Another process may be making the same just now. So the lock comes first, then what the file has is read
  // again: what IF NOT EXISTS makes a second time leaves a file that no program can read.
  RunOrThrow("BEGIN IMMEDIATE");
  RunOrThrow("PRAGMA writable_schema = RESET");
  properties.Create();
  const std::set<std::string> missing = MissingObjects();
  const auto isMissing = [&missing](const std::string& name) { return missing.count(name) > 0; };
  const std::set<std::string> indexed = ObjectsOf(indexStatements);
  const bool isIndexNew = std::any_of(indexed.begin(), indexed.end(), isMissing);
  RunPart(WithoutTransaction(createStatements));
  RunPart(WithoutTransaction(indexStatements) +
          (isIndexNew ? "INSERT INTO MediaAssetFts(MediaAssetFts) VALUES('rebuild');" : ""));
  RunPart(populateStatements);
  RunPart(lookupIndexStatements);
  if (isMissing(StatisticsTable) || !HasStatistics()) RunPart(statisticsStatements);
  RunOrThrow("COMMIT");
  // What others committed before is no news.
  HasChanged();
}

void DataModelDatabase::RunOrThrow(const std::string& statement) {
  if (!ExecuteStatement(statement)) throw NotSupportedException(ErrorText().c_str(), __FILE__, __LINE__);
}

// Runs all of some statements in the open transaction, or none: not when SQLite had to roll it back either.
void DataModelDatabase::RunPart(const std::string& statements) {
  if (!IsInTransaction() || ExecuteStatement("SAVEPOINT part;" + statements + "RELEASE part;")) return;
  if (IsInTransaction()) ExecuteStatement("ROLLBACK TO part; RELEASE part");
}

bool DataModelDatabase::IsComplete() {
  return ReadColumn(*this, "PRAGMA main.schema_version") == std::vector<std::string>{"2"} &&
         MissingObjects().empty() && HasStatistics();
}

std::set<std::string> DataModelDatabase::MissingObjects() {
  static const std::set<std::string> scripted = [] {
    std::set<std::string> names{StatisticsTable};
    for (const std::string* script : {&createStatements, &indexStatements, &lookupIndexStatements})
      names.merge(ObjectsOf(*script));
    return names;
  }();
  std::set<std::string> missing = scripted;
  missing.insert(properties.GetTableName());
  for (const std::string& name : ReadColumn(*this, "SELECT name FROM main.sqlite_schema"))
    missing.erase(name);
  return missing;
}

// Whether SQLite plans by the numbers that are meant for it, and not by those of an ANALYZE, for example.
bool DataModelDatabase::HasStatistics() {
  try {
    return ReadColumn(*this, lackingStatistics).empty();
  } catch (const NotSupportedException&) {
    return false;
  }
}

}  // namespace Oru::DataModel::MediaAssets::Database
