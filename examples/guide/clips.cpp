// Clips through their repository: put, found, changed, copied, put by the hundred, removed.
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include <ctime>
#include <iostream>
#include <memory>
#include <utility>
#include <vector>

namespace Assets = Oru::DataModel::MediaAssets;
namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
using namespace Oru::TimePoints;
using namespace Assets::Database;

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

void PutAndFind(MediaAssetRepository& clips) {
  Assets::MediaAsset clip = RecordedClip();
  clips.Put(clip);
  const auto found = clips.Find("clip-1");
  std::cout << found->Name() << ", as it was put: " << (*found == clip) << '\n';
  std::cout << "clip-9 is there: " << clips.Find("clip-9").has_value() << '\n';

  auto row = clips.Find("clip-1", MediaAssetParts::Row);
  row->Name("Opening night, cut");
  clips.Put(*row);
  std::cout << "bounds: " << clips.Find("clip-1")->PhysicalTimebounds().Size() << '\n';
}

void Describe(Assets::MediaAsset& clip) {
  clip.Description("Second take");
}

void ChangeAndCopy(MediaAssetRepository& clips) {
  clips.Change("clip-1", Describe);
  clips.Copy("clip-1", "clip-2", CopyResources::Own);
  std::cout << clips.Find("clip-2")->MediaResources().begin()->Id() << '\n';
}

void PutMany(MediaAssetRepository& clips) {
  std::vector<Assets::MediaAsset> batch;
  for (const char* id : {"clip-3", "clip-4", "clip-5"})
    batch.emplace_back(id);
  batch[1].MediaResources().Insert(BaseTypes::SharedReference<Assets::MediaResource>("no-such-recording"));
  for (const NotStored& leftOut : clips.PutAll(batch)) {
    std::cout << leftOut.reason << '\n';
  }
}

}  // namespace

int main() {
  DataModelDatabase database("file:clips.db?_journal_mode=wal&_synchronous=normal", nullptr);
  database.Open();
  MediaAssetRepository clips(database);
  PutAndFind(clips);
  ChangeAndCopy(clips);
  PutMany(clips);
  if (clips.Remove("clip-1") == RemoveOutcome::Removed) std::cout << "clip-1 is gone\n";
}
