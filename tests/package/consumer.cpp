// Saves a clip into the file that is named and reads it back, across the libraries' borders: entities,
// a derived class of profile, templates. Ends with 0 if all came back, else with the line.
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <iostream>
#include <memory>

#define REQUIRE(condition)                                                \
  if (!(condition)) {                                                     \
    std::cerr << __FILE__ << ":" << __LINE__ << ": not " #condition "\n"; \
    return __LINE__;                                                      \
  }

namespace Assets = Oru::DataModel::MediaAssets;
namespace Databases = Oru::Common::Databases;
using Assets::Database::DataModelDatabase;

namespace {

int Save(const char* path) {
  DataModelDatabase database(path, nullptr);
  database.Open();
  Databases::Sqlite::TransactionGuard transaction(database);
  Assets::MediaAsset clip("clip-1");
  clip.Name("Opening night");
  auto profile = std::make_shared<Assets::DapOperatorMetadataProfile>();
  profile->ServerId(Assets::ZuServerId(110));
  profile->Keyword(0, "goal");
  clip.Metadata().Set(profile);
  REQUIRE(database.GetMediaAssetTable().Save(clip));
  REQUIRE(transaction.Commit() > 0);
  return 0;
}

int Read(const char* path) {
  DataModelDatabase database(path, nullptr);
  database.Open();
  const auto query = database.NewQuery();
  query->Equals("MediaAsset.name", "Opening night");
  const auto cursor = database.GetMediaAssetTable().OpenObjectCursor(*query);
  Assets::MediaAsset clip;
  REQUIRE(cursor->Next(clip) && clip.Id() == "clip-1" && !cursor->Next());
  database.GetMediaAssetTable().ReadDapOperatorMetadata(clip);
  REQUIRE(clip.DapOperatorMetadata().ServerId().SerialNumber() == 110);
  REQUIRE(clip.DapOperatorMetadata().Keywords().at(0) == "goal");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  REQUIRE(argc == 2);
  if (const int line = Save(argv[1])) return line;
  if (const int line = Read(argv[1])) return line;
  std::cout << "clip-1 saved and read\n";
}
