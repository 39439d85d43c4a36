#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include <iostream>

int main() {
  using namespace Oru::DataModel::MediaAssets;
  Database::DataModelDatabase database("clips.db", nullptr);
  database.Open();

  Database::MediaAssetRepository clips(database);
  MediaAsset clip("clip-1");
  clip.Name("Opening night");
  clips.Put(clip);

  const auto found = clips.Find("clip-1");
  std::cout << found->Id() << ": " << found->Name() << '\n';
}
