#pragma once

#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/DataModel/MediaAssets/Annotation.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetPage.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetSearch.h"
#include "Oru/DataModel/MediaAssets/Database/MediaAssetTable.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/MediaAssetSearchText.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/MediaResourceReader.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/RowsOfOwners.h"
#include "Oru/DataModel/MediaAssets/KeywordEncapsulated.h"
#include "Oru/DataModel/MediaAssets/MediaAsset.h"
#include "Oru/DataModel/MediaAssets/Track.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// Reads assets: each kind of row for all of them at once, so that the number of statements doesn't depend on
/// the number of assets. Each operation holds the connection's lock, and is one view of the file. Internal to
/// the library.
///
/// All operations throw InvalidOperationException, with a log entry, when SQLite fails or the database is
/// closed.
class MediaAssetReader {
 public:
  /// @param assets  must outlive this
  explicit MediaAssetReader(MediaAssetTable& assets);

  std::optional<MediaAsset> Read(const BusinessEntityModel::BaseTypes::Identifier& id, MediaAssetParts parts);
  /// @param orderValues  takes what each asset of the page has in the order, unless null
  MediaAssetPage Read(const MediaAssetSearch& search, MediaAssetParts parts,
                      std::vector<MediaAssetSearchText::Value>* orderValues = nullptr);
  /// The assets of those keys in that order, without those that aren't stored.
  std::vector<MediaAsset> Read(const std::vector<int64_t>& keys, MediaAssetParts parts);
  /// The keys of the search's page, in order.
  std::vector<int64_t> Keys(const MediaAssetSearch& search);
  int64_t Count(const MediaAssetSearch& search);
  /// How many rows the connection has written since it was opened.
  int64_t WrittenRows() const;

 private:
  using Assets = ObjectsByKey<MediaAsset>;

  Common::Databases::Sqlite::DatabaseSqlite& Database() const;
  MediaAssetSearchText::Value ValueBefore(const MediaAssetSearchText& text) const;
  bool AreAllWithProfile();
  std::vector<int64_t> Keys(const MediaAssetSearchText& text,
                            std::vector<MediaAssetSearchText::Value>* orderValues = nullptr);
  int64_t Count(const MediaAssetSearchText& text) const;
  void ReadParts(Assets& assets, const std::string& keys, MediaAssetParts parts);
  void ReadProfiles(Assets& assets, const std::string& keys);
  void ReadAnnotations(Assets& assets, const std::string& keys);
  void ReadResources(Assets& assets, const std::string& keys);
  void ReadTracks(Assets& assets, const std::string& keys);
  void ReadChannels(ObjectsByKey<Track>& tracks);

  MediaAssetTable& table;
  RowsOfOwners<MediaAsset> assetRows;
  RowsOfOwners<TimePoints::TimeBounds> bounds;
  RowsOfOwners<MetadataRow> metadata;
  RowsOfOwners<DapOperatorMetadataProfile> profiles;
  RowsOfOwners<KeywordEncapsulated> keywords;
  RowsOfOwners<Annotation> annotations;
  RowsOfOwners<MetadataRow> annotationMetadata;
  RowsOfOwners<MediaResource> resources;
  RowsOfOwners<Track> tracks;
  Common::Databases::Sqlite::PreparedStatement channels;
  MediaResourceReader resourceReader;
  Common::Databases::Sqlite::CursorSqlite dataVersion;
  // Whether all assets have a profile, and the state of the file that this was seen in: the number that another
  // connection's commit changes, and that of the rows that this one had written.
  struct {
    int64_t dataVersion = -1;
    int64_t writtenRows = -1;
    bool areAll = false;
  } withProfile;
};

}  // namespace Oru::DataModel::MediaAssets::Database
