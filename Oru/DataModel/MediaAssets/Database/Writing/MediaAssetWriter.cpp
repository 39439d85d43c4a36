#include "Oru/DataModel/MediaAssets/Database/Writing/MediaAssetWriter.h"

#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectWrite.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/StorableCheck.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <tuple>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;

namespace {

using Keys = std::vector<int64_t>;

// Both in ascending order.
Keys Difference(const Keys& keys, const Keys& others) {
  Keys difference;
  std::set_difference(keys.begin(), keys.end(), others.begin(), others.end(), std::back_inserter(difference));
  return difference;
}

Keys Union(const Keys& keys, const Keys& others) {
  Keys both;
  std::set_union(keys.begin(), keys.end(), others.begin(), others.end(), std::back_inserter(both));
  return both;
}

bool Holds(const MediaAsset& asset, MediaAssetParts part) {
  return (asset.HeldParts() & part) == part;
}

// Nothing that was linked stays linked if it isn't wanted, and nothing is linked twice.
template <class Link, class LinkTable>
bool Relink(LinkTable& links, const std::string& linkColumn, int64_t asset, const Keys& linked,
            const Keys& wanted) {
  for (const int64_t lost : Difference(linked, wanted)) {
    Sqlite::QuerySqlite query;
    query.Equals(LinkTable::columnNames[LinkTable::Column::RefMediaAsset], asset).Equals(linkColumn, lost);
    if (!links.Delete(query)) return false;
  }
  for (const int64_t added : Difference(wanted, linked)) {
    Link link{asset, added};
    if (!links.Save(link)) return false;
  }
  return true;
}

// A statement that SQLite couldn't prepare has logged why: the file can't be read.
template <class Operation>
auto WithoutClosedCursors(Operation operation) {
  try {
    return operation();
  } catch (const ObjectClosedException&) {
    throw InvalidOperationException();
  }
}

std::string LinkCopy(const std::string& table, const std::string& column) {
  return "INSERT INTO " + table + "(refMediaAsset, " + column + ") SELECT DISTINCT ?1, " + column + " FROM " +
         table + " WHERE refMediaAsset = ?2";
}

}  // namespace

MediaAssetWriter::MediaAssetWriter(DataModelDatabase& writtenDatabase)
    : database(writtenDatabase),
      assets(writtenDatabase.GetMediaAssetTable()),
      uses(writtenDatabase),
      resourceWriter(writtenDatabase, uses),
      shareResources(
          LinkCopy(RelationMediasTable::tableName,
                   RelationMediasTable::columnNames[RelationMediasTable::Column::RefMediaResource])),
      shareTracks(LinkCopy(RelationAssetTrackTable::tableName,
                           RelationAssetTrackTable::columnNames[RelationAssetTrackTable::Column::RefTrack])),
      channelsOfTrack(
          "SELECT Stream.id, nr, channelNr FROM TrackChannel CROSS JOIN Essence ON Essence.key = refEssence"
          " CROSS JOIN Stream ON Stream.key = refStream WHERE refTrack = ? ORDER BY TrackChannel.rowid"),
      deleteAsset("DELETE FROM MediaAsset WHERE key = ?"),
      protection(
          "SELECT 1 FROM DapOperatorMetadata WHERE refMediaAsset = ? AND (userProtected OR dapUIProtected)") {
}

int64_t MediaAssetWriter::FindKey(const Identifier& id) {
  return WithoutClosedCursors([&] { return assets.GetObjectIdFromIdentifier(id); });
}

bool MediaAssetWriter::IsProtected(int64_t key) {
  return WithoutClosedCursors([&] { return protection.FindKey(database, key) != -1; });
}

void MediaAssetWriter::Put(MediaAsset& asset, int64_t key) {
  RequireStorable(asset);
  WithoutClosedCursors([&] {
    WriteOwn(asset, key);
    WriteShared(asset, key == -1);
  });
}

void MediaAssetWriter::PutNew(MediaAsset& asset) {
  RequireStorable(asset);
  WithoutClosedCursors([&] {
    RequireNew(asset);
    WriteOwn(asset, -1);
    WriteShared(asset, true);
  });
}

void MediaAssetWriter::PutSharing(MediaAsset& asset, int64_t original) {
  RequireStorable(asset);
  WithoutClosedCursors([&] {
    WriteOwn(asset, -1);
    Sqlite::PreparedStatement::Run(shareResources, database, asset.ObjectId(), original).Step();
    Sqlite::PreparedStatement::Run(shareTracks, database, asset.ObjectId(), original).Step();
  });
}

void MediaAssetWriter::Remove(int64_t key) {
  WithoutClosedCursors([&] {
    const Keys resources = Union(uses.LinkedResources(key), uses.TrackedResources(key));
    const Keys tracks = uses.Tracks(key), groups = uses.Groups(key);
    Sqlite::PreparedStatement::Run(deleteAsset, database, key).Step();
    uses.DeleteUnusedTracks(tracks);
    uses.DeleteUnusedResources(resources);
    uses.DeleteUnusedGroups(groups);
  });
}

void MediaAssetWriter::RequireNew(const MediaAsset& asset) {
  const auto require = [&asset](const char* what, auto& table, const Identifier& id) {
    if (table.GetObjectIdFromIdentifier(id) != -1)
      RefuseObject(asset.Id(), std::string(what) + " " + id.Value() + " is stored already");
  };
  for (const auto& resource : asset.MediaResources()) {
    require("resource", assets.GetMediaResourceTable(), resource.Id());
    for (const auto& stream : resource->Streams())
      require("stream", assets.GetStreamTable(), stream.Id());
  }
  for (const auto& track : asset.Tracks())
    require("track", assets.GetTrackTable(), track->Id());
}

void MediaAssetWriter::WriteOwn(MediaAsset& asset, int64_t key) {
  asset.ObjectId(key);
  const Sqlite::OwnerRow row = Sqlite::OwnerRowThatIs(key == -1);
  Require(asset, key == -1 ? assets.Insert(asset, true) : assets.Update(asset, true));
  if (Holds(asset, MediaAssetParts::Annotations))
    Require(asset, assets.GetAnnotationTable().Write(asset.Annotations(), asset.ObjectId(), row));
  if (Holds(asset, MediaAssetParts::TimeBounds))
    Require(asset, assets.GetTimeBoundsTable().Write(asset.PhysicalTimebounds(), asset.ObjectId(), row));
  if (Holds(asset, MediaAssetParts::Operator)) WriteOperatorProfile(asset, row);
  if (Holds(asset, MediaAssetParts::Metadata))
    Require(asset, assets.GetMetadataTable().Write(asset.Metadata(), asset.ObjectId(), row));
}

void MediaAssetWriter::WriteOperatorProfile(MediaAsset& asset, Sqlite::OwnerRow row) {
  DapOperatorMetadataTable& profiles = assets.GetDapOperatorMetadataTable();
  Require(asset, asset.HasDapOperatorMetadata() ? profiles.Write(asset.Metadata(), asset.ObjectId(), row)
                                                : profiles.DeleteOwned(asset.ObjectId(), row));
}

// Tracks come after the resources, whose essences their channels take. What is no longer used goes at the
// end, when all that uses it is known.
void MediaAssetWriter::WriteShared(MediaAsset& asset, bool isNew) {
  const bool hasResources = Holds(asset, MediaAssetParts::Resources);
  const bool hasTracks = Holds(asset, MediaAssetParts::Tracks);
  const int64_t key = asset.ObjectId();
  const Keys linkedResources = hasResources && !isNew ? uses.LinkedResources(key) : Keys();
  const Keys linkedTracks = hasTracks && !isNew ? uses.Tracks(key) : Keys();
  Keys released = linkedTracks.empty() ? Keys() : uses.TrackedResources(key);
  if (hasResources) {
    const Keys wanted = resourceWriter.Write(asset, linkedResources);
    RelinkResources(asset, linkedResources, wanted);
    released = Difference(Union(released, linkedResources), wanted);
  }
  if (hasTracks) {
    const Keys wanted = WriteTracks(asset, linkedTracks, released);
    RelinkTracks(asset, linkedTracks, wanted);
    uses.DeleteUnusedTracks(Difference(linkedTracks, wanted));
  }
  uses.DeleteUnusedResources(released);
}

std::vector<int64_t> MediaAssetWriter::WriteTracks(MediaAsset& asset, const Keys& linked, Keys& released) {
  TrackTable& tracks = assets.GetTrackTable();
  Keys keys;
  for (const auto& track : asset.Tracks()) {
    track->ObjectId(tracks.GetObjectIdFromIdentifier(track->Id()));
    // What the tracks of the asset take is known already; one that comes to it may let go of something too.
    if (track->ObjectId() != -1 && !std::binary_search(linked.begin(), linked.end(), track->ObjectId()))
      released = Union(released, uses.ResourcesOfTrack(track->ObjectId()));
    const bool isNew = track->ObjectId() == -1;
    Require(asset, isNew ? tracks.Insert(*track, true) : tracks.Update(*track, true));
    if (!WriteChannels(*track, isNew)) RefuseChannels(asset, *track);
    keys.push_back(track->ObjectId());
  }
  std::sort(keys.begin(), keys.end());
  return keys;
}

// Channels that are stored keep their order, and new ones follow.
bool MediaAssetWriter::WriteChannels(const Track& track, bool isNew) {
  using Place = std::tuple<std::string, int32_t, int64_t>;
  std::map<Place, std::size_t> stored;
  if (!isNew) {
    Sqlite::PreparedStatement::Run run(channelsOfTrack, database, track.ObjectId());
    for (const Sqlite::CursorSqlite& row = run.Row(); run.Step();)
      stored.emplace(Place(row.GetString(0), row.GetInt32(1), row.GetInt64(2)), stored.size());
  }
  auto channels = track.Channels();
  const auto number = [&stored](const std::shared_ptr<TrackChannelToRemove>& channel) {
    const auto found =
        stored.find(Place(channel->Stream().Id().Value(), channel->EssenceNr(), channel->ChannelNr()));
    return found == stored.end() ? stored.size() : found->second;
  };
  const auto isStored = [&](const auto& channel) { return number(channel) < stored.size(); };
  if (!isNew && channels.size() == stored.size() && std::all_of(channels.begin(), channels.end(), isStored))
    return true;
  std::stable_sort(channels.begin(), channels.end(),
                   [&](const auto& left, const auto& right) { return number(left) < number(right); });
  return assets.GetTrackTable().GetTrackChannelTable().Write(channels, track.ObjectId(), true,
                                                             Sqlite::OwnerRowThatIs(isNew));
}

// Why the channels of a track couldn't be written.
void MediaAssetWriter::RefuseChannels(const MediaAsset& asset, const Track& track) {
  const bool isValueRefused = database.HasRefusedValue();
  // Without the transaction, which SQLite may have rolled back at a fault of the disk, nothing would be
  // found.
  if (!database.IsInTransaction()) throw InvalidOperationException();
  for (const auto& channel : track.Channels()) {
    const auto& stream = channel->Stream().Id();
    const int64_t streamKey = database.GetStreamTable().GetObjectIdFromIdentifier(stream);
    if (database.GetEssenceTable().GetObjectIdFromEssenceNr(streamKey, channel->EssenceNr()) != -1) continue;
    RefuseObject(asset.Id(), "track " + track.Id().Value() + " refers to essence " +
                                 std::to_string(channel->EssenceNr()) + " of stream " + stream.Value() +
                                 ", which isn't stored");
  }
  if (isValueRefused)
    RefuseObject(asset.Id(), "a channel of track " + track.Id().Value() + " can't be stored");
  throw InvalidOperationException();
}

void MediaAssetWriter::RelinkResources(const MediaAsset& asset, const Keys& linked, const Keys& wanted) {
  Require(asset, Relink<RelationMedias>(
                     assets.GetRelationMediasTable(),
                     RelationMediasTable::columnNames[RelationMediasTable::Column::RefMediaResource],
                     asset.ObjectId(), linked, wanted));
}

void MediaAssetWriter::RelinkTracks(const MediaAsset& asset, const Keys& linked, const Keys& wanted) {
  Require(asset, Relink<RelationAssetTrack>(
                     assets.GetRelationAssetTrackTable(),
                     RelationAssetTrackTable::columnNames[RelationAssetTrackTable::Column::RefTrack],
                     asset.ObjectId(), linked, wanted));
}

void MediaAssetWriter::Require(const MediaAsset& asset, bool isDone) const {
  RequireWritten(database, asset.Id(), isDone);
}

}  // namespace Oru::DataModel::MediaAssets::Database
