#include "Oru/DataModel/MediaAssets/Database/MediaResourceTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"
#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"

#include <utility>

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::MediaResource)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;
using BusinessEntityModel::BaseTypes::PersistentObject;

const std::string MediaResourceTable::tableName = "MediaResource";
const std::array<std::string, 6> MediaResourceTable::columnNames = {
    "key", "id", "name", "generalFormat", "modificationDate", "creationDate"};
const std::string MediaResourceTable::objectIdFromIdentifierQuery =
    "SELECT key FROM MediaResource WHERE id = ";

MediaResourceTable::MediaResourceTable(Sqlite::DatabaseSqlite& db)
    : DeclaredTable(db), keyByIdentifier(objectIdFromIdentifierQuery + ":id") {
  GenerateStatements();
  streamTable = std::make_unique<StreamTable>(db);
  timeBoundsTable = std::make_unique<TimeBoundsTable>("TimeBoundsMediaResource", db);
  metadataTable = std::make_unique<MetadataTable>("MetadataMediaResource", db);
}

MediaResourceTable::~MediaResourceTable() = default;

bool MediaResourceTable::Save(MediaResource& obj, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    if (obj.ObjectId() == -1) obj.ObjectId(GetObjectIdFromIdentifier(obj.Id()));
    const Sqlite::OwnerRow row = Sqlite::OwnerRowThatIs(obj.ObjectId() == -1);
    return DeclaredTable::Save(obj, lazy) && timeBoundsTable->Write(obj.Timebounds(), obj.ObjectId(), row) &&
           metadataTable->Write(*obj.Metadata(), obj.ObjectId(), row) &&
           streamTable->Write(obj.Streams(), obj.ObjectId(), lazy);
  });
}

bool MediaResourceTable::Write(MediaResourceReferenceVector& references, bool lazy) {
  return Sqlite::WriteEach(
      references, [&](auto& reference) { return !reference.Pointer() || Save(*reference.Pointer(), lazy); });
}

void MediaResourceTable::ReadMetadata(MediaResource& mediaResource) {
  metadataTable->Read(mediaResource.ObjectId(), *mediaResource.Metadata());
}

void MediaResourceTable::ReadTimebounds(MediaResource& mediaResource) {
  timeBoundsTable->Read(mediaResource.ObjectId(), mediaResource.Timebounds());
}

void MediaResourceTable::ReadStreams(MediaResource& mediaResource) {
  ReadStreams(mediaResource, Depth::Deep);
}

void MediaResourceTable::ReadStreamsLazy(MediaResource& mediaResource) {
  ReadStreams(mediaResource, Depth::Lazy);
}

void MediaResourceTable::ReadStreams(MediaResource& mediaResource, Depth depth) {
  streamTable->ForEachOwned(
      mediaResource.ObjectId(), [] { return std::make_unique<Stream>(); },
      [&](std::unique_ptr<Stream> stream) {
        streamTable->ReadTimebounds(*stream);
        streamTable->ReadMetadata(*stream);
        if (depth == Depth::Deep) streamTable->ReadEssences(*stream);
        mediaResource.Streams().emplace_back(std::move(stream));
      });
}

int64_t MediaResourceTable::GetObjectIdFromIdentifier(const Identifier& id) const {
  return keyByIdentifier.FindKey(AttachedDatabase(), id.Value());
}

bool MediaResourceTable::BindToCursor(Cursor& cursor, MediaResource& object) {
  return cursor.Bind(columnNames[Column::Id], object.Id().Value()) &&
         cursor.Bind(columnNames[Column::Name], object.Name()) &&
         cursor.Bind(columnNames[Column::GeneralFormat], static_cast<int32_t>(object.GeneralFormat())) &&
         cursor.Bind(columnNames[Column::ModificationDate], int64_t{object.ModificationDate()}) &&
         cursor.Bind(columnNames[Column::CreationDate], int64_t{object.CreationDate()});
}

void MediaResourceTable::ReadFromCursor(const Cursor& cursor, MediaResource& object, bool) {
  object.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  object.Id(cursor.GetString(columnNames[Column::Id]));
  object.Name(cursor.GetString(columnNames[Column::Name]));
  object.GeneralFormat(static_cast<ResourceFormat>(cursor.GetInt32(columnNames[Column::GeneralFormat])));
  // In this order: the creation date sets both dates, and the entity checks the other against it.
  object.CreationDate(cursor.GetInt64(columnNames[Column::CreationDate]));
  object.ModificationDate(cursor.GetInt64(columnNames[Column::ModificationDate]));
}

}  // namespace Oru::DataModel::MediaAssets::Database
