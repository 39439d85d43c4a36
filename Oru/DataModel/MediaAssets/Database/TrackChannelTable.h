#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/StreamTable.h"
#include "Oru/DataModel/MediaAssets/Database/TrackChannelEncapsulated.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// The channels of tracks. A stored channel refers to the row of its essence, which the model knows by the
/// stream's identifier and the essence's number.
class ORU_DATAMODEL_DATABASE_EXPORT TrackChannelTable
    : public Common::Databases::Sqlite::KeylessTable<TrackChannelTable, TrackChannelEncapsulated,
                                                     TrackChannelEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit TrackChannelTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~TrackChannelTable() override;

  using KeylessTable::ReadFromCursor;
  using KeylessTable::Save;

  /// Replaces the channels of a track. The essences must be stored.
  /// @return false, with a log entry, at the first channel whose essence isn't stored or that is refused; the
  ///         old channels are gone then, and those before it are written
  bool Write(std::vector<std::shared_ptr<TrackChannelToRemove>>& channels, int64_t trackKey, bool lazy);
  bool Write(std::vector<std::shared_ptr<TrackChannelToRemove>>& channels, int64_t trackKey, bool lazy,
             Common::Databases::Sqlite::OwnerRow track);

  /// Inserts the channel.
  bool Save(TrackChannelEncapsulated& obj, bool lazy) override { return Insert(obj, lazy); }

  bool BindToCursor(Common::Databases::Cursor& cursor, TrackChannelEncapsulated& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, TrackChannelEncapsulated& obj,
                      bool lazy) override;

  static const std::string tableName;
  struct Column {
    enum : std::size_t { RefTrack, RefEssence, ChannelNr };
  };
  static const std::array<std::string, 3> columnNames;

 private:
  std::unique_ptr<StreamTable> streamTable;
  Common::Databases::Sqlite::PreparedStatement essenceByStreamAndNr;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_ENTITY_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::Database::TrackChannelEncapsulated)
