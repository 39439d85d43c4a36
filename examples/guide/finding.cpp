// Finds clips: conditions, an order, page by page, and a walk over all that was found.
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace Assets = Oru::DataModel::MediaAssets;
using namespace Assets::Database;

namespace {

void PutClips(MediaAssetRepository& clips) {
  std::vector<Assets::MediaAsset> batch;
  for (int i = 1; i <= 5; ++i) {
    Assets::MediaAsset& clip = batch.emplace_back("clip-" + std::to_string(i));
    clip.Name(i == 3 ? "Interview" : "Goal in the final, take " + std::to_string(i));
    clip.CreationDate(1'700'000'000 + i);
    auto profile = std::make_shared<Assets::DapOperatorMetadataProfile>();
    profile->ServerId(Assets::ZuServerId(i < 5 ? 110 : 120));
    profile->Keyword(0, i % 2 == 0 ? "replay" : "live");
    profile->UserProtected(i == 1);
    clip.Metadata().Set(profile);
  }
  clips.PutAll(batch);
}

void Show(const MediaAssetPage& page) {
  for (const Assets::MediaAsset& clip : page.assets)
    std::cout << clip.Id() << ' ';
  std::cout << "of " << page.total << '\n';
}

void ShowPages(MediaAssetRepository& clips) {
  MediaAssetSearch search;
  search.Typed("goal fin").OnServer(Assets::ZuServerId(110));
  search.OrderBy(MediaAssetOrder::CreationDate, Direction::Descending).Limit(2);
  MediaAssetPage page = clips.Find(search);
  Show(page);

  search.After(page.assets.back());
  page = clips.Find(search);
  Show(page);
}

void TagReplays(MediaAssetRepository& clips) {
  const auto replays = MediaAssetSearch().Keyword("Replay");
  for (Assets::MediaAsset& clip : clips.Each(replays, MediaAssetParts::Operator)) {
    clip.DapOperatorMetadata().Rating(3);
    clips.Put(clip);
  }
  std::cout << clips.Count(replays) << " replays are rated\n";
}

void RemoveOldest(MediaAssetRepository& clips) {
  const auto oldest = MediaAssetSearch().OrderBy(MediaAssetOrder::CreationDate).Limit(3);
  std::cout << "removed: " << clips.RemoveAll(oldest) << '\n';
}

}  // namespace

int main() {
  DataModelDatabase database("finding.db", nullptr);
  database.Open();
  MediaAssetRepository clips(database);
  PutClips(clips);
  ShowPages(clips);
  TagReplays(clips);
  RemoveOldest(clips);
}
