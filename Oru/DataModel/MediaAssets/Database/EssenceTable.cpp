#include "Oru/DataModel/MediaAssets/Database/EssenceTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"
#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"
#include "Oru/DataModel/MediaAssets/Database/AudioEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/Changeable.h"
#include "Oru/DataModel/MediaAssets/Database/VideoEssenceTable.h"

ORU_TABLE_TEMPLATES(, Oru::BusinessEntityModel::BaseTypes::PersistentObject,
                    Oru::DataModel::MediaAssets::Database::EssenceEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using BusinessEntityModel::BaseTypes::PersistentObject;

namespace {

std::size_t Index(Essence::Type type) {
  return static_cast<std::size_t>(type);
}

}  // namespace

const std::string EssenceTable::tableName = "Essence";
const std::array<std::string, 4> EssenceTable::columnNames = {"key", "refStream", "nr", "channelCount"};

EssenceTable::EssenceTable(Sqlite::DatabaseSqlite& db)
    : DeclaredTable(db), keyByNr("SELECT key FROM Essence WHERE refStream = ? AND nr = ?") {
  GenerateStatements();
  table[Index(Essence::Type::Audio)] = std::make_unique<AudioEssenceTable>(*this);
  table[Index(Essence::Type::Data)] = std::make_unique<DataEssenceTable>(*this);
  table[Index(Essence::Type::Video)] = std::make_unique<VideoEssenceTable>(*this);
  metadataTable = std::make_unique<MetadataTable>("MetadataEssence", db);
}

EssenceTable::~EssenceTable() = default;

bool EssenceTable::Write(const EssenceArray& essences, int64_t fk) {
  return Write(essences, fk, Sqlite::OwnerRow::Stored);
}

bool EssenceTable::Write(const EssenceArray& essences, int64_t fk, Sqlite::OwnerRow stream) {
  // Numbers that aren't the positions may occur twice. The second essence then replaces the first.
  bool areAbsent = stream == Sqlite::OwnerRow::New;
  int32_t position = 0;
  return Sqlite::WriteEach(essences, [&](const std::unique_ptr<Essence>& essence) {
    EssenceEncapsulated row(fk, *essence);
    areAbsent = areAbsent && essence->Nr() == position++;
    row.isAbsent = areAbsent;
    return table[Index(essence->GetType())]->Save(row);
  });
}

bool EssenceTable::Save(EssenceEncapsulated& obj, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    if (GetObjectId(obj) == -1 && !obj.isAbsent) {
      SetObjectId(obj, GetObjectIdFromEssenceNr(obj.fk, obj.essence.Nr()));
    }
    const Sqlite::OwnerRow row = Sqlite::OwnerRowThatIs(GetObjectId(obj) == -1);
    return DeclaredTable::Save(obj, lazy) &&
           metadataTable->Write(*Changeable(obj.essence).Metadata(), GetObjectId(obj), row);
  });
}

void EssenceTable::ReadMetadata(Essence& essence) {
  metadataTable->Read(essence.ObjectId(), *essence.Metadata());
}

int64_t EssenceTable::GetObjectIdFromEssenceNr(int64_t streamRef, int32_t number) {
  return keyByNr.FindKey(AttachedDatabase(), streamRef, number);
}

AudioEssenceTable& EssenceTable::GetAudioEssenceTable() {
  return dynamic_cast<AudioEssenceTable&>(*table[Index(Essence::Type::Audio)]);
}

DataEssenceTable& EssenceTable::GetDataEssenceTable() {
  return dynamic_cast<DataEssenceTable&>(*table[Index(Essence::Type::Data)]);
}

VideoEssenceTable& EssenceTable::GetVideoEssenceTable() {
  return dynamic_cast<VideoEssenceTable&>(*table[Index(Essence::Type::Video)]);
}

bool EssenceTable::BindToCursor(Cursor& cursor, EssenceEncapsulated& obj) {
  return cursor.Bind(columnNames[Column::RefStream], obj.fk) &&
         cursor.Bind(columnNames[Column::Nr], obj.essence.Nr()) &&
         cursor.Bind(columnNames[Column::ChannelCount], obj.essence.ChannelCount());
}

void EssenceTable::ReadFromCursor(const Cursor& cursor, PersistentObject& obj, bool) {
  auto& essence = static_cast<Essence&>(obj);
  essence.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  essence.Nr(cursor.GetInt32(columnNames[Column::Nr]));
  essence.ChannelCount(cursor.GetInt32(columnNames[Column::ChannelCount]));
}

void EssenceTable::SetObjectId(EssenceEncapsulated& obj, int64_t objectId) {
  Changeable(obj.essence).ObjectId(objectId);
}

}  // namespace Oru::DataModel::MediaAssets::Database
