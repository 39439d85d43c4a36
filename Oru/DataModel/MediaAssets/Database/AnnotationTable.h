#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Annotation.h"
#include "Oru/DataModel/MediaAssets/Database/AnnotationEncapsulated.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/MetadataTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Oru::DataModel::MediaAssets::Database {

/// The annotations of all assets, with their metadata. Those of an asset are written as a whole at each save,
/// under new keys: the key of an annotation isn't a lasting identity.
class ORU_DATAMODEL_DATABASE_EXPORT AnnotationTable
    : public Common::Databases::Sqlite::DeclaredTable<AnnotationTable, Annotation, AnnotationEncapsulated> {
 public:
  /// @param database  must outlive the table
  explicit AnnotationTable(Common::Databases::Sqlite::DatabaseSqlite& database);
  ~AnnotationTable() override;

  using DeclaredTable::ReadFromCursor;
  using DeclaredTable::Save;

  /// Replaces the annotations of an asset, each of which gets a new object id.
  /// @return false, with a log entry, at the first annotation that is refused; the old ones are gone then,
  ///         and those before it are written
  /// @throws std::bad_cast at a metadata profile that is neither generic nor the operator's; likewise
  bool Write(std::vector<std::shared_ptr<Annotation>>& annotations, int64_t fk);
  bool Write(std::vector<std::shared_ptr<Annotation>>& annotations, int64_t fk,
             Common::Databases::Sqlite::OwnerRow owner);
  /// Deletes the annotations of an asset, and their metadata with them.
  bool DeleteOnKey(int64_t key);

  /// Stores an annotation and replaces its metadata.
  bool Save(AnnotationEncapsulated& obj, bool lazy) override;

  MetadataTable& GetMetadataTable() { return *metadataTable; }

  bool BindToCursor(Common::Databases::Cursor& cursor, AnnotationEncapsulated& obj) override;
  /// Reads the row; the metadata come from `GetMetadataTable`.
  void ReadFromCursor(const Common::Databases::Cursor& cursor, Annotation& obj, bool lazy) override;
  void SetObjectId(AnnotationEncapsulated& obj, int64_t objectId) override;
  int64_t GetObjectId(AnnotationEncapsulated& obj) const override { return obj.annotation.ObjectId(); }

  static const std::string tableName;
  struct Column {
    enum : std::size_t {
      Key,
      RefMediaAsset,
      AnnotationType,
      Data,
      InBoundary,
      InBoundaryMoving,
      OutBoundary,
      OutBoundaryMoving
    };
  };
  static const std::array<std::string, 8> columnNames;

 private:
  std::unique_ptr<MetadataTable> metadataTable;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_TABLE_TEMPLATES(extern, Oru::DataModel::MediaAssets::Annotation,
                    Oru::DataModel::MediaAssets::Database::AnnotationEncapsulated)
