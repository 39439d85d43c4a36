#include "Interchange.h"

#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/ObjectCursor.h"
#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/Track.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

namespace Catalogue {

namespace {

namespace Edits = Oru::BusinessEntityModel::Edits;
namespace Sqlite = Oru::Common::Databases::Sqlite;
using namespace Oru::DataModel::MediaAssets;
using BaseTypes::Identifier;
using Database::MediaAssetSearch;
using Database::NotStoredException;
using Database::PutProgress;

constexpr char formatName[] = "oru-interchange";
constexpr int formatVersion = 1;

/// One line: the kind of the entity, and the entity.
void WriteLine(std::ostream& lines, const char* kind, Json entity) {
  lines << Json{{kind, std::move(entity)}}.dump() << '\n';
}

/// Adds the streams that tracks of a clip take from resources of others.
void AddForeignStreams(MediaAsset& clip, std::set<Identifier>& foreign) {
  std::set<Identifier> own;
  for (auto& resource : clip.MediaResources()) {
    for (const auto& stream : resource->Streams())
      own.insert(stream.Id());
  }
  for (const auto& track : clip.Tracks()) {
    for (const auto& channel : track->Channels()) {
      if (own.count(channel->Stream().Id()) == 0) foreign.insert(channel->Stream().Id());
    }
  }
}

/// The resources of these streams that no clip refers to, and so no clip's line holds.
std::map<Identifier, MediaResource> UnclaimedResources(ClipStore& store,
                                                       const std::set<Identifier>& streams) {
  auto& table = store.Database().GetMediaResourceTable();
  std::map<Identifier, MediaResource> resources;
  for (const Identifier& stream : streams) {
    const auto isStream = store.Database().NewQuery();
    isStream->Equals("id", stream.Value());
    const auto holdsStream = store.Database().NewQuery();
    holdsStream->In("key", "Stream", "refMediaResource", *isStream);
    const auto cursor = table.OpenObjectCursor(*holdsStream);
    MediaResource resource;
    if (!cursor->Next(resource)) continue;
    if (store.Clips().Count(MediaAssetSearch().UsesResource(resource.Id())) > 0) continue;
    table.ReadMetadata(resource);
    table.ReadTimebounds(resource);
    table.ReadStreams(resource);
    for (auto& held : resource.Streams()) {
      for (const auto& essence : held->Essences())
        table.GetStreamTable().GetEssenceTable().ReadMetadata(*essence);
    }
    resources.emplace(resource.Id(), std::move(resource));
  }
  return resources;
}

/// Stores lines, one after the other.
class Importer {
 public:
  Importer(ClipStore& store, Known known, UnknownFields unknown)
      : mStore(store), mKnown(known), mUnknown(unknown) {}

  /// To be called within a transaction.
  void Store(const std::string& line) {
    ++mLine;
    bool isStored = false;
    if (Attempt(mLine, [&] { isStored = StoreEntity(Json::parse(line)); })) {
      ++(isStored ? mResult.stored : mResult.kept);
    }
  }

  /// Stores the tracks that had to wait for the clips whose streams they take.
  void StoreWaitingTracks() {
    for (auto& [line, clip] : mWaiting)
      Attempt(line, [&, &waiting = clip] { mStore.Clips().Put(waiting); });
    mWaiting.clear();
  }

  void PassHeader() { ++mLine; }
  ImportResult& Result() { return mResult; }

 private:
  /// Runs an action that stores all or nothing. What is wrong with the line becomes a reason; that the catalogue's
  /// file can't be written passes on.
  template <class Action>
  bool Attempt(int64_t line, const Action& action) {
    Sqlite::SavepointGuard savepoint(mStore.Database());
    try {
      action();
      savepoint.Commit();
      return true;
    } catch (const Oru::Common::Databases::InvalidOperationException&) {
      throw;
    } catch (const std::exception& reason) {
      mResult.refused.push_back({line, reason.what()});
      return false;
    }
  }

  /// @return false where the one that is stored stays
  bool StoreEntity(const Json& json) {
    if (!json.is_object() || json.size() != 1) {
      throw std::invalid_argument("a line is an object of one clip, resource, group or edit");
    }
    const std::string kind = json.begin().key();
    const Json& entity = json.front();
    if (kind == "clip") return StoreClip(ClipFromJson(entity, mUnknown));
    if (kind == "resource") return StoreResource(ResourceFromJson(entity, mUnknown));
    if (kind == "group") return StoreGroup(*GroupFromJson(entity, mUnknown));
    if (kind == "edit") return StoreEdit(EditFromJson(entity, mUnknown));
    throw std::invalid_argument("there is no kind of line '" + kind + "'");
  }

  bool IsToStore(const std::string& what, const Identifier& id, bool isKnown) const {
    if (isKnown && mKnown == Known::Refuse) {
      throw std::invalid_argument(what + " " + id.Value() + " is stored already");
    }
    return !isKnown || mKnown == Known::Replace;
  }

  bool StoreClip(MediaAsset clip) {
    const bool isKnown = mStore.Clips().Find(clip.Id(), MediaAssetParts::Row).has_value();
    if (!IsToStore("clip", clip.Id(), isKnown)) return false;
    try {
      mStore.Clips().Put(clip);
    } catch (const NotStoredException&) {
      // A track may take a stream of a clip that follows.
      constexpr auto allButTracks = MediaAssetParts::TimeBounds | MediaAssetParts::Metadata |
                                    MediaAssetParts::Operator | MediaAssetParts::Annotations |
                                    MediaAssetParts::Resources;
      clip.HeldParts(allButTracks);
      mStore.Clips().Put(clip);
      clip.HeldParts(MediaAssetParts::All);
      mWaiting.emplace_back(mLine, std::move(clip));
    }
    return true;
  }

  bool StoreResource(MediaResource resource) {
    auto& table = mStore.Database().GetMediaResourceTable();
    const bool isKnown = table.GetObjectIdFromIdentifier(resource.Id()) != -1;
    if (!IsToStore("resource", resource.Id(), isKnown)) return false;
    constexpr bool isLazy = false;
    if (!table.Save(resource, isLazy)) throw std::invalid_argument(mStore.Database().LastFailure());
    return true;
  }

  bool StoreGroup(MediaAssetGroup& group) {
    const bool isKnown = mStore.Groups().Find(group.Id()).has_value();
    if (!IsToStore("group", group.Id(), isKnown)) return false;
    mStore.PutGroup(group);
    return true;
  }

  bool StoreEdit(Edits::Edit edit) {
    const bool isKnown = mStore.Edits().Find(edit.Id()).has_value();
    if (!IsToStore("edit", edit.Id(), isKnown)) return false;
    mStore.Edits().Put(edit);
    return true;
  }

  ClipStore& mStore;
  const Known mKnown;
  const UnknownFields mUnknown;
  int64_t mLine = 0;
  std::vector<std::pair<int64_t, MediaAsset>> mWaiting;
  ImportResult mResult;
};

void RequireHeader(const std::string& line) {
  Json header;
  try {
    header = Json::parse(line);
  } catch (const Json::exception&) {
  }
  const bool isHeader = header.is_object() && header.contains("format") && header["format"] == formatName;
  if (!isHeader) {
    throw std::invalid_argument(std::string("line 1 isn't {\"format\":\"") + formatName + "\",\"version\":" +
                                std::to_string(formatVersion) + "}, so this is no export of a catalogue");
  }
  if (!header.contains("version") || header["version"] != formatVersion) {
    throw std::invalid_argument("this program reads version " + std::to_string(formatVersion) +
                                " of the format alone");
  }
}

/// How many bytes there are to read, -1 where that can't be seen.
int64_t SizeOf(std::istream& lines) {
  const auto begin = lines.tellg();
  if (begin == std::istream::pos_type(-1)) {
    lines.clear();
    return -1;
  }
  lines.seekg(0, std::ios::end);
  const auto end = lines.tellg();
  lines.seekg(begin);
  return end - begin;
}

}  // namespace

bool Export(ClipStore& store, std::ostream& lines, const PutProgress& progress) {
  const Sqlite::ReadGuard guard(store.Database());
  lines << Json{{"format", formatName}, {"version", formatVersion}}.dump() << '\n';
  const MediaAssetSearch all;
  const int64_t total = store.Clips().Count(all);
  int64_t done = 0;
  std::set<Identifier> foreignStreams;
  for (MediaAsset& clip : store.Clips().Each(all, MediaAssetParts::All)) {
    WriteLine(lines, "clip", EntityToJson(clip));
    AddForeignStreams(clip, foreignStreams);
    if (progress && !progress(++done, total)) return false;
  }
  for (auto& [id, resource] : UnclaimedResources(store, foreignStreams))
    WriteLine(lines, "resource", EntityToJson(resource));
  for (MediaAssetGroup& group : store.Groups().All()) {
    auto angles = store.Groups().FindAngles(group.Id());
    WriteLine(lines, "group", EntityToJson(angles ? *angles : group));
  }
  for (Edits::Edit& edit : store.Edits().All())
    WriteLine(lines, "edit", EntityToJson(edit));
  return true;
}

ImportResult Import(ClipStore& store, std::istream& lines, Known known, UnknownFields unknown,
                    const PutProgress& progress) {
  const int64_t total = SizeOf(lines);
  std::string line;
  std::getline(lines, line);
  RequireHeader(line);
  int64_t bytes = static_cast<int64_t>(line.size()) + 1;
  Importer importer(store, known, unknown);
  importer.PassHeader();
  bool hasMore = true;
  while (hasMore && importer.Result().isComplete) {
    constexpr int linesInTransaction = 256;
    Sqlite::TransactionGuard transaction(store.Database());
    for (int n = 0; n < linesInTransaction && importer.Result().isComplete; ++n) {
      hasMore = static_cast<bool>(std::getline(lines, line));
      if (!hasMore) break;
      importer.Store(line);
      bytes += static_cast<int64_t>(line.size()) + 1;
      if (progress && !progress(bytes, total)) importer.Result().isComplete = false;
    }
    if (!hasMore || !importer.Result().isComplete) importer.StoreWaitingTracks();
    transaction.Commit();
  }
  return std::move(importer.Result());
}

}  // namespace Catalogue
