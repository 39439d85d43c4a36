#include "Oru/DataModel/MediaAssets/Database/AudioEssenceTable.h"

#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/RateColumns.h"

namespace Oru::DataModel::MediaAssets::Database {

using BusinessEntityModel::BaseTypes::PersistentObject;
using Common::Databases::Cursor;

const std::string AudioEssenceTable::tableName = "AudioEssence";
const std::array<std::string, 8> AudioEssenceTable::columnNames = {
    "refEssence",    "audioCodec",    "bitRate",  "bitRateMode",
    "sampleRateNum", "sampleRateDen", "bitDepth", "fourCC"};
const std::string AudioEssenceTable::fromClause =
    "Essence JOIN AudioEssence ON Essence.key == AudioEssence.refEssence";

AudioEssenceTable::AudioEssenceTable(EssenceTable& table) : EssenceKindTable(table) {
  GenerateStatements();
  SetOwnerColumn(EssenceTable::columnNames[EssenceTable::Column::RefStream]);
}

AudioEssenceTable::~AudioEssenceTable() = default;

bool AudioEssenceTable::BindToCursor(Cursor& cursor, EssenceEncapsulated& obj) {
  const auto& audio = static_cast<const AudioEssence&>(obj.essence);
  return EssenceKindTable::BindToCursor(cursor, obj) &&
         cursor.Bind(columnNames[Column::AudioCodec], static_cast<int32_t>(audio.AudioCodec())) &&
         cursor.Bind(columnNames[Column::BitRate], audio.BitRate()) &&
         cursor.Bind(columnNames[Column::BitRateMode], static_cast<int32_t>(audio.BitRateMode())) &&
         BindRate(cursor, columnNames[Column::SampleRateNum], columnNames[Column::SampleRateDen],
                  audio.SampleRate()) &&
         cursor.Bind(columnNames[Column::BitDepth], audio.BitDepth()) &&
         cursor.Bind(columnNames[Column::FourCC], audio.FourCC());
}

void AudioEssenceTable::ReadFromCursor(const Cursor& cursor, PersistentObject& obj, bool lazy) {
  EssenceKindTable::ReadFromCursor(cursor, obj, lazy);
  auto& audio = static_cast<AudioEssence&>(obj);
  audio.AudioCodec(static_cast<AudioCodingFormat>(cursor.GetInt32(columnNames[Column::AudioCodec])));
  audio.BitRate(cursor.GetInt32(columnNames[Column::BitRate]));
  audio.BitRateMode(static_cast<BitRateMode>(cursor.GetInt32(columnNames[Column::BitRateMode])));
  audio.SampleRate(ReadRate(cursor, columnNames[Column::SampleRateNum], columnNames[Column::SampleRateDen]));
  audio.BitDepth(cursor.GetInt32(columnNames[Column::BitDepth]));
  audio.FourCC(cursor.GetString(columnNames[Column::FourCC]));
}

}  // namespace Oru::DataModel::MediaAssets::Database
