#include "Oru/DataModel/MediaAssets/Database/AnnotationTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/BoundaryColumns.h"
#include "Oru/DataModel/MediaAssets/Database/Rows/Changeable.h"

ORU_TABLE_TEMPLATES(, Oru::DataModel::MediaAssets::Annotation,
                    Oru::DataModel::MediaAssets::Database::AnnotationEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;

const std::string AnnotationTable::tableName = "Annotation";
const std::array<std::string, 8> AnnotationTable::columnNames = {
    "key",        "refMediaAsset",    "annotationType", "data",
    "inBoundary", "inBoundaryMoving", "outBoundary",    "outBoundaryMoving"};

AnnotationTable::AnnotationTable(Sqlite::DatabaseSqlite& db) : DeclaredTable(db) {
  GenerateStatements();
  SetOwnerColumn(columnNames[Column::RefMediaAsset]);
  metadataTable = std::make_unique<MetadataTable>("MetadataAnnotation", db);
}

AnnotationTable::~AnnotationTable() = default;

bool AnnotationTable::Write(std::vector<std::shared_ptr<Annotation>>& annotations, int64_t fk) {
  return Write(annotations, fk, Sqlite::OwnerRow::Stored);
}

bool AnnotationTable::Write(std::vector<std::shared_ptr<Annotation>>& annotations, int64_t fk,
                            Sqlite::OwnerRow owner) {
  return DeleteOwned(fk, owner) &&
         Sqlite::WriteEachObject(AttachedDatabase(), annotations, [&](Annotation& annotation) {
           AnnotationEncapsulated row(fk, annotation);
           // Its row is gone, so whatever key the object held names none.
           SetObjectId(row, -1);
           return Save(row);
         });
}

bool AnnotationTable::DeleteOnKey(int64_t key) {
  return DeleteOwned(key);
}

bool AnnotationTable::Save(AnnotationEncapsulated& obj, bool lazy) {
  const bool isNew = GetObjectId(obj) == -1;
  return DeclaredTable::Save(obj, lazy) &&
         metadataTable->Write(Changeable(obj.annotation).Metadata(), GetObjectId(obj),
                              Sqlite::OwnerRowThatIs(isNew));
}

bool AnnotationTable::BindToCursor(Cursor& cursor, AnnotationEncapsulated& obj) {
  const Annotation& annotation = obj.annotation;
  return cursor.Bind(columnNames[Column::RefMediaAsset], obj.fk) &&
         cursor.Bind(columnNames[Column::AnnotationType], static_cast<int32_t>(annotation.Type())) &&
         cursor.Bind(columnNames[Column::Data], annotation.Data()) &&
         BindBoundary(cursor, columnNames[Column::InBoundary], columnNames[Column::InBoundaryMoving],
                      annotation.TimeBounds().InBoundary()) &&
         BindBoundary(cursor, columnNames[Column::OutBoundary], columnNames[Column::OutBoundaryMoving],
                      annotation.TimeBounds().OutBoundary());
}

void AnnotationTable::ReadFromCursor(const Cursor& cursor, Annotation& obj, bool) {
  obj.ObjectId(cursor.GetInt64(columnNames[Column::Key]));
  obj.Type(static_cast<AnnotationType>(cursor.GetInt32(columnNames[Column::AnnotationType])));
  obj.Data(cursor.GetString(columnNames[Column::Data]));
  const TimePoints::TimeBoundary in =
      ReadBoundary(cursor, columnNames[Column::InBoundary], columnNames[Column::InBoundaryMoving]);
  const TimePoints::TimeBoundary out =
      ReadBoundary(cursor, columnNames[Column::OutBoundary], columnNames[Column::OutBoundaryMoving]);
  obj.TimeBounds(TimePoints::TimeBounds(in, out));
}

void AnnotationTable::SetObjectId(AnnotationEncapsulated& obj, int64_t objectId) {
  Changeable(obj.annotation).ObjectId(objectId);
}

}  // namespace Oru::DataModel::MediaAssets::Database
