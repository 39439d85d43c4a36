#include "reliability/Clips.h"

#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"

#include "support/AssetReading.h"
#include "support/ClipBuilder.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace Oru::Reliability {

using namespace DataModel::MediaAssets;
using namespace BusinessEntityModel::BaseTypes;

namespace {

// The rows of one statement, a line each; SQLite's text when it fails.
std::string Rows(sqlite3* handle, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
    return sqlite3_errmsg(handle) + std::string("\n");
  std::string text;
  int code = SQLITE_OK;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
      const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
      text += std::string(value ? value : "NULL") + '|';
    }
    text += '\n';
  }
  if (code != SQLITE_DONE) text += sqlite3_errmsg(handle) + std::string("\n");
  sqlite3_finalize(statement);
  return text;
}

std::unique_ptr<sqlite3, int (*)(sqlite3*)> OpenPlain(const std::string& path) {
  sqlite3* handle = nullptr;
  sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  sqlite3_busy_timeout(handle, 5000);
  return {handle, sqlite3_close};
}

}  // namespace

MediaAsset MakeClip(const std::string& id, int version) {
  const std::string text = "v" + std::to_string(version);
  MediaAsset clip = TestSupport::MakeClip(id, text);
  clip.Name(std::to_string(version));
  clip.Description(text);
  clip.CreationDate(version);
  clip.PhysicalTimebounds().Insert(TestSupport::BoundsOf(1000, 2000 + version));
  clip.DapOperatorMetadata().UmId(text);
  clip.DapOperatorMetadata().Keywords({text, text, text});
  clip.Annotations().push_back(std::make_shared<Annotation>(AnnotationType::CuePoint, text));
  Stream& stream = *clip.MediaResources().Front()->Streams().front();
  stream.Timebounds().Insert(TestSupport::BoundsOf(1000, 2000 + version));
  for (int i = 0; i < 3; ++i)
    stream.Essences().Add(std::make_unique<AudioEssence>());
  for (const auto& essence : stream.Essences())
    essence->ChannelCount(version);
  for (const int32_t essence : {0, 5}) {
    const auto track =
        std::make_shared<Track>(TrackId(id + "/track of " + std::to_string(essence)), Utf8String(text));
    track->Channels().push_back(TestSupport::Channel(stream.Id().Value(), essence, 0));
    clip.Tracks().Insert(track);
  }
  return clip;
}

AnglesMediaAssetGroup MakeGroup(const std::string& id, int version, const std::vector<std::string>& clips) {
  AnglesMediaAssetGroup group = TestSupport::MakeGroup(id, clips, "v" + std::to_string(version));
  const auto profile = std::make_shared<AnglesDapOperatorMetadataProfile>();
  profile->ServerId(ZuServerId(10 * version));
  group.Metadata().Set(profile);
  return group;
}

int StoredVersion(DataModelDatabase& database, const std::string& id) {
  const int64_t key = database.GetMediaAssetTable().GetObjectIdFromIdentifier(MediaAssetId(id));
  if (key == -1) return 0;
  const MediaAsset stored = TestSupport::ReadDeep(database, key);
  const int version = std::atoi(stored.Name().c_str());
  return stored == MakeClip(id, version) ? version : -1;
}

std::string Faults(const std::string& path) {
  const auto handle = OpenPlain(path);
  std::string faults = Rows(handle.get(), "PRAGMA integrity_check");
  if (faults == "ok|\n") faults.clear();
  faults += Rows(handle.get(), "PRAGMA foreign_key_check");
  faults += Rows(handle.get(), "INSERT INTO MediaAssetFts(MediaAssetFts, rank) VALUES('integrity-check', 1)");
  return faults;
}

std::string Dump(const std::string& path) {
  const auto handle = OpenPlain(path);
  std::string dump;
  const std::string tables =
      Rows(handle.get(),
           "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE '%Fts%' ORDER BY 1");
  for (std::size_t begin = 0, end = 0; (end = tables.find("|\n", begin)) != std::string::npos;
       begin = end + 2) {
    const std::string name = tables.substr(begin, end - begin);
    dump += name + "\n" + Rows(handle.get(), "SELECT * FROM \"" + name + "\" ORDER BY rowid");
  }
  return dump;
}

bool HasSideFiles(const std::string& path) {
  for (const char* suffix : {"-journal", "-wal", "-shm"}) {
    if (std::filesystem::exists(path + suffix)) return true;
  }
  return false;
}

void Restore(const std::string& path, const std::string& from) {
  for (const char* suffix : {"", "-journal", "-wal", "-shm"})
    std::filesystem::remove(path + suffix);
  if (!from.empty()) std::filesystem::copy_file(from, path);
}

bool IsLong() {
  const char* wish = std::getenv("ORU_RELIABILITY");
  return wish && std::string(wish) == "long";
}

}  // namespace Oru::Reliability
