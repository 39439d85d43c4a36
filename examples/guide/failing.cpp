// What is thrown, what is given back as false, and what the log says.
#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <iostream>
#include <memory>
#include <sstream>

namespace Assets = Oru::DataModel::MediaAssets;
namespace Databases = Oru::Common::Databases;
using Assets::Database::DataModelDatabase;

int main() {
  DataModelDatabase misspelt("file:clips.db?_bussy_timeout=100", nullptr);
  try {
    misspelt.Open();
  } catch (const Databases::ArgumentException&) {
    std::cout << misspelt.LastFailure() << '\n';
  }

  DataModelDatabase nowhere("no/such/folder/clips.db", nullptr);
  try {
    nowhere.Open();
  } catch (const Databases::NotSupportedException&) {
    std::cout << nowhere.LastFailure() << '\n';
  }

  const auto log = std::make_shared<std::ostringstream>();
  DataModelDatabase database(":memory:", log);
  database.Open();

  const auto query = database.NewQuery();
  query->Equals("noSuchColumn", "a value");
  const auto cursor = database.GetMediaAssetTable().OpenObjectCursor(*query);
  try {
    cursor->Next();
  } catch (const Databases::ObjectClosedException&) {
    std::cout << database.LastFailure() << '\n';
  }
  std::cout << "logged: " << (log->str().find("no such column: noSuchColumn") != std::string::npos) << '\n';

  if (!database.ExecuteStatement("INSERT INTO Stream VALUES (1, 'secret-id', 99, 0)")) {
    std::cout << database.LastFailure() << '\n';
  }
}
