#pragma once

#include "Oru/BusinessEntityModel/Edits/Database/EditTable.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/PropertiesTableSqlite.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupItemTable.h"
#include "Oru/DataModel/MediaAssets/Database/AnglesMediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/AudioEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/DataEssenceTable.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetGroupTable.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"
#include "Oru/DataModel/MediaAssets/Database/VideoEssenceTable.h"

#include <memory>
#include <ostream>
#include <set>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// A media-asset database in one SQLite file, and the way to all its tables.
///
///     DataModelDatabase database("clips.db", nullptr);
///     database.Open();
///     MediaAsset clip(MediaAssetId("clip-1"));
///     clip.Name("Opening");
///     database.GetMediaAssetTable().Save(clip);
///
/// This header alone has all the tables that the database gives.
///
/// `DatabaseSqlite` describes the connection text. Tables may be asked for before `Open`, and they work
/// while the database is open. They belong to the database.
///
/// Threads: opening, closing and destroying a database belong to one thread, while no other uses it; all else
/// may be called from several threads at once, and each table object serves one caller at a time.
class ORU_DATAMODEL_DATABASE_EXPORT DataModelDatabase : public Common::Databases::Sqlite::DatabaseSqlite {
 public:
  /// Opens nothing yet.
  /// @param connection  a path or a `file:` URI
  /// @param log         where failures are written, a line each; null for nowhere. Entries may show stored
  /// values
  DataModelDatabase(const std::string& connection, const std::shared_ptr<std::ostream>& log);
  /// The same without a connection text, which `Open` refuses.
  explicit DataModelDatabase(const std::shared_ptr<std::ostream>& log);
  /// Closes the database; cursors that are still open are closed first.
  ~DataModelDatabase() override;

  /// Opens the file, new or existing, and gives it the tables that it lacks. Nothing that is stored changes.
  /// A file that has everything is only read, beside a writer too.
  /// @throws as `DatabaseSqlite::Open` and `Create`; the database is closed then
  void Open() override;
  /// Makes what the file lacks of the tables, the full-text index, which then is filled, the look-up indexes
  /// and the numbers by which SQLite plans; sets the file's schema version to 2. All is done in one
  /// transaction, which waits for other writers once. `Open` does so by itself.
  /// @throws NotSupportedException, with SQLite's text, when the properties table can't be made. A later
  ///         script that fails leaves a log entry: a file that can only be read, say, can be read even so
  void Create();
  using DatabaseSqlite::RebuildFullTextIndex;
  /// Makes the index over names and descriptions of assets again.
  /// @return false, with a log entry of SQLite's text, when it refuses; the index is then as it was
  bool RebuildFullTextIndex();
  /// For what a derived class has to prepare; does nothing here.
  void Init();

  /// The named properties of the file.
  Common::Databases::Sqlite::PropertiesTableSqlite& GetProperties() { return properties; }

  /// Assets; saving and deleting one includes what belongs to it.
  MediaAssetTable& GetMediaAssetTable() { return mediaAssetTable; }
  /// Resources, with their streams.
  MediaResourceTable& GetMediaResourceTable() { return mediaAssetTable.GetMediaResourceTable(); }
  /// Which asset refers to which resources.
  RelationMediasTable& GetRelationMediaAssetMediaResource() {
    return mediaAssetTable.GetRelationMediasTable();
  }
  /// Streams, with their essences.
  StreamTable& GetStreamTable() { return mediaAssetTable.GetStreamTable(); }
  /// What essences of all kinds have in common.
  EssenceTable& GetEssenceTable() { return mediaAssetTable.GetEssenceTable(); }
  /// The essences of one kind:
  AudioEssenceTable& GetAudioEssenceTable() { return mediaAssetTable.GetAudioEssenceTable(); }
  DataEssenceTable& GetDataEssenceTable() { return mediaAssetTable.GetDataEssenceTable(); }
  VideoEssenceTable& GetVideoEssenceTable() { return mediaAssetTable.GetVideoEssenceTable(); }
  /// Tracks, with their channels.
  TrackTable& GetTrackTable() { return mediaAssetTable.GetTrackTable(); }
  /// Which asset refers to which tracks.
  RelationAssetTrackTable& GetRelationAssetTrackTable() {
    return mediaAssetTable.GetRelationAssetTrackTable();
  }
  /// Groups, plain ones and those of angles, with their items.
  MediaAssetGroupTable& GetMediaAssetGroupTable() { return mediaAssetGroupTable; }
  /// Multi-angle groups.
  AnglesMediaAssetGroupTable& GetAnglesMediaAssetGroupTable() {
    return mediaAssetGroupTable.GetAnglesMediaAssetGroupTable();
  }
  /// Items of groups.
  MediaAssetGroupItemTable& GetMediaAssetGroupItemTable() {
    return mediaAssetGroupTable.GetMediaAssetGroupItemTable();
  }
  /// The names of the angles, one an item.
  AnglesMediaAssetGroupItemTable& GetAnglesMediaAssetGroupItemTable() {
    return GetMediaAssetGroupItemTable().GetAnglesMediaAssetGroupItemTable();
  }
  /// Edits.
  BusinessEntityModel::Edits::Database::EditTable& GetEditTable() { return editTable; }
  /// The sequences of edits.
  BusinessEntityModel::Edits::Database::SequenceTable& GetSequenceTable() {
    return editTable.GetSequenceTable();
  }

  /// The scripts of the file: its tables, the full-text index with its triggers, what new tables hold at
  /// first, views (of which there are none), the indexes that make reads by owner fast, and statistics that
  /// let SQLite plan reads well:
  static const std::string createStatements;
  static const std::string indexStatements;
  static const std::string populateStatements;
  static const std::string viewStatements;
  static const std::string lookupIndexStatements;
  static const std::string statisticsStatements;

 private:
  static const std::string lackingStatistics;

  bool IsComplete();
  std::set<std::string> MissingObjects();
  bool HasStatistics();
  void MakeMissing();
  void RunOrThrow(const std::string& statement);
  void RunPart(const std::string& statements);

  MediaAssetTable mediaAssetTable;
  MediaAssetGroupTable mediaAssetGroupTable;
  BusinessEntityModel::Edits::Database::EditTable editTable;
  Common::Databases::Sqlite::PropertiesTableSqlite properties;
};

}  // namespace Oru::DataModel::MediaAssets::Database
