#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <iostream>

int main() {
  using namespace Oru::DataModel::MediaAssets;
  Database::DataModelDatabase database("clips.db", nullptr);
  database.Open();

  MediaAsset clip("clip-1");
  clip.Name("Opening night");
  if (!database.GetMediaAssetTable().Save(clip)) return 1;

  MediaAsset found;
  if (!database.GetMediaAssetTable().GetObject(clip.ObjectId(), found)) return 1;
  std::cout << found.Id() << ": " << found.Name() << '\n';
}
