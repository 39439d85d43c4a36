#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/Identifier.h"
#include "Oru/BusinessEntityModel/BaseTypes/SortedVectorSharedPointer.h"
#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/StreamTable.h"
#include "Oru/DataModel/MediaAssets/Database/TrackChannelTable.h"
#include "Oru/DataModel/MediaAssets/Track.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// Tracks, with their channels. Several assets may share a track.
class ORU_DATAMODEL_DATABASE_EXPORT TrackTable
    : public Common::Databases::Sqlite::DeclaredTable<TrackTable, Track, Track> {
 public:
  /// @param database  must outlive the table
  explicit TrackTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~TrackTable() override;

  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Stores all tracks.
  /// @return false at the first track that fails; those before it are written
  bool Write(const BusinessEntityModel::BaseTypes::SortedVectorSharedPointer<Track>& tracks);
  /// Stores a track and replaces its channels, whose essences must be stored. An object id of -1 is looked up
  /// by the identifier.
  /// @return false, with a log entry, when a row is refused or the essence of a channel isn't stored
  bool Save(Track& obj, bool lazy) override;

  /// Appends the channels of a track, each with a stream of its own that holds its essences.
  void ReadTrackChannel(Track& track);
  /// Appends the channels of a track, each with the identifier of its stream only.
  void ReadTrackChannelLazy(Track& track);

  /// The key of the track with that identifier, -1 when there is none.
  int64_t GetObjectIdFromIdentifier(const BusinessEntityModel::BaseTypes::Identifier& id) const;

  TrackChannelTable& GetTrackChannelTable() { return *trackChannelTable; }

  bool BindToCursor(Common::Databases::Cursor& cursor, Track& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, Track& obj, bool lazy) override;
  void SetObjectId(Track& obj, int64_t objectId) override { obj.ObjectId(objectId); }
  int64_t GetObjectId(Track& obj) const override { return obj.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t { Key, Id, Name };
  };
  static const std::array<std::string, 3> columnNames;
  /// Finds the key of the row with an identifier, which the statement that is run takes as a parameter after
  /// it.
  static const std::string objectIdFromIdentifierQuery;

 private:
  std::unique_ptr<TrackChannelTable> trackChannelTable;
  std::unique_ptr<StreamTable> streamTable;
  Common::Databases::Sqlite::PreparedStatement streamById;
  mutable Common::Databases::Sqlite::PreparedStatement keyByIdentifier;
  Common::Databases::Sqlite::PreparedStatement lazyChannels;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::Track)
