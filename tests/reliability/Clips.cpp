#include "reliability/Clips.h"

#include "Oru/BusinessEntityModel/BaseTypes/GenericMetadataProfile.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"
#include "Oru/TimePoints/Core/Builders/TimeCodeBuilder.h"

#include "support/AssetReading.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace Oru::Reliability {

using namespace DataModel::MediaAssets;
using namespace BusinessEntityModel::BaseTypes;

namespace {

void Describe(MetadataProfileDictionary& metadata, const std::string& text, int profiles, int entries) {
  for (int i = 0; i < profiles; ++i) {
    const auto profile =
        std::make_shared<GenericMetadataProfile>(FullyQualifiedName("p" + std::to_string(i)));
    for (int j = 0; j < entries; ++j)
      profile->Set("entry " + std::to_string(j), text);
    metadata.Set(profile);
  }
}

void Bound(TimeBoundsArray& bounds, int version, int count) {
  for (int i = 0; i < count; ++i) {
    const auto at = [&](int64_t nanoseconds) {
      return TimePoints::TimeBoundary(TimePoints::TimePoint::FromNanoseconds(nanoseconds + version), i == 1);
    };
    bounds.Insert(TimePoints::TimeBounds(at(1000 * i), at(1000 * i + 500)));
  }
}

std::shared_ptr<Stream> MakeStream(const std::string& id, const std::string& text, int version) {
  auto stream = std::make_shared<Stream>(StreamId(id + "/stream"));
  Bound(stream->Timebounds(), version, 1);
  Describe(*stream->Metadata(), text, 1, 1);
  auto video = std::make_unique<VideoEssence>();
  video->FourCC(text);
  video->BitRate(version);
  stream->Essences().Add(std::move(video));
  for (int i = 0; i < 4; ++i) {
    auto audio = std::make_unique<AudioEssence>();
    audio->FourCC(text);
    audio->ChannelCount(version);
    stream->Essences().Add(std::move(audio));
  }
  auto data = std::make_unique<DataEssence>();
  data->ChannelCount(version);
  stream->Essences().Add(std::move(data));
  return stream;
}

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
  MediaAsset clip{MediaAssetId(id)};
  clip.Name(std::to_string(version));
  clip.Description(text);
  clip.CreationDate(version);
  Bound(clip.PhysicalTimebounds(), version, 2);
  Describe(clip.Metadata(), text, 2, 4);
  const auto profile = std::make_shared<DapOperatorMetadataProfile>();
  profile->UmId(text);
  profile->ServerId(ZuServerId(10));
  profile->UserTimecode(
      TimePoints::TimeCodeBuilder().ClockTime(10, 0, 0, 0).Date(2020, 1, 1).Rate({50, 1}).Build());
  profile->TodTimecode(profile->UserTimecode().AddSample(version));
  profile->Keywords({text, text, text});
  clip.Metadata().Set(profile);
  for (int i = 0; i < 2; ++i) {
    clip.Annotations().push_back(std::make_shared<Annotation>(AnnotationType::CuePoint, text));
    Describe(clip.Annotations().back()->Metadata(), text, 1, 1);
  }
  const auto stream = MakeStream(id, text, version);
  const auto resource = std::make_shared<MediaResource>(MediaResourceId(id + "/resource"));
  resource->Name(text);
  Bound(resource->Timebounds(), version, 1);
  Describe(*resource->Metadata(), text, 1, 1);
  resource->Streams().emplace_back(stream);
  clip.MediaResources().Insert(SharedReference<MediaResource>(resource));
  for (int i = 0; i < 3; ++i) {
    const auto track = std::make_shared<Track>(TrackId(id + "/track" + std::to_string(i)), Utf8String(text));
    for (int essence = i; essence < (i == 1 ? 4 : i + 1); ++essence) {
      auto channel = std::make_shared<TrackChannelToRemove>();
      channel->Stream(StreamReference(stream));
      channel->EssenceNr(essence);
      track->Channels().push_back(std::move(channel));
    }
    clip.Tracks().Insert(track);
  }
  return clip;
}

AnglesMediaAssetGroup MakeGroup(const std::string& id, int version, const std::vector<std::string>& clips) {
  AnglesMediaAssetGroup group(MediaAssetGroupId(id), Utf8String("v" + std::to_string(version)));
  for (const std::string& clip : clips) {
    group.Items().push_back(std::make_shared<AnglesMediaAssetGroupItem>(
        Utf8String("v" + std::to_string(version)), MediaAssetReference(MediaAssetId(clip))));
  }
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
