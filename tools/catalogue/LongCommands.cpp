#include "LongCommands.h"

#include "AssetBuilder.h"
#include "ClipWatch.h"
#include "Interruption.h"
#include "Listing.h"
#include "ParallelProbe.h"
#include "Progress.h"
#include "TextForms.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <future>
#include <iostream>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Catalogue {

namespace {

using namespace std::chrono_literals;

constexpr int kilobyte = 1000;

}  // namespace

int LongCommands::Add(const std::vector<std::string>& names, unsigned jobs) {
  const std::vector<MediaFile> files = FindMediaFiles(names);
  const auto total = static_cast<int64_t>(files.size());
  Progress progress(mConsole, "Reading", "files");
  ParallelProbe probe(files, jobs);
  bool isAllDone = true, isInterrupted = false;
  int64_t done = 0, noMedia = 0;
  std::vector<ClipStore::MediaAsset> batch;
  auto lastStored = std::chrono::steady_clock::now();
  const auto store = [&] {
    progress.Clear();
    if (!AddClips(batch)) isAllDone = false;
    batch.clear();
    lastStored = std::chrono::steady_clock::now();
  };
  while (!isInterrupted) {
    const auto result = probe.Next();
    if (!result) break;
    if (result->report) {
      batch.push_back(BuildAsset(*result->report, std::time(nullptr)));
    } else if (result->file.isNamed) {
      progress.Clear();
      mConsole.errors << Printable(result->file.path.string()) << ": skipped, " << result->reason << '\n';
      isAllDone = false;
    } else {
      ++noMedia;
    }
    constexpr size_t clipsInTransaction = 200;
    if (batch.size() >= clipsInTransaction || std::chrono::steady_clock::now() > lastStored + 1s) store();
    isInterrupted = !progress.Show(++done, total);
  }
  store();
  if (noMedia > 0) mConsole.errors << "files in folders that are no media: " << noMedia << '\n';
  if (!isInterrupted) return isAllDone ? 0 : 1;
  mConsole.errors << "interrupted after " << done << " of " << total << " files\n";
  return interrupted;
}

bool LongCommands::AddClips(std::vector<ClipStore::MediaAsset>& clips) {
  const ClipStore::Added added = mStore.Add(clips);
  for (size_t n = 0; n < clips.size(); ++n) {
    if (added.outcomes[n] == ClipStore::Outcome::Refused) continue;
    const char* event = added.outcomes[n] == ClipStore::Outcome::Added ? "added" : "updated";
    WriteEvent(mConsole, event, clips[n].Id().Value(), clips[n].Name());
  }
  for (const auto& refused : added.refused)
    mConsole.errors << Printable(refused.reason) << '\n';
  return added.refused.empty();
}

int LongCommands::Backup(const std::string& file) {
  Progress progress(mConsole, "Copying", "pages");
  const bool isWhole = mStore.Database().Backup(file, [&](int32_t remaining, int32_t total) {
    return progress.Show(int64_t{total} - remaining, total);
  });
  progress.Clear();
  if (!isWhole) {
    mConsole.errors << "interrupted, there is no copy\n";
    return interrupted;
  }
  mConsole.out << "copied to " << file << '\n';
  return 0;
}

int LongCommands::Check() {
  Progress progress(mConsole, "Checking", "s");
  auto check = std::async(std::launch::async, [this] { return mStore.Database().CheckIntegrity(); });
  const auto begin = std::chrono::steady_clock::now();
  while (check.wait_for(100ms) != std::future_status::ready) {
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - begin);
    if (progress.Show(seconds.count(), -1)) continue;
    progress.Clear();
    mConsole.errors << "interrupted" << std::endl;
    // Again, as it ends one statement, and a check is several.
    do
      mStore.Database().Interrupt();
    while (check.wait_for(20ms) != std::future_status::ready);
    return interrupted;
  }
  progress.Clear();
  const std::vector<std::string> findings = check.get();
  if (mConsole.form == Console::Form::JsonText) {
    Json list = Json::array();
    for (const std::string& finding : findings)
      list.push_back(ToJson(finding));
    mConsole.out << Json{{"findings", std::move(list)}}.dump() << '\n';
  } else {
    for (const std::string& finding : findings)
      mConsole.out << Printable(finding) << '\n';
    if (findings.empty()) mConsole.out << "no damage found\n";
  }
  return findings.empty() ? 0 : 1;
}

int LongCommands::ExportTo(const std::string& file) {
  Progress progress(mConsole, "Exporting", "clips");
  const auto show = [&progress](int64_t done, int64_t total) { return progress.Show(done, total); };
  if (file == "-") return Export(mStore, mConsole.out, show) ? 0 : interrupted;
  const std::string part = file + ".part";
  std::ofstream lines(part, std::ios::binary);
  const bool isWhole = Export(mStore, lines, show);
  lines.close();
  progress.Clear();
  if (!lines || !isWhole) std::filesystem::remove(part);
  if (!lines) throw std::runtime_error(part + " can't be written");
  if (!isWhole) {
    mConsole.errors << "interrupted, there is no export\n";
    return interrupted;
  }
  std::filesystem::rename(part, file);
  mConsole.out << "exported to " << file << '\n';
  return 0;
}

int LongCommands::ImportFrom(const std::string& file, Known known, UnknownFields unknown) {
  std::ifstream opened;
  if (file != "-") opened.open(file, std::ios::binary);
  if (!opened) throw std::runtime_error(file + " can't be read");
  Progress progress(mConsole, "Importing", "kB");
  const ImportResult result = Import(
      mStore, file == "-" ? std::cin : opened, known, unknown, [&progress](int64_t done, int64_t total) {
        return progress.Show(done / kilobyte, total < 0 ? total : total / kilobyte);
      });
  progress.Clear();
  for (const ImportResult::Refused& refused : result.refused)
    mConsole.errors << "line " << refused.line << ": left out, " << Printable(refused.reason) << '\n';
  mConsole.out << "imported " << result.stored << ", kept " << result.kept << ", left out "
               << result.refused.size() << '\n';
  if (result.isComplete) return result.refused.empty() ? 0 : 1;
  mConsole.errors << "interrupted before the end of the file\n";
  return interrupted;
}

int LongCommands::Watch(double interval) {
  ClipWatch watch(mStore);
  mConsole.errors << "watching " << watch.Count() << " clips, until Ctrl-C" << std::endl;
  const auto pause =
      std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::duration<double>(interval));
  auto next = std::chrono::steady_clock::now();
  while (!Interruption::IsAsked()) {
    std::this_thread::sleep_for(20ms);
    if (std::chrono::steady_clock::now() < next) continue;
    next += pause;
    for (const ClipWatch::Change& change : watch.Changes()) {
      const char* event = change.kind == ClipWatch::Change::Kind::New       ? "new"
                          : change.kind == ClipWatch::Change::Kind::Changed ? "changed"
                                                                            : "gone";
      WriteEvent(mConsole, event, change.id, change.name);
    }
  }
  return 0;
}

}  // namespace Catalogue
