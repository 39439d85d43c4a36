#include "Oru/DataModel/MediaAssets/Database/TrackChannelTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::Database::TrackChannelEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;

const std::string TrackChannelTable::tableName = "TrackChannel";
const std::array<std::string, 3> TrackChannelTable::columnNames = {"refTrack", "refEssence", "channelNr"};

TrackChannelTable::TrackChannelTable(Sqlite::DatabaseSqlite& db)
    : KeylessTable(db),
      essenceByStreamAndNr(
          "SELECT e.key as essenceKey FROM Essence e JOIN Stream s ON e.refStream = s.key"
          " WHERE e.nr = :nr and s.id = :id") {
  GenerateStatements();
  SetOwnerColumn(columnNames[Column::RefTrack]);
  streamTable = std::make_unique<StreamTable>(db);
}

TrackChannelTable::~TrackChannelTable() = default;

bool TrackChannelTable::Write(std::vector<std::shared_ptr<TrackChannelToRemove>>& channels, int64_t trackKey,
                              bool lazy) {
  return Write(channels, trackKey, lazy, Sqlite::OwnerRow::Stored);
}

bool TrackChannelTable::Write(std::vector<std::shared_ptr<TrackChannelToRemove>>& channels, int64_t trackKey,
                              bool, Sqlite::OwnerRow track) {
  return DeleteOwned(trackKey, track) &&
         Sqlite::WriteEachObject(AttachedDatabase(), channels, [&](TrackChannelToRemove& channel) {
           const std::string& streamId = channel.Stream().Id().Value();
           const int64_t essenceKey =
               essenceByStreamAndNr.FindKey(AttachedDatabase(), channel.EssenceNr(), streamId);
           if (essenceKey == -1) {
             AttachedDatabase().LogFailure("essence " + std::to_string(channel.EssenceNr()) + " of stream " +
                                           streamId + ", which a track refers to, isn't stored");
             return false;
           }
           TrackChannelEncapsulated row(trackKey, essenceKey, channel.ChannelNr());
           return Save(row);
         });
}

bool TrackChannelTable::BindToCursor(Cursor& cursor, TrackChannelEncapsulated& obj) {
  return cursor.Bind(columnNames[Column::RefTrack], obj.trackId) &&
         cursor.Bind(columnNames[Column::RefEssence], obj.essenceId) &&
         cursor.Bind(columnNames[Column::ChannelNr], obj.channelNr);
}

void TrackChannelTable::ReadFromCursor(const Cursor& cursor, TrackChannelEncapsulated& obj, bool) {
  obj.trackId = cursor.GetInt64(columnNames[Column::RefTrack]);
  obj.essenceId = cursor.GetInt64(columnNames[Column::RefEssence]);
  obj.channelNr = cursor.GetInt64(columnNames[Column::ChannelNr]);
}

}  // namespace Oru::DataModel::MediaAssets::Database
