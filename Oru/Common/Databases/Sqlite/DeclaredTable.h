#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/KeptSelect.h"
#include "Oru/Common/Databases/Sqlite/OwnedRows.h"
#include "Oru/Common/Databases/Sqlite/TableSqlite.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::Common::Databases::Sqlite {

/// A table whose name and columns are statics of its class: `tableName` and `columnNames`, the key column
/// first.
/// @tparam Derived  the table class
///
/// Threads: one table object serves one caller at a time; different table objects of one database may be used
/// from different threads at once.
template <class Derived, class T, class U>
class ORU_COMMON_DATABASE_EXPORT DeclaredTable : public TableSqlite<T, U> {
 public:
  using TableSqlite<T, U>::TableSqlite;

  const std::string& GetTableName() const override { return static_cast<const Derived&>(*this).tableName; }
  const std::string& GetColumnName(int32_t index) const override {
    return Derived::columnNames[static_cast<std::size_t>(index)];
  }
  int32_t GetColumnsCount() const override { return static_cast<int32_t>(Derived::columnNames.size()); }
  const std::string& GetObjectIdColumnName() const override { return Derived::columnNames[0]; }

  /// What selects the rows of one owner, whose key is its parameter; without a text for a table whose rows
  /// have no owner.
  KeptSelect<T>& OwnedSelect() { return ownedSelect; }
  /// Deletes the rows of the owner with that key. That there are none is no failure.
  /// @return false, with a log entry, when the database refuses
  /// @throws InvalidOperationException for a table whose rows have no owner
  bool DeleteOwned(int64_t ownerKey) {
    DatabaseSqlite& db = this->AttachedDatabase();
    if (!ownedDeletion) throw InvalidOperationException();
    return ownedDeletion->Run(db, ownerKey);
  }

 protected:
  /// Says in which column the key of a row's owner stands. For constructors, behind `GenerateStatements`.
  void OwnerStandsIn(const std::string& column) {
    QuerySqlite owned = OwnedBy(column);
    ownedSelect = KeptSelect<T>(this->StatementGenerator().SelectToRun(owned).text);
    ownedDeletion = std::make_unique<OwnedRowsDeletion>(GetTableName(), column);
  }

 private:
  KeptSelect<T> ownedSelect;
  std::unique_ptr<OwnedRowsDeletion> ownedDeletion;
};

/// A declared table that extends another one: its key is the key of a row there, and its select yields the
/// columns of that table first and its own behind them, over the join of both that the static `fromClause`
/// writes.
/// @tparam BaseT  what the other table reads
///
/// Threads: one table object serves one caller at a time; different table objects of one database may be used
/// from different threads at once.
template <class Derived, class T, class U, class BaseT>
class ORU_COMMON_DATABASE_EXPORT ExtensionTable : public DeclaredTable<Derived, T, U> {
 public:
  /// @param extendedView  the table that is extended, which must outlive this one
  ExtensionTable(DatabaseSqlite& attachedDatabase, const ViewSqlite<BaseT>& extendedView)
      : DeclaredTable<Derived, T, U>(attachedDatabase), extended(extendedView) {
    this->mAutoIncrementedId = false;
  }

  const std::string& GetFromClause() const override { return Derived::fromClause; }
  int32_t GetSelectColumnsCount() const override {
    return extended.GetSelectColumnsCount() + this->GetColumnsCount();
  }
  const std::string& GetSelectColumnName(int32_t index) const override {
    const int32_t extendedCount = extended.GetSelectColumnsCount();
    return index < extendedCount ? extended.GetSelectColumnName(index)
                                 : this->GetColumnName(index - extendedCount);
  }

 private:
  const ViewSqlite<BaseT>& extended;
};

/// A table with at most one row per owner, under the owner's key.
///
/// Threads: one table object serves one caller at a time; different table objects of one database may be used
/// from different threads at once.
template <class Derived, class T, class U>
class ORU_COMMON_DATABASE_EXPORT OwnerKeyTable : public DeclaredTable<Derived, T, U> {
 public:
  /// @param attachedDatabase  must outlive the table
  explicit OwnerKeyTable(DatabaseSqlite& attachedDatabase) : DeclaredTable<Derived, T, U>(attachedDatabase) {
    this->mAutoIncrementedId = false;
  }

 protected:
  /// Stores the row of an owner, whose key becomes the object id. Whether it is inserted or updated follows
  /// from whether it exists, not from the object id: an object that came from another owner's row must not
  /// overwrite that.
  bool SaveUnder(int64_t ownerKey, U& obj, bool lazy) {
    this->SetObjectId(obj, this->Exists(ownerKey) ? ownerKey : -1);
    if (!DeclaredTable<Derived, T, U>::Save(obj, lazy)) return false;
    this->SetObjectId(obj, ownerKey);
    return true;
  }
};

/// A table whose rows have no key of their own: each save inserts, and the object id says nothing.
///
/// Threads: one table object serves one caller at a time; different table objects of one database may be used
/// from different threads at once.
template <class Derived, class T, class U>
class ORU_COMMON_DATABASE_EXPORT KeylessTable : public DeclaredTable<Derived, T, U> {
 public:
  /// @param attachedDatabase  must outlive the table
  explicit KeylessTable(DatabaseSqlite& attachedDatabase) : DeclaredTable<Derived, T, U>(attachedDatabase) {
    this->mAutoIncrementedId = false;
  }

  void SetObjectId(U&, int64_t) override {}
  int64_t GetObjectId(U&) const override { return -1; }
};

}  // namespace Oru::Common::Databases::Sqlite
