#include "Oru/DataModel/MediaAssets/Database/StreamTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"
#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/Database/AudioEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/Changeable.h"
#include "Oru/DataModel/MediaAssets/Database/VideoEssenceTable.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include <algorithm>
#include <utility>

template class Oru::Common::Databases::Sqlite::ObjectCursorSqlite<
    Oru::BusinessEntityModel::BaseTypes::PersistentObject,
    Oru::DataModel::MediaAssets::Database::StreamEncapsulated>;
ORU_WRITER_TEMPLATES(, Oru::BusinessEntityModel::BaseTypes::PersistentObject,
                     Oru::DataModel::MediaAssets::Database::StreamEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::Identifier;
using BusinessEntityModel::BaseTypes::PersistentObject;

namespace {

template <class Kind, class KindTable>
void ReadEssencesOfKind(KindTable& kindTable, int64_t streamKey,
                        std::vector<std::unique_ptr<Essence>>& essences) {
  kindTable.ForEachOwned(
      streamKey, [] { return std::make_unique<Kind>(); },
      [&](std::unique_ptr<Kind> essence) { essences.push_back(std::move(essence)); });
}

}  // namespace

const std::string StreamTable::tableName = "Stream";
const std::array<std::string, 4> StreamTable::columnNames = {"key", "id", "refMediaResource",
                                                             "wrapperFormat"};
const std::string StreamTable::objectIdFromIdentifierQuery = "SELECT key FROM Stream WHERE id = ";

StreamTable::StreamTable(Sqlite::DatabaseSqlite& db)
    : DeclaredTable(db), keyByIdentifier(objectIdFromIdentifierQuery + ":id") {
  GenerateStatements();
  SetOwnerColumn(columnNames[Column::RefMediaResource]);
  essenceTable = std::make_unique<EssenceTable>(db);
  timeBoundsTable = std::make_unique<TimeBoundsTable>("TimeBoundsStream", db);
  metadataTable = std::make_unique<MetadataTable>("MetadataStream", db);
}

StreamTable::~StreamTable() = default;

bool StreamTable::Save(StreamEncapsulated& obj, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    Stream& stream = Changeable(obj.stream);
    if (GetObjectId(obj) == -1) SetObjectId(obj, GetObjectIdFromIdentifier(stream.Id()));
    const Sqlite::OwnerRow row = Sqlite::OwnerRowThatIs(GetObjectId(obj) == -1);
    return DeclaredTable::Save(obj, lazy) &&
           timeBoundsTable->Write(stream.Timebounds(), stream.ObjectId(), row) &&
           metadataTable->Write(*stream.Metadata(), stream.ObjectId(), row) &&
           essenceTable->Write(stream.Essences(), stream.ObjectId(), row);
  });
}

bool StreamTable::Write(StreamReferenceVector& references, int64_t fk, bool lazy) {
  return Sqlite::WriteEach(references, [&](StreamReference& reference) {
    if (!reference.Pointer()) return true;
    StreamEncapsulated row(fk, reference);
    return Save(row, lazy);
  });
}

void StreamTable::ReadMetadata(Stream& stream) {
  metadataTable->Read(stream.ObjectId(), *stream.Metadata());
}

void StreamTable::ReadTimebounds(Stream& stream) {
  timeBoundsTable->Read(stream.ObjectId(), stream.Timebounds());
}

void StreamTable::ReadEssences(Stream& stream) {
  std::vector<std::unique_ptr<Essence>> essences;
  ReadVideosEssences(stream.ObjectId(), essences);
  ReadAudioEssences(stream.ObjectId(), essences);
  ReadDataEssences(stream.ObjectId(), essences);
  std::sort(essences.begin(), essences.end(),
            [](const auto& left, const auto& right) { return left->Nr() < right->Nr(); });
  for (std::unique_ptr<Essence>& essence : essences)
    stream.Essences().Add(std::move(essence));
}

void StreamTable::ReadVideosEssences(int64_t streamKey, std::vector<std::unique_ptr<Essence>>& essences) {
  ReadEssencesOfKind<VideoEssence>(GetVideoEssenceTable(), streamKey, essences);
}

void StreamTable::ReadAudioEssences(int64_t streamKey, std::vector<std::unique_ptr<Essence>>& essences) {
  ReadEssencesOfKind<AudioEssence>(GetAudioEssenceTable(), streamKey, essences);
}

void StreamTable::ReadDataEssences(int64_t streamKey, std::vector<std::unique_ptr<Essence>>& essences) {
  ReadEssencesOfKind<DataEssence>(GetDataEssenceTable(), streamKey, essences);
}

int64_t StreamTable::GetObjectIdFromIdentifier(const Identifier& id) const {
  return keyByIdentifier.FindKey(AttachedDatabase(), id.Value());
}

bool StreamTable::BindToCursor(Cursor& cursor, StreamEncapsulated& obj) {
  return cursor.Bind(columnNames[Column::Id], obj.stream.Id().Value()) &&
         cursor.Bind(columnNames[Column::RefMediaResource], obj.fk) &&
         cursor.Bind(columnNames[Column::WrapperFormat], static_cast<int32_t>(obj.stream.Format()));
}

void StreamTable::ReadFromCursor(const Cursor& cursor, PersistentObject& obj, bool) {
  auto& stream = static_cast<Stream&>(obj);
  stream.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  stream.Id(cursor.GetString(columnNames[Column::Id]));
  stream.Format(static_cast<WrapperFormat>(cursor.GetInt32(columnNames[Column::WrapperFormat])));
}

void StreamTable::SetObjectId(StreamEncapsulated& obj, int64_t objectId) {
  Changeable(obj.stream).ObjectId(objectId);
}

}  // namespace Oru::DataModel::MediaAssets::Database
