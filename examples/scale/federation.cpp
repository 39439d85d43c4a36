// Prints what a search over several files costs, in one federation and one file after the other.
//
//     scale_federation FOLDER CLIPS FILES...
//
// as scale_federation /tmp 100000 1 3 10. Each file has so many clips; those that aren't in the folder are made.
// The far place is the 5,000th, or the middle of a smaller file.
#include "Oru/DataModel/MediaAssets/Database/MediaAssetFederation.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Oru::DataModel::MediaAssets;
using namespace Oru::DataModel::MediaAssets::Database;

namespace {

MediaAsset MakeClip(int number) {
  MediaAsset clip{MediaAssetId("clip-" + std::to_string(number))};
  clip.Name("Camera " + std::to_string(number % 12) + ", take " + std::to_string(number));
  clip.Description(number % 100 == 0 ? "A goal from close by" : "Warming up before the match");
  clip.CreationDate(1700000000 + number * 10);
  clip.ModificationDate(clip.CreationDate() + 5);
  auto profile = std::make_shared<DapOperatorMetadataProfile>();
  profile->ServerId(ZuServerId(10 * (1 + number % 20)));
  profile->Keyword(0, number % 50 == 0 ? "replay" : "match");
  clip.Metadata().Set(profile);
  auto resource = std::make_shared<MediaResource>(MediaResourceId("recording-" + std::to_string(number)));
  auto stream = std::make_unique<Stream>(StreamId("stream-" + std::to_string(number)));
  stream->Essences().Add(std::make_unique<VideoEssence>());
  resource->Adopt(std::move(stream));
  clip.MediaResources().Insert(resource);
  return clip;
}

// The first file is filled; the others are copies of it whose clips are some seconds younger.
std::string MakeFile(const std::string& folder, int place, int clips) {
  const auto path = [&](int number) {
    return folder + "/clips-" + std::to_string(clips) + "-" + std::to_string(number) + ".db";
  };
  if (std::filesystem::exists(path(place))) return path(place);
  if (place > 0) std::filesystem::copy_file(path(0), path(place));
  DataModelDatabase database("file:" + path(place) + "?_synchronous=off", nullptr);
  database.Open();
  if (place > 0) {
    const std::string seconds = std::to_string(place);
    database.ExecuteStatement("UPDATE MediaAsset SET creationDate = creationDate + " + seconds +
                              ", modificationDate = modificationDate + " + seconds);
    return path(place);
  }
  MediaAssetRepository repository(database);
  constexpr int block = 10000;
  for (int first = 0; first < clips; first += block) {
    std::vector<MediaAsset> assets;
    for (int i = first; i < std::min(clips, first + block); ++i)
      assets.push_back(MakeClip(i));
    if (!repository.PutAll(assets).empty()) throw std::runtime_error("a clip was refused");
  }
  return path(0);
}

template <class Job>
double Median(Job job) {
  std::vector<double> times;
  for (int round = 0; round < 21; ++round) {
    const auto start = std::chrono::steady_clock::now();
    job();
    times.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  std::nth_element(times.begin(), times.begin() + 10, times.end());
  return times[10];
}

struct Job {
  const char* name;
  MediaAssetSearch search;
  MediaAssetParts parts;
};

void Measure(const std::vector<std::string>& paths, int clips) {
  MediaAssetFederation federation(paths, std::chrono::seconds(60));
  std::vector<std::unique_ptr<DataModelDatabase>> databases;
  std::vector<std::unique_ptr<MediaAssetRepository>> repositories;
  for (const std::string& path : paths) {
    databases.push_back(std::make_unique<DataModelDatabase>(path, nullptr));
    databases.back()->Open();
    repositories.push_back(std::make_unique<MediaAssetRepository>(*databases.back()));
  }
  const auto newest = MediaAssetSearch().OrderBy(MediaAssetOrder::CreationDate, Direction::Descending);
  const int far = std::min(5000, clips / 2);
  const Job jobs[] = {
      {"list, newest first", MediaAssetSearch(newest).Limit(50), MediaAssetParts::Row},
      {"whole clips, newest first", MediaAssetSearch(newest).Limit(50), MediaAssetParts::All},
      {"list by keyword", MediaAssetSearch(newest).Keyword("replay").Limit(50), MediaAssetParts::Row},
      {"list by what was typed", MediaAssetSearch().Typed("goal close").Limit(50), MediaAssetParts::Row},
      {"list by a part of the name", MediaAssetSearch(newest).NameContains("ake 99").Limit(50),
       MediaAssetParts::Row},
      {"list from a far place", MediaAssetSearch(newest).Limit(50, far), MediaAssetParts::Row},
  };
  const auto print = [&](const char* name, double together, double inTurn) {
    std::cout << paths.size() << " files, " << name << ": at once " << together << " ms, one after the other "
              << inTurn << " ms\n";
  };
  for (const Job& job : jobs) {
    const double together = Median([&] {
      if (!federation.Find(job.search, job.parts).silent.empty())
        throw std::runtime_error("a file is silent");
    });
    const double inTurn = Median([&] {
      for (const auto& repository : repositories)
        repository->Find(job.search, job.parts);
    });
    print(job.name, together, inTurn);
  }
  const FederatedPage before = federation.Find(MediaAssetSearch(newest).Limit(1, far - 1));
  const MediaAssetSearch page = MediaAssetSearch(newest).Limit(50);
  std::cout << paths.size() << " files, list after the clip before that place: at once "
            << Median([&] { federation.FindAfter(before.assets.at(0), page); }) << " ms\n";
}

}  // namespace

int main(int argc, char** argv) {
  DataModelDatabase::TuneForThreads();
  if (argc < 4) return 2;
  try {
    for (int i = 3; i < argc; ++i) {
      std::vector<std::string> paths;
      for (int place = 0; place < std::stoi(argv[i]); ++place)
        paths.push_back(MakeFile(argv[1], place, std::stoi(argv[2])));
      Measure(paths, std::stoi(argv[2]));
    }
  } catch (const std::exception& failure) {
    std::cout << failure.what() << '\n';
    return 1;
  }
}
