#include "Oru/DataModel/MediaAssets/Database/TrackTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/FalseWhenRefused.h"
#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"

#include <utility>

ORU_ENTITY_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::Track)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using namespace BusinessEntityModel::BaseTypes;

namespace {

const std::string lazyTrackChannelQuery =
    "SELECT s.id as streamId, e.nr as essenceNr, t.channelNr as channelNr "
    "FROM TrackChannel t JOIN Essence e ON  t.refEssence = e.key JOIN Stream s ON e.refStream = s.key "
    "WHERE t.refTrack = ?;";

}  // namespace

const std::string TrackTable::tableName = "Track";
const std::array<std::string, 3> TrackTable::columnNames = {"key", "id", "name"};
const std::string TrackTable::objectIdFromIdentifierQuery = "SELECT key FROM Track WHERE id = ";

TrackTable::TrackTable(Sqlite::DatabaseSqlite& db)
    : DeclaredTable(db),
      keyByIdentifier(objectIdFromIdentifierQuery + ":id"),
      lazyChannels(lazyTrackChannelQuery) {
  GenerateStatements();
  trackChannelTable = std::make_unique<TrackChannelTable>(db);
  streamTable = std::make_unique<StreamTable>(db);
  Sqlite::QuerySqlite byId;
  byId.Equals(StreamTable::columnNames[StreamTable::Column::Id], std::string());
  streamById = Sqlite::PreparedStatement(streamTable->StatementGenerator().SelectToRun(byId).text);
}

TrackTable::~TrackTable() = default;

bool TrackTable::Write(const SortedVectorSharedPointer<Track>& tracks) {
  return Sqlite::WriteEachObject(AttachedDatabase(), tracks, [&](Track& track) { return Save(track); });
}

bool TrackTable::Save(Track& obj, bool lazy) {
  return Sqlite::FalseWhenRefused([&] {
    if (obj.ObjectId() == -1) obj.ObjectId(GetObjectIdFromIdentifier(obj.Id()));
    const Sqlite::OwnerRow row = Sqlite::OwnerRowThatIs(obj.ObjectId() == -1);
    return DeclaredTable::Save(obj, lazy) &&
           trackChannelTable->Write(obj.Channels(), obj.ObjectId(), lazy, row);
  });
}

void TrackTable::ReadTrackChannelLazy(Track& track) {
  Sqlite::PreparedStatement::Run run(lazyChannels, AttachedDatabase(), track.ObjectId());
  const Sqlite::CursorSqlite& cursor = run.Row();
  while (run.Step()) {
    auto channel = std::make_shared<TrackChannelToRemove>();
    channel->Stream(StreamReference(Identifier(cursor.GetString(0))));
    channel->EssenceNr(cursor.GetInt32(1));
    channel->ChannelNr(cursor.GetInt32(2));
    track.Channels().push_back(std::move(channel));
  }
}

void TrackTable::ReadTrackChannel(Track& track) {
  ReadTrackChannelLazy(track);
  for (const std::shared_ptr<TrackChannelToRemove>& channel : track.Channels()) {
    auto stream = std::make_shared<Stream>();
    const std::string& streamId = channel->Stream().Id().Value();
    if (!streamTable->ReadFirst(streamById, *stream, streamId)) continue;
    streamTable->ReadEssences(*stream);
    channel->Stream(StreamReference(std::move(stream)));
  }
}

int64_t TrackTable::GetObjectIdFromIdentifier(const Identifier& id) const {
  return keyByIdentifier.FindKey(AttachedDatabase(), id.Value());
}

bool TrackTable::BindToCursor(Cursor& cursor, Track& obj) {
  return cursor.Bind(columnNames[Column::Id], obj.Id().Value()) &&
         cursor.Bind(columnNames[Column::Name], obj.Name());
}

void TrackTable::ReadFromCursor(const Cursor& cursor, Track& obj, bool) {
  obj.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  obj.Id(cursor.GetString(columnNames[Column::Id]));
  obj.Name(cursor.GetString(columnNames[Column::Name]));
}

}  // namespace Oru::DataModel::MediaAssets::Database
