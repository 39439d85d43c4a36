#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetReader.h"

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/ConnectionLock.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <unordered_map>
#include <utility>

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;
using TimePoints::TimeBounds;

namespace {

bool Contains(MediaAssetParts parts, MediaAssetParts part) {
  return (parts & part) == part;
}

// The columns of a table under their own names.
template <class Table>
std::string StoredColumns(const Table& rows) {
  std::string columns;
  for (int32_t i = 0; i < rows.GetColumnsCount(); ++i)
    columns.append(i == 0 ? "" : ", ").append(rows.GetTableName()).append(".").append(rows.GetColumnName(i));
  return columns;
}

// The rows of the asset table alone: the full-text index has nothing to say of an asset that is found by its
// key.
std::string AssetSelect(const MediaAssetTable& assets) {
  return "SELECT " + StoredColumns(assets) + " FROM MediaAsset WHERE " + IsOneOfKeys("key");
}

// The rows of a table that a link table ties to assets, each with the key of its asset: a row comes once for
// each asset.
template <class Table>
std::string LinkedSelect(const Table& rows, const std::string& linkTable, const std::string& linkColumn) {
  return "SELECT " + StoredColumns(rows) + ", refMediaAsset FROM " + linkTable + " CROSS JOIN " +
         rows.GetTableName() + " ON " + rows.GetTableName() + ".key = " + linkColumn + " WHERE " +
         IsOneOfKeys("refMediaAsset");
}

// In the order in which the channels were stored.
const std::string channelSelect =
    "SELECT refTrack, Stream.id, nr, channelNr FROM TrackChannel CROSS JOIN Essence ON Essence.key = "
    "refEssence"
    " CROSS JOIN Stream ON Stream.key = refStream WHERE " +
    IsOneOfKeys("refTrack") + " ORDER BY TrackChannel.rowid";

// A statement of a search, which runs once.
class SearchRun {
 public:
  SearchRun(Sqlite::DatabaseSqlite& db, const MediaAssetSearchText::Statement& statement)
      : cursor(db, statement) {
    if (!cursor.IsOpened()) throw InvalidOperationException();
  }

  Sqlite::CursorSqlite& Cursor() { return cursor; }

 private:
  Sqlite::CursorSqlite cursor;
};

// What the asset of a row has in the order, in the second column.
MediaAssetSearchText::Value OrderValue(const Sqlite::CursorSqlite& row, MediaAssetOrder order) {
  if (order == MediaAssetOrder::Identifier || order == MediaAssetOrder::Name) return row.GetString(1);
  if (order == MediaAssetOrder::Relevance) return row.GetDouble(1);
  if (order == MediaAssetOrder::Duration) {
    // A double for an asset without marks and for what 64 bits don't hold, which only its text shows.
    const double duration = row.GetDouble(1);
    if (row.GetString(1).find_first_of(".I") != std::string::npos) return duration;
  }
  return row.GetInt64(1);
}

int64_t FirstNumber(Sqlite::DatabaseSqlite& db, const MediaAssetSearchText::Statement& statement) {
  SearchRun run(db, statement);
  return run.Cursor().Step() ? run.Cursor().GetInt64(0) : 0;
}

}  // namespace

MediaAssetReader::MediaAssetReader(MediaAssetTable& assets)
    : table(assets),
      assetRows(assets, AssetSelect(assets), MediaAssetTable::columnNames[MediaAssetTable::Column::Key]),
      bounds(assets.GetTimeBoundsTable(), TimeBoundsTable::columnNames[TimeBoundsTable::Column::ForeignKey]),
      metadata(assets.GetMetadataTable(), MetadataTable::columnNames[MetadataTable::Column::ForeignKey]),
      profiles(assets.GetDapOperatorMetadataTable(),
               DapOperatorMetadataTable::columnNames[DapOperatorMetadataTable::Column::RefMediaAsset]),
      keywords(
          assets.GetDapOperatorKeywordsTable(),
          DapOperatorKeywordsTable::columnNames[DapOperatorKeywordsTable::Column::RefDapOperatorMetadata]),
      annotations(assets.GetAnnotationTable(),
                  AnnotationTable::columnNames[AnnotationTable::Column::RefMediaAsset]),
      annotationMetadata(assets.GetAnnotationTable().GetMetadataTable(),
                         MetadataTable::columnNames[MetadataTable::Column::ForeignKey]),
      resources(assets.GetMediaResourceTable(),
                LinkedSelect(assets.GetMediaResourceTable(), RelationMediasTable::tableName,
                             RelationMediasTable::columnNames[RelationMediasTable::Column::RefMediaResource]),
                RelationMediasTable::columnNames[RelationMediasTable::Column::RefMediaAsset]),
      tracks(assets.GetTrackTable(),
             LinkedSelect(assets.GetTrackTable(), RelationAssetTrackTable::tableName,
                          RelationAssetTrackTable::columnNames[RelationAssetTrackTable::Column::RefTrack]),
             RelationAssetTrackTable::columnNames[RelationAssetTrackTable::Column::RefMediaAsset]),
      channels(channelSelect),
      resourceReader(assets.GetMediaResourceTable()) {}

Sqlite::DatabaseSqlite& MediaAssetReader::Database() const {
  return static_cast<Sqlite::DatabaseSqlite&>(table.GetDatabase());
}

int64_t MediaAssetReader::WrittenRows() const {
  return Database().WrittenRows();
}

std::optional<MediaAsset> MediaAssetReader::Read(const Identifier& id, MediaAssetParts parts) {
  if (id.IsEmpty()) return std::nullopt;
  const Sqlite::ConnectionLock lock(Database().Parts());
  const Sqlite::ReadGuard view(Database());
  const int64_t key = table.GetObjectIdFromIdentifier(id);
  std::vector<MediaAsset> found = Read(std::vector<int64_t>{key}, parts);
  return found.empty() ? std::nullopt : std::optional<MediaAsset>(std::move(found.front()));
}

MediaAssetPage MediaAssetReader::Read(const MediaAssetSearch& search, MediaAssetParts parts,
                                      std::vector<MediaAssetSearchText::Value>* orderValues) {
  const Sqlite::ConnectionLock lock(Database().Parts());
  const Sqlite::ReadGuard view(Database());
  const MediaAssetSearchText text(search, table);
  const std::vector<int64_t> keys = Keys(text, orderValues);
  MediaAssetPage page;
  page.assets = Read(keys, parts);
  const auto length = static_cast<int64_t>(keys.size());
  // A page that is the last one says itself how many there are.
  const bool isLast = !text.IsAfterAsset() && (text.Limit() < 0 || length < text.Limit()) &&
                      (length > 0 || text.Offset() == 0);
  page.total = isLast ? text.Offset() + length : Count(text);
  return page;
}

std::vector<MediaAsset> MediaAssetReader::Read(const std::vector<int64_t>& keys, MediaAssetParts parts) {
  const Sqlite::ConnectionLock lock(Database().Parts());
  const Sqlite::ReadGuard view(Database());
  std::unordered_map<int64_t, std::size_t> places;
  places.reserve(keys.size());
  for (const int64_t key : keys)
    places.emplace(key, places.size());
  std::vector<std::unique_ptr<MediaAsset>> rows(keys.size());
  const std::string list = KeyList(keys);
  Assets assets;
  assetRows.ForEach(
      list, [] { return std::make_unique<MediaAsset>(); },
      [&](int64_t key, std::unique_ptr<MediaAsset> asset) {
        asset->HeldParts(parts);
        assets.Add(key, *asset);
        rows[places.at(key)] = std::move(asset);
      });
  assets.Sort();
  ReadParts(assets, list, parts);
  std::vector<MediaAsset> found;
  found.reserve(rows.size());
  for (const std::unique_ptr<MediaAsset>& asset : rows) {
    if (asset) found.push_back(std::move(*asset));
  }
  return found;
}

std::vector<int64_t> MediaAssetReader::Keys(const MediaAssetSearch& search) {
  const Sqlite::ConnectionLock lock(Database().Parts());
  const Sqlite::ReadGuard view(Database());
  return Keys(MediaAssetSearchText(search, table));
}

int64_t MediaAssetReader::Count(const MediaAssetSearch& search) {
  const Sqlite::ConnectionLock lock(Database().Parts());
  const Sqlite::ReadGuard view(Database());
  return Count(MediaAssetSearchText(search, table));
}

// What the asset that the page follows has in the order.
MediaAssetSearchText::Value MediaAssetReader::ValueBefore(const MediaAssetSearchText& text) const {
  if (!text.IsAfterAsset()) return {};
  // Only identifiers are unique: all other orders need the key as well.
  const bool needsKey = text.Order() != MediaAssetOrder::Identifier;
  if (needsKey && text.KeyBefore() == -1) throw ArgumentException();
  if (const auto value = text.ValueBefore()) return *value;
  SearchRun run(Database(), text.StoredValueBefore());
  if (!run.Cursor().Step()) throw ArgumentException();
  if (text.Order() == MediaAssetOrder::Relevance) {
    double rank = 0;
    run.Cursor().Get(0, rank);
    return rank;
  }
  return run.Cursor().GetInt64(0);
}

// A profile belongs to one asset. The two counts are the dearest part of a page by place, so they are remembered.
bool MediaAssetReader::AreAllWithProfile() {
  if (!dataVersion.IsOpenedOn(Database())) {
    // Each opening counts from the beginning.
    dataVersion.Reset(Database(), "PRAGMA main.data_version", "");
    withProfile = {};
  }
  dataVersion.Step();
  const int64_t version = dataVersion.GetInt64(0);
  dataVersion.Reset();
  const int64_t written = WrittenRows();
  if (withProfile.dataVersion == version && withProfile.writtenRows == written) return withProfile.areAll;
  const bool areAll =
      FirstNumber(
          Database(),
          {"SELECT (SELECT COUNT(*) FROM MediaAsset) = (SELECT COUNT(*) FROM DapOperatorMetadata)", {}}) == 1;
  if (!Database().IsWriting()) withProfile = {version, written, areAll};
  return areAll;
}

// Of several statements, each gives what the ones before it have left of the page.
std::vector<int64_t> MediaAssetReader::Keys(const MediaAssetSearchText& text,
                                            std::vector<MediaAssetSearchText::Value>* orderValues) {
  std::vector<int64_t> keys;
  int64_t left = text.Limit(), passedOver = text.Offset();
  for (auto& [select, looksForMissingProfiles] : text.Keys(ValueBefore(text), orderValues != nullptr)) {
    if (looksForMissingProfiles && AreAllWithProfile()) continue;
    const std::size_t before = keys.size();
    MediaAssetSearchText::Statement page = select;
    page.text += " LIMIT ? OFFSET ?";
    page.values.emplace_back(left);
    page.values.emplace_back(passedOver);
    for (SearchRun run(Database(), page); run.Cursor().Step();) {
      keys.push_back(run.Cursor().GetInt64(0));
      if (orderValues) orderValues->push_back(OrderValue(run.Cursor(), text.Order()));
    }
    const auto found = static_cast<int64_t>(keys.size() - before);
    if (left >= 0) left -= found;
    if (left == 0) break;
    if (passedOver == 0) continue;
    if (found > 0) {
      passedOver = 0;
    } else {
      select.text = "SELECT COUNT(*) FROM (" + select.text + ")";
      passedOver -= FirstNumber(Database(), select);
    }
  }
  return keys;
}

int64_t MediaAssetReader::Count(const MediaAssetSearchText& text) const {
  return FirstNumber(Database(), text.Count());
}

void MediaAssetReader::ReadParts(Assets& assets, const std::string& keys, MediaAssetParts parts) {
  if (assets.IsEmpty()) return;
  if (Contains(parts, MediaAssetParts::TimeBounds)) {
    bounds.ForEach(keys, [&](int64_t owner, const TimeBounds& span) {
      assets.At(owner).PhysicalTimebounds().Insert(span);
    });
  }
  if (Contains(parts, MediaAssetParts::Metadata)) {
    metadata.ForEach(keys, [&](int64_t owner, const MetadataRow& row) {
      MetadataTable::Fold(assets.At(owner).Metadata(), row);
    });
  }
  if (Contains(parts, MediaAssetParts::Operator)) ReadProfiles(assets, keys);
  if (Contains(parts, MediaAssetParts::Annotations)) ReadAnnotations(assets, keys);
  if (Contains(parts, MediaAssetParts::Resources)) ReadResources(assets, keys);
  if (Contains(parts, MediaAssetParts::Tracks)) ReadTracks(assets, keys);
}

void MediaAssetReader::ReadProfiles(Assets& assets, const std::string& keys) {
  ObjectsByKey<DapOperatorMetadataProfile> read;
  profiles.ForEach(
      keys, [] { return std::make_shared<DapOperatorMetadataProfile>(); },
      [&](int64_t owner, std::shared_ptr<DapOperatorMetadataProfile> profile) {
        read.Add(owner, *profile);
        assets.At(owner).Metadata().Set(std::move(profile));
      });
  read.Sort();
  if (read.IsEmpty()) return;
  keywords.ForEach(read.Keys(), [&](int64_t owner, const KeywordEncapsulated& row) {
    read.At(owner).Keyword(static_cast<unsigned int>(row.nr), row.value);
  });
}

void MediaAssetReader::ReadAnnotations(Assets& assets, const std::string& keys) {
  ObjectsByKey<Annotation> read;
  annotations.ForEachInOrder(
      keys, [] { return std::make_shared<Annotation>(); },
      [&](int64_t owner, std::shared_ptr<Annotation> annotation) {
        read.Add(annotation->ObjectId(), *annotation);
        assets.At(owner).Annotations().push_back(std::move(annotation));
      });
  if (read.IsEmpty()) return;
  annotationMetadata.ForEach(read.Keys(), [&](int64_t owner, const MetadataRow& row) {
    MetadataTable::Fold(read.At(owner).Metadata(), row);
  });
}

namespace {

// Objects that links tie to assets, one object for each key. Assets must not share them, so that a change to
// one asset doesn't show in another: each asset after the first gets a clone.
template <class T>
class LinkedObjects {
 public:
  void Add(MediaAsset& asset, std::shared_ptr<T> object) {
    const int64_t key = object->ObjectId();
    const bool isFirst = objects.emplace(key, object).second;
    if (isFirst) byKey.Add(key, *object);
    links.push_back({&asset, key, isFirst});
  }

  ObjectsByKey<T>& Sorted() {
    byKey.Sort();
    return byKey;
  }

  /// Hands each asset its objects.
  template <class Use>
  void ForEachLink(Use use) {
    for (const Link& link : links) {
      const std::shared_ptr<T>& object = objects.at(link.key);
      use(*link.asset, link.isFirst ? object : std::shared_ptr<T>(object->Clone()));
    }
  }

 private:
  struct Link {
    MediaAsset* asset;
    int64_t key;
    bool isFirst;
  };

  std::unordered_map<int64_t, std::shared_ptr<T>> objects;
  ObjectsByKey<T> byKey;
  std::vector<Link> links;
};

// Nothing keeps a link from being stored twice.
template <class Container, class Element>
void InsertOnce(Container& container, const Element& element) {
  if (container.ConstFind(element) == container.cend()) container.Insert(element);
}

}  // namespace

void MediaAssetReader::ReadResources(Assets& assets, const std::string& keys) {
  LinkedObjects<MediaResource> read;
  resources.ForEach(
      keys, [] { return std::make_shared<MediaResource>(); },
      [&](int64_t owner, std::shared_ptr<MediaResource> resource) {
        read.Add(assets.At(owner), std::move(resource));
      });
  resourceReader.Read(read.Sorted());
  read.ForEachLink([](MediaAsset& asset, const std::shared_ptr<MediaResource>& resource) {
    InsertOnce(asset.MediaResources(),
               BusinessEntityModel::BaseTypes::SharedReference<MediaResource>(resource));
  });
}

void MediaAssetReader::ReadTracks(Assets& assets, const std::string& keys) {
  LinkedObjects<Track> read;
  tracks.ForEach(
      keys, [] { return std::make_shared<Track>(); },
      [&](int64_t owner, std::shared_ptr<Track> track) { read.Add(assets.At(owner), std::move(track)); });
  ReadChannels(read.Sorted());
  read.ForEachLink(
      [](MediaAsset& asset, const std::shared_ptr<Track>& track) { InsertOnce(asset.Tracks(), track); });
}

void MediaAssetReader::ReadChannels(ObjectsByKey<Track>& read) {
  if (read.IsEmpty()) return;
  Sqlite::PreparedStatement::Run run(channels, Database(), read.Keys());
  const Sqlite::CursorSqlite& cursor = run.Row();
  while (run.Step()) {
    auto channel = std::make_shared<TrackChannelToRemove>();
    channel->Stream(StreamReference(Identifier(cursor.GetString(1))));
    channel->EssenceNr(cursor.GetInt32(2));
    channel->ChannelNr(cursor.GetInt32(3));
    read.At(cursor.GetInt64(0)).Channels().push_back(std::move(channel));
  }
}

}  // namespace Oru::DataModel::MediaAssets::Database
