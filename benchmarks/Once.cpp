#include "Once.h"

#include "SampleClips.h"
#include "Site.h"

#include <cstddef>
#include <stdexcept>
#include <vector>

namespace Oru::Benchmarks {

namespace {

constexpr int Stored = 500;

// Both runs of a pair make the same objects and store the same clips before what is counted.
constexpr int MostClips = 1000;

template <class Site>
void RunOn(const std::string& job, int count) {
  Site site;
  auto& jobs = site.Jobs();
  std::vector<MediaAsset> clips = MakeClips(0, Stored + MostClips);
  const auto clip = [&](int number) -> MediaAsset& { return clips[static_cast<std::size_t>(number)]; };
  jobs.Begin();
  for (int i = 0; i < Stored; ++i)
    jobs.Save(clip(i));
  for (int i = 0; i < count; ++i) {
    if (job == "save") {
      jobs.Save(clip(Stored + i));
    } else if (job == "resave") {
      jobs.Save(clip(i % Stored));
    } else if (job == "deep") {
      MediaAsset asset;
      jobs.ReadDeep(clip(i % Stored).ObjectId(), asset);
    } else if (job == "match") {
      jobs.Match(LastWord(clip(i % Stored).Name()), 50);
    } else if (job == "match_raw") {
      jobs.MatchNames(LastWord(clip(i % Stored).Name()), 50);
    } else if (job == "walk") {
      // All that are stored, each time.
      jobs.Walk();
    } else if (job == "walk_plain") {
      jobs.WalkPlain();
    } else {
      throw std::invalid_argument("no such job: " + job);
    }
  }
  jobs.Commit();
}

}  // namespace

void RunOnce(const std::string& job, const std::string& side, int clips) {
  if (clips < 0 || clips > MostClips) throw std::invalid_argument("--clips takes 0 to 1000");
  if (side == "library") {
    RunOn<LibrarySite>(job, clips);
  } else if (side == "rival") {
    RunOn<RivalSite>(job, clips);
  } else {
    throw std::invalid_argument("no such side: " + side);
  }
}

}  // namespace Oru::Benchmarks
