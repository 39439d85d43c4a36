#include "ClipStore.h"

#include "Oru/BusinessEntityModel/Edits/Database/EditTable.h"
#include "Oru/BusinessEntityModel/Edits/Database/SequenceEncapsulated.h"
#include "Oru/BusinessEntityModel/Edits/Database/SequenceTable.h"
#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/Common/Databases/ObjectCursor.h"
#include "Oru/Common/Databases/Query.h"
#include "Oru/Common/Databases/RawCursor.h"
#include "Oru/Common/Databases/Sqlite/FullTextExpression.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include "AssetBuilder.h"
#include "TextForms.h"

#include <algorithm>
#include <ctime>
#include <stdexcept>

namespace Catalogue {
namespace {

namespace Edits = Oru::BusinessEntityModel::Edits;
namespace MediaAssets = Oru::DataModel::MediaAssets;
using Oru::Common::Databases::Query;
using Oru::Common::Databases::Sqlite::FullTextExpression;
using Oru::Common::Databases::Sqlite::ReadGuard;
using Oru::Common::Databases::Sqlite::TransactionGuard;

/// The tables answer with false where the database refuses; the log then holds its reason.
void Require(bool isDone, const std::string& what) {
  if (!isDone) throw std::runtime_error(what + " could not be stored");
}

/// The rows of a table that a query selects.
template <class T, class Table>
std::vector<T> ReadRows(Table& table, Query& query) {
  std::vector<T> rows;
  const auto cursor = table.OpenObjectCursor(query);
  for (T row; cursor->Next(row); row = T())
    rows.push_back(std::move(row));
  return rows;
}

}  // namespace

ClipStore::ClipStore(const std::string& file, const std::shared_ptr<std::ostream>& log)
    : mDatabase(file, log) {
  mDatabase.Open();
}

ClipStore::Outcome ClipStore::Put(MediaAsset& clip) {
  TransactionGuard transaction(mDatabase);
  MediaAsset stored;
  const bool isStored = Assets().GetObject(Assets().GetObjectIdFromIdentifier(clip.Id()), stored);
  if (isStored) {
    ReadUsersPart(stored);
    KeepUsersPart(clip, stored);
    DropFilePart(clip);
  }
  Require(Assets().Save(clip), clip.Id().Value());
  // A save links resources and tracks to a new asset only.
  if (isStored) LinkFilePart(clip);
  transaction.Commit();
  return isStored ? Outcome::Updated : Outcome::Added;
}

std::vector<MediaAssets::MediaAsset> ClipStore::Clips(const std::string& nameContains) {
  const auto query = mDatabase.NewQuery();
  if (!nameContains.empty()) query->Contains("MediaAsset.name", nameContains);
  query->OrderByAsc("MediaAsset.name");
  return ReadRows<MediaAsset>(Assets(), *query);
}

MediaAssets::MediaAsset ClipStore::Find(const std::string& idOrName) {
  const auto isNamed = mDatabase.NewQuery();
  isNamed->Equals("MediaAsset.name", idOrName);
  const auto query = mDatabase.NewQuery();
  query->BeginWith("id", idOrName).Or(*isNamed);
  std::vector<MediaAsset> found = ReadRows<MediaAsset>(Assets(), *query);
  if (found.empty()) throw std::runtime_error("no clip has the identifier or the name '" + idOrName + "'");
  if (found.size() > 1) {
    std::string message = "'" + idOrName + "' fits " + std::to_string(found.size()) + " clips:";
    for (const MediaAsset& clip : found)
      message += "\n  " + clip.Id().Value() + "  " + Printable(clip.Name());
    throw std::runtime_error(message);
  }
  return std::move(found.front());
}

std::vector<ClipStore::Hit> ClipStore::Search(const std::string& words) {
  const auto query = mDatabase.NewQuery();
  query->Match("MediaAssetFts", FullTextExpression::AllWordsAsTyped(words));
  query->OrderByAsc("MediaAssetFts.rank").OrderByAsc("MediaAsset.name");
  std::vector<Hit> hits;
  for (const auto cursor = Assets().OpenRawCursor(*query); cursor->Next();) {
    hits.push_back(
        {cursor->GetString("id"), cursor->GetString("nameFts"), cursor->GetString("descriptionFts")});
  }
  return hits;
}

void ClipStore::ReadSummary(MediaAsset& clip) {
  Assets().ReadMetadata(clip);
  Assets().ReadMediaResources(clip);
}

void ClipStore::ReadAll(MediaAsset& clip) {
  // One view of the file for the many small reads, and one taking of its lock.
  const ReadGuard guard(mDatabase);
  ReadUsersPart(clip);
  Assets().ReadMediaResources(clip);
  for (auto& resource : clip.MediaResources()) {
    for (auto& stream : resource->Streams()) {
      for (auto& essence : stream->Essences())
        Assets().GetEssenceTable().ReadMetadata(*essence);
    }
  }
  Assets().ReadTrackLazy(clip);
}

void ClipStore::Change(const std::string& idOrName, const std::function<void(MediaAsset&)>& change) {
  TransactionGuard transaction(mDatabase);
  MediaAsset clip = Find(idOrName);
  // A save replaces metadata, bounds and annotations by what the asset holds, so it must hold them.
  ReadUsersPart(clip);
  change(clip);
  clip.ModificationDate(std::max(std::time(nullptr), clip.CreationDate()));
  Require(Assets().Save(clip), clip.Id().Value());
  transaction.Commit();
}

void ClipStore::Remove(MediaAsset& clip) {
  TransactionGuard transaction(mDatabase);
  if (!Assets().Delete(clip)) throw std::runtime_error(clip.Id().Value() + " could not be removed");
  transaction.Commit();
}

std::vector<MediaAssets::MediaAsset> ClipStore::ClipsOnServer(const MediaAssets::ZuServerId& server) {
  const auto onServer = mDatabase.NewQuery();
  onServer->Equals("zuServerId", server.SerialNumber());
  const auto query = mDatabase.NewQuery();
  query->In("key", "DapOperatorMetadata", "refMediaAsset", *onServer).OrderByAsc("MediaAsset.name");
  std::vector<MediaAsset> clips = ReadRows<MediaAsset>(Assets(), *query);
  for (MediaAsset& clip : clips)
    Assets().ReadDapOperatorMetadata(clip);
  return clips;
}

void ClipStore::RemoveByServer(const MediaAssets::ZuServerId& server) {
  TransactionGuard transaction(mDatabase);
  if (!Assets().DeleteByServerId(server)) {
    throw std::runtime_error("the clips of server " + server.ToString() + " could not be removed");
  }
  transaction.Commit();
}

void ClipStore::PutGroup(MediaAssets::AnglesMediaAssetGroup& group, bool hasAngles) {
  TransactionGuard transaction(mDatabase);
  auto& groups = mDatabase.GetMediaAssetGroupTable();
  const std::string what = "group " + group.Id().Value();
  Require(groups.Delete(groups.GetObjectIdFromIdentifier(group.Id())), what);
  Require(hasAngles ? mDatabase.GetAnglesMediaAssetGroupTable().Save(group) : groups.Save(group), what);
  transaction.Commit();
}

std::vector<std::pair<MediaAssets::MediaAssetGroup, bool>> ClipStore::Groups() {
  const ReadGuard guard(mDatabase);
  auto& table = mDatabase.GetMediaAssetGroupTable();
  const auto query = mDatabase.NewQuery();
  query->OrderByAsc("name");
  std::vector<std::pair<MediaAssets::MediaAssetGroup, bool>> groups;
  for (MediaAssets::MediaAssetGroup& group : ReadRows<MediaAssets::MediaAssetGroup>(table, *query)) {
    constexpr bool loadsIdentifiersOnly = false;
    table.ReadAnglesMediaAssetGroupItems(group, loadsIdentifiersOnly);
    const bool hasAngles = mDatabase.GetAnglesMediaAssetGroupTable().Exists(group.ObjectId());
    groups.emplace_back(std::move(group), hasAngles);
  }
  return groups;
}

void ClipStore::PutEdit(Edit& edit) {
  TransactionGuard transaction(mDatabase);
  auto& edits = mDatabase.GetEditTable();
  const std::string what = "edit " + edit.Id().Value();
  Require(edits.Delete(edits.GetObjectIdFromIdentifier(edit.Id())) && edits.Save(edit), what);
  for (const auto& sequence : edit.Sequences()) {
    Edits::Database::SequenceEncapsulated row(*sequence);
    row.editFk = edit.ObjectId();
    Require(mDatabase.GetSequenceTable().Save(row), what);
  }
  transaction.Commit();
}

std::vector<Edits::Edit> ClipStore::Edits() {
  const ReadGuard guard(mDatabase);
  const auto byName = mDatabase.NewQuery();
  byName->OrderByAsc("name");
  std::vector<Edit> edits = ReadRows<Edit>(mDatabase.GetEditTable(), *byName);
  for (Edit& edit : edits) {
    const auto ofEdit = mDatabase.NewQuery();
    ofEdit->Equals("editRef", edit.ObjectId()).OrderByAsc("timepoint");
    for (Edits::Sequence& row : ReadRows<Edits::Sequence>(mDatabase.GetSequenceTable(), *ofEdit)) {
      mDatabase.GetSequenceTable().ReadMetadata(row);
      edit.Sequences().Add(std::make_unique<Edits::Sequence>(std::move(row)));
    }
  }
  return edits;
}

void ClipStore::Backup(const std::string& file,
                       const std::function<void(int remaining, int total)>& progress) {
  mDatabase.Backup(file, [&progress](int32_t remaining, int32_t total) {
    progress(remaining, total);
    return true;
  });
}

void ClipStore::ReadUsersPart(MediaAsset& clip) {
  Assets().ReadTimebounds(clip);
  Assets().ReadMetadata(clip);
  Assets().ReadDapOperatorMetadata(clip);
  Assets().ReadAnnotations(clip);
}

void ClipStore::KeepUsersPart(MediaAsset& clip, MediaAsset& stored) {
  clip.ObjectId(stored.ObjectId());
  const auto now = clip.CreationDate();
  clip.CreationDate(stored.CreationDate());
  clip.ModificationDate(std::max(now, stored.CreationDate()));
  clip.Description(stored.Description());
  clip.Annotations() = stored.Annotations();

  // What the file says of its time code goes into the operator's profile, the rest of which is the user's.
  if (clip.HasDapOperatorMetadata()) {
    stored.DapOperatorMetadata().UserTimecode(clip.DapOperatorMetadata().UserTimecode());
    clip.Metadata().Set(stored.DapOperatorMetadata().Clone());
  }
  stored.Metadata().Iterate([&clip](const auto& profile) {
    if (!clip.Metadata().Contains(profile.FullyQualifiedName())) clip.Metadata().Set(profile.Clone());
    return true;
  });
}

void ClipStore::DropFilePart(const MediaAsset& clip) {
  // The file may have other tracks by now, and a save removes none.
  auto& resources = Assets().GetMediaResourceTable();
  for (const auto& resource : clip.MediaResources()) {
    Require(resources.Delete(resources.GetObjectIdFromIdentifier(resource.Id())), clip.Id().Value());
  }
  const auto ofClip = mDatabase.NewQuery();
  ofClip->BeginWith("id", clip.Id().Value() + "/");
  Require(Assets().GetTrackTable().Delete(*ofClip), clip.Id().Value());
}

void ClipStore::LinkFilePart(MediaAsset& clip) {
  for (auto& resource : clip.MediaResources()) {
    MediaAssets::Database::RelationMedias link;
    link.mediaAsset = clip.ObjectId();
    link.mediaResource = resource->ObjectId();
    Require(Assets().GetRelationMediasTable().Save(link), clip.Id().Value());
  }
  for (const auto& track : clip.Tracks()) {
    MediaAssets::Database::RelationAssetTrack link;
    link.asset = clip.ObjectId();
    link.track = track->ObjectId();
    Require(Assets().GetRelationAssetTrackTable().Save(link), clip.Id().Value());
  }
}

}  // namespace Catalogue
