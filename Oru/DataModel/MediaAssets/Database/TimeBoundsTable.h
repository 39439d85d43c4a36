#pragma once

#include "Oru/Common/Databases/Sqlite/DeclaredTable.h"
#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"
#include "Oru/DataModel/MediaAssets/Database/Export.h"
#include "Oru/DataModel/MediaAssets/Database/TimeBoundsEncapsulated.h"
#include "Oru/DataModel/MediaAssets/TimeBoundsArray.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Oru::DataModel::MediaAssets::Database {

/// The time bounds of one kind of owner: each kind has a stored table of its own. The rows have no identity;
/// those of an owner are always written as a whole.
class ORU_DATAMODEL_DATABASE_EXPORT TimeBoundsTable
    : public Common::Databases::Sqlite::KeylessTable<TimeBoundsTable, TimePoints::TimeBounds,
                                                     TimeBoundsEncapsulated> {
 public:
  /// @param tableName  the stored table, as "TimeBoundsMediaAsset"
  TimeBoundsTable(const std::string& tableName, Common::Databases::Sqlite::DatabaseSqlite& database);
  ~TimeBoundsTable() override;

  using KeylessTable::Delete;
  using KeylessTable::ReadFromCursor;
  using KeylessTable::Save;

  /// Replaces the bounds of an owner by those of the array. The array's own in and out boundary aren't among
  /// them.
  /// @return false, with a log entry, at the first row that is refused; the old rows are gone then, and those
  ///         before it are written
  bool Write(TimeBoundsArray& timeBounds, int64_t fk);
  bool Write(TimeBoundsArray& timeBounds, int64_t fk, Common::Databases::Sqlite::OwnerRow owner);
  /// Deletes the bounds of an owner.
  bool DeleteOnKey(int64_t key);
  /// Always false, with a log entry: the rows have no key.
  bool Delete(int64_t key) override;
  /// Adds the stored bounds of an owner to an array.
  /// @throws std::runtime_error when the array already holds one of them
  void Read(int64_t fk, TimeBoundsArray& timeBounds);

  /// Inserts the bounds.
  bool Save(TimeBoundsEncapsulated& obj, bool lazy) override { return Insert(obj, lazy); }

  /// Empty: there is no key column.
  const std::string& GetObjectIdColumnName() const override { return emptyString; }
  bool BindToCursor(Common::Databases::Cursor& cursor, TimeBoundsEncapsulated& obj) override;
  void ReadFromCursor(const Common::Databases::Cursor& cursor, TimePoints::TimeBounds& obj,
                      bool lazy) override;

  /// The name of the stored table of this object.
  const std::string tableName;
  struct Column {
    enum : std::size_t { ForeignKey, InBoundary, InBoundaryMoving, OutBoundary, OutBoundaryMoving };
  };
  static const std::array<std::string, 5> columnNames;
  /// Empty, since these tables have no key column.
  static const std::string emptyString;
};

}  // namespace Oru::DataModel::MediaAssets::Database

ORU_TABLE_TEMPLATES(extern, Oru::TimePoints::TimeBounds,
                    Oru::DataModel::MediaAssets::Database::TimeBoundsEncapsulated)
