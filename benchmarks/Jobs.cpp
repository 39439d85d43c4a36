// The jobs of the table of targets, each by the library and by its rival: "save_new/library" and
// "save_new/rival". Every repetition runs one batch and gives the time of one clip.

#include "Jobs.h"

#include "Clock.h"
#include "SampleClips.h"
#include "Site.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Oru::Benchmarks {

namespace {

constexpr int ClipCount = 2000;
constexpr int GroupCount = 50;
constexpr int SequenceCount = 50;

/// Whether a catalogue's connection has ever deleted through the table. The library then notes which rows
/// lose a link, and each save bears its part of that.
enum class History { HasDeletedNothing, HasDeleted };

/// A catalogue of one side, made once and left by each job as it was found.
template <class Site, History Past = History::HasDeletedNothing>
struct Catalogue {
  Catalogue() : clips(MakeClips(0, ClipCount)) {
    auto& jobs = site.Jobs();
    jobs.Begin();
    for (MediaAsset& clip : clips)
      jobs.Save(clip);
    for (int i = 0; i < GroupCount; ++i)
      jobs.SaveGroup(groups.emplace_back(MakeGroup(i, 4 * i)));
    for (int i = 0; i < SequenceCount; ++i)
      jobs.SaveSequence(sequences.emplace_back(MakeSequence(i)));
    jobs.Commit();
    lastKey = clips.back().ObjectId();
    if (Past == History::HasDeleted) jobs.DeleteAbove(lastKey);
  }

  static Catalogue& Shared() {
    static Catalogue catalogue;
    return catalogue;
  }

  Side& Jobs() { return site.Jobs(); }
  // Deletes the clips after the catalogue's own, by hand on either side: that isn't measured.
  void TidyUp() {
    ExecuteByHand("DELETE FROM MediaAsset WHERE key > " + std::to_string(lastKey));
    ExecuteByHand(
        "DELETE FROM MediaResource WHERE key NOT IN (SELECT refMediaResource FROM "
        "RelationMediaAssetMediaResource)");
    ExecuteByHand("DELETE FROM Track WHERE key NOT IN (SELECT refTrack FROM RelationAssetTrack)");
  }
  // Another clip at each call, all over the catalogue.
  MediaAsset& AnyClip() { return clips[Next() % clips.size()]; }
  AnglesMediaAssetGroup& AnyGroup() { return groups[Next() % groups.size()]; }
  Sequence& AnySequence() { return sequences[Next() % sequences.size()]; }

  Site site;
  std::vector<MediaAsset> clips;
  std::vector<AnglesMediaAssetGroup> groups;
  std::vector<Sequence> sequences;
  int64_t lastKey = 0;

 private:
  void ExecuteByHand(const std::string& text) { Connection::Execute(site.Handle(), text); }
  std::size_t Next() { return place += 617; }

  std::size_t place = 0;
};

/// Runs a batch `count` times as one iteration and reports the time of one: the jobs wait for nothing.
template <class Run>
void Measure(benchmark::State& state, int count, Run run) {
  const double start = ThreadSeconds();
  for (int i = 0; i < count; ++i)
    run(i);
  state.SetIterationTime((ThreadSeconds() - start) / count);
}

/// The same in one transaction, whose begin and commit count.
template <class Jobs, class Run>
void MeasureSaves(benchmark::State& state, Jobs& jobs, int count, Run run) {
  const double start = ThreadSeconds();
  jobs.Begin();
  for (int i = 0; i < count; ++i)
    run(i);
  jobs.Commit();
  state.SetIterationTime((ThreadSeconds() - start) / count);
}

template <class Site, History Past>
void SaveNewOn(benchmark::State& state) {
  constexpr int count = 100;
  auto& catalogue = Catalogue<Site, Past>::Shared();
  for (auto _ : state) {
    std::vector<MediaAsset> clips = MakeClips(ClipCount, count);
    MeasureSaves(state, catalogue.Jobs(), count,
                 [&](int i) { catalogue.Jobs().Save(clips[static_cast<std::size_t>(i)]); });
    catalogue.TidyUp();
  }
}

template <class Site>
void SaveNew(benchmark::State& state) {
  SaveNewOn<Site, History::HasDeletedNothing>(state);
}

template <class Site>
void SaveNewHavingDeleted(benchmark::State& state) {
  SaveNewOn<Site, History::HasDeleted>(state);
}

template <class Site>
void SaveAgain(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  for (auto _ : state)
    MeasureSaves(state, catalogue.Jobs(), 100, [&](int) { catalogue.Jobs().Save(catalogue.AnyClip()); });
}

template <class Site>
void FindKey(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  for (auto _ : state)
    Measure(state, 4000,
            [&](int) { benchmark::DoNotOptimize(catalogue.Jobs().FindKey(catalogue.AnyClip().Id())); });
}

/// Reads an object at each call.
template <class Object, class Read>
void MeasureReads(benchmark::State& state, int count, Read read) {
  for (auto _ : state) {
    Measure(state, count, [&](int) {
      Object object;
      read(object);
      benchmark::DoNotOptimize(object);
    });
  }
}

template <class Site>
void GetAsset(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  MeasureReads<MediaAsset>(state, 1000, [&](MediaAsset& asset) {
    catalogue.Jobs().GetAsset(catalogue.AnyClip().ObjectId(), asset);
  });
}

template <class Site>
void ReadDeep(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  MeasureReads<MediaAsset>(state, 200, [&](MediaAsset& asset) {
    catalogue.Jobs().ReadDeep(catalogue.AnyClip().ObjectId(), asset);
  });
}

template <class Site>
void ReadLazy(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  MeasureReads<MediaAsset>(state, 400, [&](MediaAsset& asset) {
    catalogue.Jobs().ReadLazy(catalogue.AnyClip().ObjectId(), asset);
  });
}

/// Two walks over all assets, and the time of a row.
template <class Walk>
void MeasureWalk(benchmark::State& state, Walk walk) {
  for (auto _ : state) {
    const double start = ThreadSeconds();
    const int rows = walk() + walk();
    if (rows != 2 * ClipCount) throw std::logic_error("the catalogue has changed");
    state.SetIterationTime((ThreadSeconds() - start) / rows);
  }
}

template <class Site>
void WalkRow(benchmark::State& state) {
  auto& jobs = Catalogue<Site>::Shared().Jobs();
  MeasureWalk(state, [&] { return jobs.Walk(); });
}

template <class Site>
void WalkPlainRow(benchmark::State& state) {
  auto& jobs = Catalogue<Site>::Shared().Jobs();
  MeasureWalk(state, [&] { return jobs.WalkPlain(); });
}

template <class Site>
void Search(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  for (auto _ : state)
    Measure(state, 20, [&](int) {
      if (catalogue.Jobs().Search("take 19", 50).size() != 50)
        throw std::logic_error("the search finds too little");
    });
}

// Another word at each call, the number that one clip is called by.
template <class Site>
void Match(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  for (auto _ : state)
    Measure(state, 400, [&](int) {
      if (catalogue.Jobs().Match(LastWord(catalogue.AnyClip().Name()), 50).empty())
        throw std::logic_error("the full-text index finds nothing");
    });
}

template <class Site>
void MatchNames(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  for (auto _ : state)
    Measure(state, 400, [&](int) {
      if (catalogue.Jobs().MatchNames(LastWord(catalogue.AnyClip().Name()), 50).empty())
        throw std::logic_error("the full-text index finds nothing");
    });
}

template <class Site>
void DeleteOne(benchmark::State& state) {
  constexpr int count = 10;
  auto& catalogue = Catalogue<Site, History::HasDeleted>::Shared();
  auto& jobs = catalogue.Jobs();
  for (auto _ : state) {
    std::vector<MediaAsset> clips = MakeClips(ClipCount, count);
    jobs.Begin();
    for (MediaAsset& clip : clips)
      jobs.Save(clip);
    jobs.Commit();
    Measure(state, count, [&](int i) { jobs.Delete(clips[static_cast<std::size_t>(i)]); });
  }
}

template <class Site>
void SaveGroup(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  for (auto _ : state)
    MeasureSaves(state, catalogue.Jobs(), 200,
                 [&](int) { catalogue.Jobs().SaveGroup(catalogue.AnyGroup()); });
}

template <class Site>
void ReadGroup(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  MeasureReads<AnglesMediaAssetGroup>(state, 200, [&](AnglesMediaAssetGroup& group) {
    catalogue.Jobs().ReadGroup(catalogue.AnyGroup().Id(), group);
  });
}

template <class Site>
void SaveSequence(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  for (auto _ : state)
    MeasureSaves(state, catalogue.Jobs(), 200,
                 [&](int) { catalogue.Jobs().SaveSequence(catalogue.AnySequence()); });
}

template <class Site>
void ReadSequence(benchmark::State& state) {
  auto& catalogue = Catalogue<Site>::Shared();
  MeasureReads<Sequence>(state, 500, [&](Sequence& sequence) {
    catalogue.Jobs().ReadSequence(catalogue.AnySequence().Id(), sequence);
  });
}

using Job = void (*)(benchmark::State&);

void Register(const std::string& name, Job library, Job rival) {
  for (const auto& [side, job] : {std::pair("/library", library), std::pair("/rival", rival)}) {
    benchmark::RegisterBenchmark((name + side).c_str(), job)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMicrosecond);
  }
}

}  // namespace

void RegisterJobs() {
  Register("save_new", SaveNew<LibrarySite>, SaveNew<RivalSite>);
  Register("save_having_deleted", SaveNewHavingDeleted<LibrarySite>, SaveNewHavingDeleted<RivalSite>);
  Register("save_again", SaveAgain<LibrarySite>, SaveAgain<RivalSite>);
  Register("find_key", FindKey<LibrarySite>, FindKey<RivalSite>);
  Register("get_object", GetAsset<LibrarySite>, GetAsset<RivalSite>);
  Register("read_deep", ReadDeep<LibrarySite>, ReadDeep<RivalSite>);
  Register("read_lazy", ReadLazy<LibrarySite>, ReadLazy<RivalSite>);
  Register("walk_row", WalkRow<LibrarySite>, WalkRow<RivalSite>);
  Register("walk_plain", WalkPlainRow<LibrarySite>, WalkPlainRow<RivalSite>);
  Register("search", Search<LibrarySite>, Search<RivalSite>);
  Register("match", Match<LibrarySite>, Match<RivalSite>);
  Register("match_raw", MatchNames<LibrarySite>, MatchNames<RivalSite>);
  Register("delete_one", DeleteOne<LibrarySite>, DeleteOne<RivalSite>);
  Register("save_group", SaveGroup<LibrarySite>, SaveGroup<RivalSite>);
  Register("read_group", ReadGroup<LibrarySite>, ReadGroup<RivalSite>);
  Register("save_sequence", SaveSequence<LibrarySite>, SaveSequence<RivalSite>);
  Register("read_sequence", ReadSequence<LibrarySite>, ReadSequence<RivalSite>);
}

}  // namespace Oru::Benchmarks
