#include "Oru/DataModel/MediaAssets/Database/MediaAssetRepository.h"

#include "Oru/Common/Databases/Sqlite/Writing/AllOrNothing.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetReader.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/MediaAssetWriter.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectIds.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/ObjectWrite.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/StorableCheck.h"
#include "Oru/DataModel/MediaAssets/Database/Writing/TreeRenaming.h"

#include <utility>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;

namespace {

// How many assets share a transaction.
constexpr int BlockSize = 256;

}  // namespace

MediaAssetRepository::MediaAssetRepository(DataModelDatabase& assetDatabase)
    : database(assetDatabase),
      writer(std::make_unique<MediaAssetWriter>(assetDatabase)),
      reader(std::make_shared<MediaAssetReader>(assetDatabase.GetMediaAssetTable())) {}

MediaAssetRepository::~MediaAssetRepository() = default;

std::optional<MediaAsset> MediaAssetRepository::Find(const Identifier& id, MediaAssetParts parts) {
  return reader->Read(id, parts);
}

MediaAssetPage MediaAssetRepository::Find(const MediaAssetSearch& search, MediaAssetParts parts) {
  return reader->Read(search, parts);
}

int64_t MediaAssetRepository::Count(const MediaAssetSearch& search) {
  return reader->Count(search);
}

MediaAssetRange MediaAssetRepository::Each(const MediaAssetSearch& search, MediaAssetParts parts) {
  return MediaAssetRange(reader, search, parts);
}

void MediaAssetRepository::Put(MediaAsset& asset) {
  FormerObjectIds former;
  PutOne(asset, former);
  former.KeepNew();
}

// The ids that the object came with are put back by `former` unless it is let keep the new ones.
void MediaAssetRepository::PutOne(MediaAsset& asset, FormerObjectIds& former) {
  RememberObjectIds(former, asset);
  Sqlite::AllOrNothing(database, [&] { writer->Put(asset, writer->FindKey(asset.Id())); });
}

std::vector<NotStored> MediaAssetRepository::PutEach(const NextAsset& next, bool isMultiPass, int64_t total,
                                                     const PutProgress& progress) {
  const Sqlite::ConnectionLock lock(database.Parts());
  std::vector<NotStored> leftOut;
  int64_t done = 0;
  const auto put = [&](MediaAsset& asset, FormerObjectIds& ofBlock) {
    FormerObjectIds former;
    try {
      PutOne(asset, former);
      if (isMultiPass) ofBlock.Take(former);
    } catch (const NotStoredException& exception) {
      leftOut.push_back({exception.Id(), exception.what()});
    }
  };
  const auto goesOn = [&] { return ++done, !progress || progress(done, total); };
  for (MediaAsset* asset = next(); asset != nullptr;) {
    FormerObjectIds ofBlock;
    Sqlite::AllOrNothing(database, [&] {
      for (int count = 0; asset != nullptr && count < BlockSize; ++count) {
        put(*asset, ofBlock);
        asset = goesOn() ? next() : nullptr;
      }
    });
    ofBlock.KeepNew();
  }
  return leftOut;
}

MediaAsset MediaAssetRepository::Change(const Identifier& id,
                                        const std::function<void(MediaAsset&)>& change) {
  return Sqlite::AllOrNothing(database, [&] {
    std::optional<MediaAsset> asset = Find(id);
    if (!asset) RefuseObject(id, "it isn't stored");
    change(*asset);
    if (asset->Id() != id && writer->FindKey(asset->Id()) != -1)
      RefuseObject(id, "it can't be renamed to " + asset->Id().Value() + ", which is stored already");
    writer->Put(*asset, writer->FindKey(id));
    return std::move(*asset);
  });
}

MediaAsset MediaAssetRepository::Copy(const Identifier& from, const Identifier& to, CopyResources resources) {
  return Sqlite::AllOrNothing(database, [&] {
    std::optional<MediaAsset> copy = Find(from);
    if (!copy) RefuseObject(from, "it isn't stored");
    if (writer->FindKey(to) != -1) RefuseObject(to, "it is stored already");
    if (resources == CopyResources::Own) {
      RenameTree(*copy, to);
      writer->PutNew(*copy);
    } else {
      const int64_t original = copy->ObjectId();
      copy->Id(to);
      writer->PutSharing(*copy, original);
    }
    return std::move(*copy);
  });
}

RemoveOutcome MediaAssetRepository::Remove(const Identifier& id, Protection protection) {
  return Sqlite::AllOrNothing(database, [&] {
    const int64_t key = id.IsEmpty() ? -1 : writer->FindKey(id);
    if (key == -1) return RemoveOutcome::Absent;
    if (protection == Protection::Respect && writer->IsProtected(key)) return RemoveOutcome::Protected;
    writer->Remove(key);
    return RemoveOutcome::Removed;
  });
}

int64_t MediaAssetRepository::RemoveAll(const MediaAssetSearch& search, Protection protection) {
  return Sqlite::AllOrNothing(database, [&] {
    int64_t count = 0;
    for (const int64_t key : reader->Keys(search)) {
      if (protection == Protection::Respect && writer->IsProtected(key)) continue;
      writer->Remove(key);
      ++count;
    }
    return count;
  });
}

void MediaAssetRepository::ForgetKeys(MediaAsset& asset) {
  ForgetObjectIds(asset);
}

}  // namespace Oru::DataModel::MediaAssets::Database
