#include "Oru/DataModel/MediaAssets/Database/Writing/ResourceWriter.h"

#include "Oru/DataModel/MediaAssets/Database/AudioEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/VideoEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectWrite.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/StorableCheck.h"

#include <algorithm>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;

namespace {

bool Contains(const std::vector<int64_t>& sortedKeys, int64_t key) {
  return std::binary_search(sortedKeys.begin(), sortedKeys.end(), key);
}

}  // namespace

ResourceWriter::ResourceWriter(DataModelDatabase& writtenDatabase, AssetUses& assetUses)
    : database(writtenDatabase),
      uses(assetUses),
      resources(writtenDatabase.GetMediaResourceTable()),
      streams(writtenDatabase.GetStreamTable()),
      essences(writtenDatabase.GetEssenceTable()),
      kinds{&essences.GetAudioEssenceTable(), &essences.GetDataEssenceTable(),
            &essences.GetVideoEssenceTable()},
      streamById("SELECT key, refMediaResource FROM Stream WHERE id = ?"),
      essencesOfStream(
          "SELECT e.nr, e.key, EXISTS (SELECT 1 FROM AudioEssence WHERE refEssence = e.key),"
          " EXISTS (SELECT 1 FROM DataEssence WHERE refEssence = e.key),"
          " EXISTS (SELECT 1 FROM VideoEssence WHERE refEssence = e.key) FROM Essence e WHERE e.refStream = "
          "?"),
      resourceByKey("SELECT id FROM MediaResource WHERE key = ?") {}

std::vector<int64_t> ResourceWriter::Write(MediaAsset& asset, const std::vector<int64_t>& linked) {
  Writing writing{asset, linked, {}, {}};
  for (auto& reference : asset.MediaResources()) {
    if (reference) {
      writing.heldKeys.push_back(WriteRow(writing, *reference));
      writing.keys.push_back(writing.heldKeys.back());
    } else {
      writing.keys.push_back(resources.GetObjectIdFromIdentifier(reference.Id()));
      if (writing.keys.back() == -1)
        RefuseObject(asset.Id(), "it refers to resource " + reference.Id().Value() + ", which isn't stored");
    }
  }
  std::sort(writing.keys.begin(), writing.keys.end());
  std::sort(writing.heldKeys.begin(), writing.heldKeys.end());
  // A stream may move from one resource of the asset to another, so those that are gone show at the end.
  for (auto& reference : asset.MediaResources()) {
    if (reference) WriteStreams(writing, *reference);
  }
  for (auto& reference : asset.MediaResources()) {
    if (reference) DeleteStreamsNotIn(writing, *reference);
  }
  return std::move(writing.keys);
}

int64_t ResourceWriter::WriteRow(const Writing& writing, MediaResource& resource) {
  resource.ObjectId(resources.GetObjectIdFromIdentifier(resource.Id()));
  const bool isNew = resource.ObjectId() == -1;
  const Sqlite::OwnerRow row = Sqlite::OwnerRowThatIs(isNew);
  Require(writing, isNew ? resources.Insert(resource, true) : resources.Update(resource, true));
  Require(writing, resources.GetTimeBoundsTable().Write(resource.Timebounds(), resource.ObjectId(), row));
  Require(writing, resources.GetMetadataTable().Write(*resource.Metadata(), resource.ObjectId(), row));
  return resource.ObjectId();
}

void ResourceWriter::WriteStreams(const Writing& writing, MediaResource& resource) {
  for (auto& reference : resource.Streams()) {
    if (reference) {
      WriteStream(writing, *reference, resource.ObjectId());
      continue;
    }
    const StoredStream stored = FindStream(reference.Id());
    if (stored.resource == resource.ObjectId()) continue;
    RefuseObject(writing.asset.Id(),
                 "resource " + resource.Id().Value() + " refers to stream " + reference.Id().Value() +
                     (stored.key == -1 ? ", which isn't stored"
                                       : ", which belongs to resource " + ResourceName(stored.resource)));
  }
}

void ResourceWriter::WriteStream(const Writing& writing, Stream& stream, int64_t resource) {
  const StoredStream stored = FindStream(stream.Id());
  const bool isNew = stored.key == -1;
  if (!isNew && stored.resource != resource && !MayTakeStreamFrom(writing, stored.resource)) {
    RefuseObject(writing.asset.Id(),
                 "stream " + stream.Id().Value() + " belongs to resource " + ResourceName(stored.resource));
  }
  stream.ObjectId(stored.key);
  StreamEncapsulated row(resource, stream);
  const Sqlite::OwnerRow owner = Sqlite::OwnerRowThatIs(isNew);
  Require(writing, isNew ? streams.Insert(row, true) : streams.Update(row, true));
  Require(writing, streams.GetTimeBoundsTable().Write(stream.Timebounds(), stream.ObjectId(), owner));
  Require(writing, streams.GetMetadataTable().Write(*stream.Metadata(), stream.ObjectId(), owner));
  WriteEssences(writing, stream, isNew);
}

// A stream stays with a resource whose content this asset doesn't know: one that another asset is
// linked to, or that is linked to by its identifier alone.
bool ResourceWriter::MayTakeStreamFrom(const Writing& writing, int64_t resource) {
  if (Contains(writing.keys, resource)) return Contains(writing.heldKeys, resource);
  return Contains(writing.linked, resource) && !uses.IsLinkedElsewhere(resource, writing.asset.ObjectId());
}

void ResourceWriter::DeleteStreamsNotIn(const Writing& writing, MediaResource& resource) {
  std::vector<int64_t> held;
  for (auto& reference : resource.Streams())
    held.push_back(reference ? reference->ObjectId() : FindStream(reference.Id()).key);
  std::sort(held.begin(), held.end());
  for (const int64_t stored : uses.Streams(resource.ObjectId())) {
    if (!Contains(held, stored)) Require(writing, streams.Delete(stored));
  }
}

void ResourceWriter::WriteEssences(const Writing& writing, Stream& stream, bool isNew) {
  auto stored = isNew ? std::map<int32_t, StoredEssence>() : FindEssences(stream.ObjectId());
  for (const auto& essence : stream.Essences()) {
    const auto known = stored.find(essence->Nr());
    WriteEssence(writing, *essence, stream.ObjectId(), known == stored.end() ? nullptr : &known->second);
    if (known != stored.end()) stored.erase(known);
  }
  for (const auto& left : stored)
    Require(writing, essences.Delete(left.second.key));
}

// The row of all kinds stays where the kind changes, and with it the channels that refer to it.
void ResourceWriter::WriteEssence(const Writing& writing, Essence& essence, int64_t stream,
                                  const StoredEssence* stored) {
  EssenceEncapsulated row(stream, essence);
  essence.ObjectId(stored ? stored->key : -1);
  Require(writing, stored ? essences.Update(row, true) : essences.Insert(row, true));
  Require(writing, essences.GetMetadataTable().Write(*essence.Metadata(), essence.ObjectId(),
                                                     Sqlite::OwnerRowThatIs(stored == nullptr)));
  const auto kind = static_cast<std::size_t>(essence.GetType());
  for (std::size_t other = 0; stored && other < kinds.size(); ++other) {
    if (other != kind && stored->isOfKind[other]) Require(writing, kinds[other]->Delete(stored->key));
  }
  Require(writing,
          stored && stored->isOfKind[kind] ? kinds[kind]->Update(row, true) : kinds[kind]->Insert(row, true));
}

ResourceWriter::StoredStream ResourceWriter::FindStream(const Identifier& id) {
  Sqlite::PreparedStatement::Run run(streamById, database, id.Value());
  StoredStream found;
  if (run.Step()) found = {run.Row().GetInt64(0), run.Row().GetInt64(1)};
  return found;
}

std::map<int32_t, ResourceWriter::StoredEssence> ResourceWriter::FindEssences(int64_t stream) {
  Sqlite::PreparedStatement::Run run(essencesOfStream, database, stream);
  std::map<int32_t, StoredEssence> found;
  while (run.Step()) {
    const Sqlite::CursorSqlite& row = run.Row();
    const StoredEssence essence{row.GetInt64(1), {row.GetBoolean(2), row.GetBoolean(3), row.GetBoolean(4)}};
    found.emplace(row.GetInt32(0), essence);
  }
  return found;
}

std::string ResourceWriter::ResourceName(int64_t key) {
  Sqlite::PreparedStatement::Run run(resourceByKey, database, key);
  return run.Step() ? run.Row().GetString(0) : std::string();
}

void ResourceWriter::Require(const Writing& writing, bool isDone) const {
  RequireWritten(database, writing.asset.Id(), isDone);
}

}  // namespace Oru::DataModel::MediaAssets::Database
