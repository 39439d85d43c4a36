// Saves through the tables, with transactions around.
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"

#include <iostream>

namespace Assets = Oru::DataModel::MediaAssets;
using Assets::Database::DataModelDatabase;
using Oru::Common::Databases::Sqlite::SavepointGuard;
using Oru::Common::Databases::Sqlite::TransactionGuard;

int main() {
  DataModelDatabase database("file:saving.db?_journal_mode=wal&_synchronous=normal", nullptr);
  database.Open();

  Assets::MediaAsset clip("clip-1");
  clip.Name("Opening night");
  TransactionGuard transaction(database);
  if (!database.GetMediaAssetTable().Save(clip)) return 1;
  transaction.Commit();
  std::cout << "stored: " << (clip.ObjectId() != -1) << '\n';

  TransactionGuard again(database);
  clip.Description("Second take");
  if (!database.GetMediaAssetTable().Save(clip)) return 1;

  Assets::MediaAsset same("clip-1");
  same.Name("Opening night, cut");
  if (!database.GetMediaAssetTable().Save(same)) return 1;
  std::cout << "the same row: " << (same.ObjectId() == clip.ObjectId()) << '\n';
  again.Commit();

  {
    TransactionGuard undone(database);
    Assets::MediaAsset other("clip-2");
    if (!database.GetMediaAssetTable().Save(other)) return 1;
  }
  std::cout << "clip-2 after a rollback: "
            << database.GetMediaAssetTable().GetObjectIdFromIdentifier("clip-2") << '\n';

  TransactionGuard batch(database);
  for (const char* id : {"clip-3", "clip-4"}) {
    SavepointGuard part(database);
    Assets::MediaAsset taken(id);
    if (!database.GetMediaAssetTable().Save(taken)) return 1;
    if (taken.Id() == Assets::MediaAssetId("clip-3")) part.Commit();
  }
  batch.Commit();
  std::cout << "clip-4 after its savepoint: "
            << database.GetMediaAssetTable().GetObjectIdFromIdentifier("clip-4") << '\n';
}
