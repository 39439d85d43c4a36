#include "Oru/DataModel/MediaAssets/Database/TimeBoundsTable.h"

#include "Oru/Common/Databases/Sqlite/Writing/WriteEach.h"
#include "Oru/DataModel/MediaAssets/Database/Columns/BoundaryColumns.h"

ORU_TABLE_TEMPLATES(, Oru::TimePoints::TimeBounds,
                    Oru::DataModel::MediaAssets::Database::TimeBoundsEncapsulated)

namespace Oru::DataModel::MediaAssets::Database {

using namespace Common::Databases;
using TimePoints::TimeBounds;

const std::array<std::string, 5> TimeBoundsTable::columnNames = {
    "foreignKey", "inBoundary", "inBoundaryMoving", "outBoundary", "outBoundaryMoving"};
const std::string TimeBoundsTable::emptyString;

TimeBoundsTable::TimeBoundsTable(const std::string& name, Sqlite::DatabaseSqlite& db)
    : KeylessTable(db), tableName(name) {
  GenerateStatementsWithoutUpdate();
  SetOwnerColumn(columnNames[Column::ForeignKey]);
}

TimeBoundsTable::~TimeBoundsTable() = default;

bool TimeBoundsTable::Write(TimeBoundsArray& timeBounds, int64_t fk) {
  return Write(timeBounds, fk, Sqlite::OwnerRow::Stored);
}

bool TimeBoundsTable::Write(TimeBoundsArray& timeBounds, int64_t fk, Sqlite::OwnerRow owner) {
  return DeleteOwned(fk, owner) && Sqlite::WriteEach(timeBounds, [&](const TimeBounds& bounds) {
           TimeBoundsEncapsulated row(fk, bounds);
           return Save(row);
         });
}

bool TimeBoundsTable::DeleteOnKey(int64_t key) {
  return DeleteOwned(key);
}

bool TimeBoundsTable::Delete(int64_t) {
  AttachedDatabase().LogFailure("the rows of " + tableName + " have no key to delete by");
  return false;
}

void TimeBoundsTable::Read(int64_t fk, TimeBoundsArray& timeBounds) {
  ForEachOwned(fk, [&](const TimeBounds& bounds) { timeBounds.Insert(bounds); });
}

bool TimeBoundsTable::BindToCursor(Cursor& cursor, TimeBoundsEncapsulated& obj) {
  return cursor.Bind(columnNames[Column::ForeignKey], obj.fk) &&
         BindBoundary(cursor, columnNames[Column::InBoundary], columnNames[Column::InBoundaryMoving],
                      obj.bounds.InBoundary()) &&
         BindBoundary(cursor, columnNames[Column::OutBoundary], columnNames[Column::OutBoundaryMoving],
                      obj.bounds.OutBoundary());
}

void TimeBoundsTable::ReadFromCursor(const Cursor& cursor, TimeBounds& obj, bool) {
  const TimePoints::TimeBoundary in =
      ReadBoundary(cursor, columnNames[Column::InBoundary], columnNames[Column::InBoundaryMoving]);
  const TimePoints::TimeBoundary out =
      ReadBoundary(cursor, columnNames[Column::OutBoundary], columnNames[Column::OutBoundaryMoving]);
  obj = TimeBounds(in, out);
}

}  // namespace Oru::DataModel::MediaAssets::Database
