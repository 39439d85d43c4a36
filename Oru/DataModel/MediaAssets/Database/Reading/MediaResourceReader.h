#pragma once

#include "Oru/BusinessEntityModel/BaseTypes/PersistentObject.h"
#include "Oru/DataModel/MediaAssets/Database/MediaResourceTable.h"
#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"
#include "Oru/DataModel/MediaAssets/Database/Reading/RowsOfOwners.h"
#include "Oru/DataModel/MediaAssets/Essence.h"
#include "Oru/DataModel/MediaAssets/MediaResource.h"
#include "Oru/DataModel/MediaAssets/Stream.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// Reads what belongs to media resources, for many of them at once: each kind of row by one statement.
/// Internal to the library.
class MediaResourceReader {
 public:
  /// @param table  must outlive this
  explicit MediaResourceReader(MediaResourceTable& table);

  /// Adds bounds, metadata and streams with their essences to resources that hold none of them.
  /// @param resources  sorted, one of each key
  void Read(ObjectsByKey<MediaResource>& resources);

 private:
  using PersistentObject = BusinessEntityModel::BaseTypes::PersistentObject;
  using Essences = std::vector<std::pair<Stream*, std::unique_ptr<Essence>>>;

  void ReadStreams(ObjectsByKey<MediaResource>& resources, const std::string& keys);
  void ReadEssences(ObjectsByKey<Stream>& streams, const std::string& keys);
  template <class Kind>
  static void ReadKind(RowsOfOwners<PersistentObject>& rows, ObjectsByKey<Stream>& streams,
                       const std::string& keys, Essences& essences);

  RowsOfOwners<TimePoints::TimeBounds> bounds;
  RowsOfOwners<MetadataRow> metadata;
  RowsOfOwners<PersistentObject> streamRows;
  RowsOfOwners<TimePoints::TimeBounds> streamBounds;
  RowsOfOwners<MetadataRow> streamMetadata;
  RowsOfOwners<PersistentObject> videoRows;
  RowsOfOwners<PersistentObject> audioRows;
  RowsOfOwners<PersistentObject> dataRows;
  RowsOfOwners<MetadataRow> essenceMetadata;
};

}  // namespace Oru::DataModel::MediaAssets::Database
