#include "reliability/Clips.h"

namespace Oru::Reliability {

namespace {

// What statements give on a connection of SQLite alone, a value a line, and SQLite's text when one fails.
std::string Values(const std::string& path, const std::string& statements) {
  sqlite3* opened = nullptr;
  sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle(opened, sqlite3_close);
  sqlite3_busy_timeout(opened, 5000);
  std::string values;
  const auto add = [](void* text, int count, char** row, char**) {
    for (int i = 0; i < count; ++i)
      static_cast<std::string*>(text)->append(row[i] ? row[i] : "NULL").append("\n");
    return 0;
  };
  const bool isDone = sqlite3_exec(opened, statements.c_str(), add, &values, nullptr) == SQLITE_OK;
  return isDone ? values : values + sqlite3_errmsg(opened);
}

}  // namespace

MediaAsset MakeClip(const std::string& id, int version) {
  MediaAsset clip = TestSupport::MakeClip(id, "v" + std::to_string(version));
  clip.CreationDate(version);
  clip.PhysicalTimebounds().Insert(TestSupport::BoundsOf(1000, 2000 + version));
  Stream& stream = *clip.MediaResources().Front()->Streams().front();
  stream.Timebounds().Insert(TestSupport::BoundsOf(1000, 2000 + version));
  for (const auto& essence : stream.Essences())
    essence->ChannelCount(version);
  const auto track = std::make_shared<Track>(TrackId(id + "/track of data"), clip.Name());
  track->Channels().push_back(TestSupport::Channel(stream.Id().Value(), 2, 0));
  clip.Tracks().Insert(track);
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
  const auto stored = MediaAssetRepository(database).Find(MediaAssetId(id));
  if (!stored) return 0;
  const int version = std::atoi(stored->Name().c_str() + 1);
  return *stored == MakeClip(id, version) ? version : -1;
}

std::string Faults(const std::string& path) {
  const std::string faults =
      Values(path,
             "PRAGMA integrity_check; PRAGMA foreign_key_check;"
             "INSERT INTO MediaAssetFts(MediaAssetFts, rank) VALUES('integrity-check', 1)");
  return faults == "ok\n" ? "" : faults;
}

std::string Dump(const std::string& path) {
  const std::string selects = Values(
      path,
      "SELECT 'SELECT ''' || name || ''', * FROM \"' || name || '\" ORDER BY rowid;' FROM sqlite_schema"
      " WHERE type = 'table' AND name NOT LIKE '%Fts%' ORDER BY name");
  return Values(path, "SELECT type, name, sql FROM sqlite_schema ORDER BY type, name;" + selects);
}

bool HasSideFiles(const std::string& path) {
  return std::filesystem::exists(path + "-journal") || std::filesystem::exists(path + "-wal") ||
         std::filesystem::exists(path + "-shm");
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
