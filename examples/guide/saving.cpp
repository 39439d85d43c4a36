// Opens a file, and saves a clip with all that a recorder knows of it.
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Database/DataModelDatabase.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include <ctime>
#include <iostream>
#include <memory>
#include <utility>

namespace Assets = Oru::DataModel::MediaAssets;
namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
using namespace Oru::TimePoints;
using Assets::Database::DataModelDatabase;
using Oru::Common::Databases::Sqlite::SavepointGuard;
using Oru::Common::Databases::Sqlite::TransactionGuard;

namespace {

Assets::MediaAsset RecordedClip() {
  Assets::MediaAsset clip("clip-1");
  clip.Name("Opening night");
  clip.AssetType(Assets::AssetType::media);
  clip.CreationDate(std::time(nullptr));

  const TimePoint start = TimePoint::FromSampleNumber(VideoRates::Rate25(), 0);
  const TimePoint end = start + Duration::FromSeconds(90);
  clip.PhysicalTimebounds().Insert(TimeBounds(start, end));
  clip.InBoundary(start + Duration::FromSeconds(10));

  auto stream = std::make_unique<Assets::Stream>("clip-1.mxf");
  stream->Format(Assets::WrapperFormat::MXFOP1a);
  Assets::VideoEssence video;
  video.Width(1920);
  video.Height(1080);
  stream->Essences().Add(std::move(video));
  auto resource = std::make_shared<Assets::MediaResource>("recording-1");
  resource->Adopt(std::move(stream));
  clip.MediaResources().Insert(resource);

  auto weather = std::make_shared<BaseTypes::GenericMetadataProfile>("acme.weather");
  weather->Set("sky", "clear");
  clip.Metadata().Set(weather);
  return clip;
}

}  // namespace

int main() {
  DataModelDatabase database("file:saving.db?_journal_mode=wal&_synchronous=normal", nullptr);
  database.Open();

  Assets::MediaAsset clip = RecordedClip();
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
