// Reads clips back: one by its key, some by a query, and what hangs under them.
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <iostream>
#include <memory>

namespace Assets = Oru::DataModel::MediaAssets;
using Assets::Database::DataModelDatabase;
using Assets::Database::MediaAssetTable;
using Oru::Common::Databases::Sqlite::ReadGuard;
using Oru::Common::Databases::Sqlite::TransactionGuard;

namespace {

bool SaveSomeClips(DataModelDatabase& database) {
  TransactionGuard transaction(database);
  for (const char* id : {"clip-1", "clip-2", "clip-3"}) {
    Assets::MediaAsset clip(id);
    clip.Name(std::string("Take ") + id[5]);
    auto resource = std::make_shared<Assets::MediaResource>(std::string("resource of ") + id);
    resource->Adopt(std::make_unique<Assets::Stream>(std::string("stream of ") + id));
    clip.MediaResources().Insert(resource);
    if (!database.GetMediaAssetTable().Save(clip)) return false;
  }
  transaction.Commit();
  return true;
}

bool ReadDeep(DataModelDatabase& database) {
  MediaAssetTable& clips = database.GetMediaAssetTable();
  const ReadGuard reading(database);
  Assets::MediaAsset clip;
  if (!clips.GetObject(clips.GetObjectIdFromIdentifier("clip-2"), clip)) return false;
  clips.ReadTimebounds(clip);
  clips.ReadMetadata(clip);
  clips.ReadDapOperatorMetadata(clip);
  clips.ReadAnnotations(clip);
  clips.ReadMediaResources(clip);
  clips.ReadTrack(clip);

  for (auto& resource : clip.MediaResources()) {
    std::cout << resource.Id() << " has " << resource->Streams().size() << " stream\n";
  }
  return true;
}

bool ReadLazily(MediaAssetTable& clips) {
  Assets::MediaAsset clip;
  if (!clips.GetObject(clips.GetObjectIdFromIdentifier("clip-2"), clip)) return false;
  clips.ReadMediaResourcesLazy(clip);
  const auto& resource = *clip.MediaResources().begin();
  std::cout << resource.Id() << ", loaded: " << static_cast<bool>(resource) << '\n';
  return true;
}

void Find(DataModelDatabase& database) {
  const auto query = database.NewQuery();
  query->BeginWith("MediaAsset.name", "take").OrderByDesc("MediaAsset.name").Limit(2, 0);
  const auto cursor = database.GetMediaAssetTable().OpenObjectCursor(*query);
  std::cout << "of " << cursor->GetTotalItemsCount() << ":";
  for (Assets::MediaAsset clip; cursor->Next(clip);) {
    std::cout << ' ' << clip.Id();
  }
  std::cout << '\n';
}

}  // namespace

int main() {
  DataModelDatabase database(":memory:", nullptr);
  database.Open();
  if (!SaveSomeClips(database)) return 1;
  if (!ReadDeep(database)) return 1;
  if (!ReadLazily(database.GetMediaAssetTable())) return 1;
  Find(database);
}
