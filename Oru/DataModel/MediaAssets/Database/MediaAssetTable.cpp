#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"
#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/BoundaryColumns.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupItemTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/UnusedRows.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>
#include <typeinfo>
#include <utility>

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::MediaAsset)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using namespace BusinessEntityModel::BaseTypes;

namespace {

// Selects the rows of a table that are linked to an asset, whose key is the parameter.
template <class T>
Sqlite::PreparedStatement SelectLinked(Sqlite::ViewSqlite<T>& table, const LinkColumn& link) {
  Sqlite::QuerySqlite query;
  query.In("key", link.table, link.column, Sqlite::QuerySqlite().Equals("refMediaAsset", int64_t{}));
  return Sqlite::PreparedStatement(table.StatementGenerator().SelectToRun(query).text);
}

// The name and the description, with <b> and </b> around what a full-text search has found.
const std::string markedName = "highlight(MediaAssetFts, 0, '<b>', '</b>')";
const std::string markedDescription = "highlight(MediaAssetFts, 1, '<b>', '</b>')";

// The columns, each after a prefix, and two more.
template <std::size_t Count>
std::array<std::string, Count + 2> Extended(const std::string& prefix,
                                            const std::array<std::string, Count>& columns,
                                            const std::string& name, const std::string& description) {
  std::array<std::string, Count + 2> all;
  std::transform(columns.begin(), columns.end(), all.begin(),
                 [&](const std::string& column) { return prefix + column; });
  all[Count] = name;
  all[Count + 1] = description;
  return all;
}

void Replace(std::string& text, const std::string& part, const std::string& other) {
  text.replace(text.find(part), part.size(), other);
}

// Whether a part of a query names a column of the full-text index, or in `ambiguous` what each side of the
// join has a column of.
bool NamesFullTextIndex(std::string part, const std::set<std::string_view>& ambiguous) {
  std::transform(part.begin(), part.end(), part.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  if (part.find("fts") != std::string::npos) return true;
  constexpr const char* nameCharacters = "abcdefghijklmnopqrstuvwxyz0123456789_.";
  const std::string_view text = part;
  for (std::size_t begin = 0, end = 0; (begin = text.find_first_of(nameCharacters, end)) != text.npos;) {
    end = std::min(text.find_first_not_of(nameCharacters, begin), text.size());
    if (ambiguous.count(text.substr(begin, end - begin)) != 0) return true;
  }
  return false;
}

}  // namespace

const std::string MediaAssetTable::tableName = "MediaAsset";
const std::array<std::string, 13> MediaAssetTable::columnNames = {"key",
                                                                  "id",
                                                                  "assetType",
                                                                  "ancestor",
                                                                  "parent",
                                                                  "name",
                                                                  "description",
                                                                  "inBoundary",
                                                                  "inBoundaryMoving",
                                                                  "outBoundary",
                                                                  "outBoundaryMoving",
                                                                  "modificationDate",
                                                                  "creationDate"};
const std::string MediaAssetTable::objectIdFromIdentifierQuery = "SELECT key FROM MediaAsset WHERE id = ";
const std::string MediaAssetTable::fromClause =
    "MediaAsset JOIN MediaAssetFts ON  MediaAsset.key = MediaAssetFts.rowid";

const std::array<std::string, 15> MediaAssetTable::selectColumnNames =
    Extended(tableName + ".", columnNames, markedName, markedDescription);
const std::array<std::string, 15> MediaAssetTable::selectColumnAliases =
    Extended("", columnNames, "nameFts", "descriptionFts");

const std::string MediaAssetTable::lazyMediaResourceQuery =
    "SELECT id FROM MediaResource WHERE key IN(SELECT refMediaResource FROM RelationMediaAssetMediaResource "
    "WHERE refMediaAsset = ";

MediaAssetTable::MediaAssetTable(Sqlite::DatabaseSqlite& db)
    : DeclaredTable(db),
      lazyResources(lazyMediaResourceQuery + "?);"),
      keyByIdentifier(objectIdFromIdentifierQuery + ":id") {
  GenerateStatements();
  plainSelectStatement = selectStatement;
  Replace(plainSelectStatement, markedName, "CAST(" + selectColumnNames[Column::Name] + " AS TEXT)");
  Replace(plainSelectStatement, markedDescription,
          "CAST(" + selectColumnNames[Column::Description] + " AS TEXT)");
  Replace(plainSelectStatement, fromClause, tableName);
  mediaResouceTable = std::make_unique<MediaResourceTable>(db);
  relationMediasTable = std::make_unique<RelationMediasTable>(db);
  dapOperatorMetadataTable = std::make_unique<DapOperatorMetadataTable>(db);
  metadataTable = std::make_unique<MetadataTable>("MetadataMediaAsset", db);
  timeBoundsTable = std::make_unique<TimeBoundsTable>("TimeBoundsMediaAsset", db);
  trackTable = std::make_unique<TrackTable>(db);
  relationAssetTrackTable = std::make_unique<RelationAssetTrackTable>(db);
  annotationTable = std::make_unique<AnnotationTable>(db);
  // Last: it is given this table, which must be whole by then.
  mediaAssetGroupTable = std::make_unique<MediaAssetGroupTable>(*this);

  const LinkColumn resourceLink{
      RelationMediasTable::tableName,
      RelationMediasTable::columnNames[RelationMediasTable::Column::RefMediaResource]};
  const LinkColumn trackLink{RelationAssetTrackTable::tableName,
                             RelationAssetTrackTable::columnNames[RelationAssetTrackTable::Column::RefTrack]};
  const LinkColumn groupLink{
      MediaAssetGroupItemTable::tableName,
      MediaAssetGroupItemTable::columnNames[MediaAssetGroupItemTable::Column::RefMediaAssetGroup]};
  linkedResources = SelectLinked<MediaResource>(*mediaResouceTable, resourceLink);
  linkedTracks = SelectLinked<Track>(*trackTable, trackLink);
  unusedMediaResources = std::make_unique<UnusedRows>(db, MediaResourceTable::tableName, resourceLink);
  unusedTracks = std::make_unique<UnusedRows>(db, TrackTable::tableName, trackLink);
  emptyAssetGroups = std::make_unique<UnusedRows>(db, MediaAssetGroupTable::tableName, groupLink);
}

MediaAssetTable::~MediaAssetTable() = default;

const std::string& MediaAssetTable::GetSelectColumnName(int32_t index) const {
  return selectColumnNames[static_cast<std::size_t>(index)];
}

const std::string& MediaAssetTable::GetSelectColumnAlias(int32_t index) const {
  return selectColumnAliases[static_cast<std::size_t>(index)];
}

int32_t MediaAssetTable::GetSelectColumnsCount() const {
  return static_cast<int32_t>(selectColumnNames.size());
}

const std::string& MediaAssetTable::GetFromClause() const {
  return fromClause;
}

bool MediaAssetTable::IsPlain(const Sqlite::QuerySqlite& query) const {
  // A name that the join refuses as ambiguous is refused by either text. In an order it is the selected column.
  static const std::set<std::string_view> inCondition = {"name",  "description", "rank",
                                                         "rowid", "oid",         "_rowid_"};
  static const std::set<std::string_view> inOrder = {"rank", "rowid", "oid", "_rowid_"};
  return !NamesFullTextIndex(query.GetFilterText(), inCondition) &&
         !NamesFullTextIndex(query.GetOrderBySQL(), inOrder);
}

int64_t MediaAssetTable::GetObjectIdFromIdentifier(const Identifier& id) const {
  return keyByIdentifier.FindKey(AttachedDatabase(), id.Value());
}

bool MediaAssetTable::Save(MediaAsset& obj, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    if (obj.ObjectId() == -1) obj.ObjectId(GetObjectIdFromIdentifier(obj.Id()));
    const bool isNew = obj.ObjectId() == -1;
    const Sqlite::OwnerRow row = Sqlite::OwnerRowThatIs(isNew);
    // Nothing keeps a link from being stored twice, so links are written with the asset's row and never again.
    return DeclaredTable::Save(obj, lazy) && annotationTable->Write(obj.Annotations(), obj.ObjectId(), row) &&
           timeBoundsTable->Write(obj.PhysicalTimebounds(), obj.ObjectId(), row) &&
           dapOperatorMetadataTable->Write(obj.Metadata(), obj.ObjectId(), row) &&
           metadataTable->Write(obj.Metadata(), obj.ObjectId(), row) &&
           mediaResouceTable->Write(obj.MediaResources(), lazy) && (!isNew || LinkMediaResources(obj)) &&
           trackTable->Write(obj.Tracks()) && (!isNew || LinkTracks(obj));
  });
}

bool MediaAssetTable::LinkMediaResources(MediaAsset& obj) {
  return Sqlite::WriteEach(obj.MediaResources(), [&](auto& reference) {
    if (!reference.Pointer()) return true;
    RelationMedias link{obj.ObjectId(), reference.Pointer()->ObjectId()};
    return relationMediasTable->Save(link);
  });
}

bool MediaAssetTable::LinkTracks(MediaAsset& obj) {
  return Sqlite::WriteEachObject(AttachedDatabase(), obj.Tracks(), [&](const Track& track) {
    RelationAssetTrack link{obj.ObjectId(), track.ObjectId()};
    return relationAssetTrackTable->Save(link);
  });
}

void MediaAssetTable::WatchDependentData() {
  for (const auto* rows : {&unusedMediaResources, &unusedTracks, &emptyAssetGroups})
    (*rows)->Watch();
}

bool MediaAssetTable::Delete(Query& query) {
  WatchDependentData();
  return DeclaredTable::Delete(query) && CleanUpDependentData();
}

bool MediaAssetTable::DeleteByServerId(ZuServerId serverId) {
  const std::string text =
      "DELETE FROM MediaAsset WHERE MediaAsset.key IN "
      "(SELECT DISTINCT DapOperatorMetadata.refMediaAsset FROM DapOperatorMetadata "
      "WHERE DapOperatorMetadata.zuServerId=" +
      std::to_string(serverId.SerialNumber()) + ");";
  WatchDependentData();
  return AttachedDatabase().ExecuteStatement(text) && CleanUpDependentData();
}

bool MediaAssetTable::DeleteUnusedMediaResources() {
  return unusedMediaResources->Delete([this](Query& unused) { return mediaResouceTable->Delete(unused); });
}

bool MediaAssetTable::DeleteUnusedTracks() {
  return unusedTracks->Delete([this](Query& unused) { return trackTable->Delete(unused); });
}

bool MediaAssetTable::DeleteEmptyAssetGroups() {
  return emptyAssetGroups->Delete([this](Query& unused) { return mediaAssetGroupTable->Delete(unused); });
}

bool MediaAssetTable::CleanUpDependentData() {
  return DeleteUnusedMediaResources() && DeleteUnusedTracks() && DeleteEmptyAssetGroups();
}

void MediaAssetTable::ReadTimebounds(MediaAsset& mediaAsset) {
  timeBoundsTable->Read(mediaAsset.ObjectId(), mediaAsset.PhysicalTimebounds());
}

void MediaAssetTable::ReadMetadata(MediaAsset& mediaAsset) {
  metadataTable->Read(mediaAsset.ObjectId(), mediaAsset.Metadata());
}

void MediaAssetTable::AddMetadata(MetadataProfileDictionary& metadataProfileDictionary,
                                  const MetadataRow& metadataRow) const {
  MetadataTable::Fold(metadataProfileDictionary, metadataRow);
}

// The operator's profile that the asset holds; null when it holds none.
std::shared_ptr<DapOperatorMetadataProfile> MediaAssetTable::OperatorProfile(MediaAsset& mediaAsset) const {
  auto profile = mediaAsset.Metadata().Get<DapOperatorMetadataProfile>();
  const bool isOther =
      !profile && mediaAsset.Metadata().Contains(DapOperatorMetadataProfile::StaticFullyQualifiedName());
  if (isOther) throw std::bad_cast();
  return profile;
}

void MediaAssetTable::ReadDapOperatorMetadata(MediaAsset& mediaAsset) {
  const auto held = OperatorProfile(mediaAsset);
  const auto profile = held ? held : std::make_shared<DapOperatorMetadataProfile>();
  dapOperatorMetadataTable->ReadOwned(mediaAsset.ObjectId(), *profile);
  if (!held) mediaAsset.Metadata().Set(profile);
  ReadDapOperatorKeyword(mediaAsset);
}

void MediaAssetTable::ReadDapOperatorKeyword(MediaAsset& mediaAsset) {
  auto profile = OperatorProfile(mediaAsset);
  if (!profile) {
    profile = std::make_shared<DapOperatorMetadataProfile>();
    mediaAsset.Metadata().Set(profile);
  }
  GetDapOperatorKeywordsTable().ForEachOwned(mediaAsset.ObjectId(), [&](const KeywordEncapsulated& row) {
    profile->Keyword(static_cast<unsigned int>(row.nr), row.value);
  });
}

void MediaAssetTable::ReadAnnotations(MediaAsset& mediaAsset) {
  annotationTable->ForEachOwned(
      mediaAsset.ObjectId(), [] { return std::make_shared<Annotation>(); },
      [&](std::shared_ptr<Annotation> annotation) {
        ReadMetadata(annotation->ObjectId(), *annotation);
        mediaAsset.Annotations().push_back(std::move(annotation));
      });
}

void MediaAssetTable::ReadMetadata(int64_t id, Annotation& annotation) {
  annotationTable->GetMetadataTable().Read(id, annotation.Metadata());
}

void MediaAssetTable::ReadMediaResources(MediaAsset& mediaAsset) {
  mediaResouceTable->ForEachNew(
      linkedResources, [] { return std::make_shared<MediaResource>(Identifier::Empty()); },
      [&](std::shared_ptr<MediaResource> resource) {
        mediaResouceTable->ReadMetadata(*resource);
        mediaResouceTable->ReadTimebounds(*resource);
        mediaResouceTable->ReadStreams(*resource);
        mediaAsset.MediaResources().Insert(SharedReference<MediaResource>(std::move(resource)));
      },
      mediaAsset.ObjectId());
}

void MediaAssetTable::ReadMediaResourcesLazy(MediaAsset& mediaAsset) {
  Sqlite::PreparedStatement::Run run(lazyResources, AttachedDatabase(), mediaAsset.ObjectId());
  const Sqlite::CursorSqlite& cursor = run.Row();
  while (run.Step()) {
    mediaAsset.MediaResources().Insert(SharedReference<MediaResource>(Identifier(cursor.GetString(0))));
  }
}

template <class ReadChannels>
void MediaAssetTable::ReadTracks(MediaAsset& mediaAsset, ReadChannels readChannels) {
  trackTable->ForEachNew(
      linkedTracks, [] { return std::make_shared<Track>(); },
      [&](const std::shared_ptr<Track>& track) {
        readChannels(*track);
        mediaAsset.Tracks().Insert(track);
      },
      mediaAsset.ObjectId());
}

void MediaAssetTable::ReadTrack(MediaAsset& mediaAsset) {
  ReadTracks(mediaAsset, [this](Track& track) { trackTable->ReadTrackChannel(track); });
}

void MediaAssetTable::ReadTrackLazy(MediaAsset& mediaAsset) {
  ReadTracks(mediaAsset, [this](Track& track) { trackTable->ReadTrackChannelLazy(track); });
}

bool MediaAssetTable::BindToCursor(Cursor& cursor, MediaAsset& obj) {
  const Identifier& ancestor = obj.Ancestor().Id();
  const Identifier& parent = obj.Parent().Id();
  // An empty reference stays unbound, which stores NULL.
  return (ancestor.IsEmpty() || cursor.Bind(columnNames[Column::Ancestor], ancestor.Value())) &&
         (parent.IsEmpty() || cursor.Bind(columnNames[Column::Parent], parent.Value())) &&
         cursor.Bind(columnNames[Column::Id], obj.Id().Value()) &&
         cursor.Bind(columnNames[Column::AssetType], static_cast<int32_t>(obj.AssetType())) &&
         cursor.Bind(columnNames[Column::Name], obj.Name()) &&
         cursor.Bind(columnNames[Column::Description], obj.Description()) &&
         BindBoundary(cursor, columnNames[Column::InBoundary], columnNames[Column::InBoundaryMoving],
                      obj.PhysicalTimebounds().InBoundary()) &&
         BindBoundary(cursor, columnNames[Column::OutBoundary], columnNames[Column::OutBoundaryMoving],
                      obj.PhysicalTimebounds().OutBoundary()) &&
         cursor.Bind(columnNames[Column::ModificationDate], int64_t{obj.ModificationDate()}) &&
         cursor.Bind(columnNames[Column::CreationDate], int64_t{obj.CreationDate()});
}

void MediaAssetTable::ReadFromCursor(const Cursor& cursor, MediaAsset& obj, bool) {
  obj.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  obj.Id(cursor.GetString(columnNames[Column::Id]));
  obj.AssetType(static_cast<AssetType>(cursor.GetInt32(columnNames[Column::AssetType])));
  if (!cursor.IsNull(columnNames[Column::Ancestor]))
    obj.Ancestor(MediaAssetReference(Identifier(cursor.GetString(columnNames[Column::Ancestor]))));
  if (!cursor.IsNull(columnNames[Column::Parent]))
    obj.Parent(MediaAssetReference(Identifier(cursor.GetString(columnNames[Column::Parent]))));
  obj.Name(cursor.GetString(columnNames[Column::Name]));
  obj.Description(cursor.GetString(columnNames[Column::Description]));
  obj.PhysicalTimebounds().InBoundary(
      ReadBoundary(cursor, columnNames[Column::InBoundary], columnNames[Column::InBoundaryMoving]));
  obj.PhysicalTimebounds().OutBoundary(
      ReadBoundary(cursor, columnNames[Column::OutBoundary], columnNames[Column::OutBoundaryMoving]));
  // In this order: the creation date sets both dates, and the entity checks the other against it.
  obj.CreationDate(cursor.GetInt64(columnNames[Column::CreationDate]));
  obj.ModificationDate(cursor.GetInt64(columnNames[Column::ModificationDate]));
}

}  // namespace Oru::DataModel::MediaAssets::Database
