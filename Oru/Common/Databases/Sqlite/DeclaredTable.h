#pragma once

#include "Oru/Common/Databases/Export.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/Sqlite/OwnerRow.h"
#include "Oru/Common/Databases/Sqlite/PreparedStatement.h"
#include "Oru/Common/Databases/Sqlite/TableSqlite.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Oru::Common::Databases::Sqlite {

/// A table whose name and columns are statics of its class: `tableName` and `columnNames`, the key column
/// first.
/// @tparam Derived  the table class
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

  /// Walks the rows of the owner with that key, reading each into the same object.
  /// @param use  called with the object after each row; what it leaves in the object stays for the next row
  /// @throws as a cursor; InvalidOperationException also for a table whose rows have no owner, as the other
  ///         operations here
  template <class Use>
  void ForEachOwned(int64_t ownerKey, Use use) {
    PreparedStatement::Run run(Owned().select, this->AttachedDatabase(), ownerKey);
    for (T object{}; run.Step(); use(object))
      this->ReadFromCursor(run.Row(), object, true);
  }
  /// The same with a new object for each row.
  /// @param make  gives an owning pointer to a new object
  /// @param use   is called with that pointer after each row
  template <class Make, class Use>
  void ForEachOwned(int64_t ownerKey, Make make, Use use) {
    this->ForEachNew(Owned().select, make, use, ownerKey);
  }
  /// Reads the first row of the owner with that key.
  /// @return false, with `object` as it was, if there is none
  bool ReadOwned(int64_t ownerKey, T& object) { return this->ReadFirst(Owned().select, object, ownerKey); }
  /// Deletes the rows of the owner with that key. That there are none is no failure.
  /// @return false, with a log entry, when the database refuses
  bool DeleteOwned(int64_t ownerKey, OwnerRow owner = OwnerRow::Stored) {
    return owner == OwnerRow::New || Owned().deletion.Execute(this->AttachedDatabase(), ownerKey);
  }

 protected:
  const std::string* ConstantColumnNames(std::size_t& count) const override {
    count = Derived::columnNames.size();
    return Derived::columnNames.data();
  }
  /// Says which column holds the key of a row's owner. For constructors, after `GenerateStatements`.
  void SetOwnerColumn(const std::string& column) {
    QuerySqlite ofOwner;
    ofOwner.Equals(column, int64_t{});
    owned = std::make_unique<OwnedRows>(OwnedRows{
        PreparedStatement(this->StatementGenerator().SelectToRun(ofOwner).text),
        PreparedStatement("DELETE FROM " + GetTableName() + " WHERE " + column + " = ?"),
    });
  }

 private:
  // The statements for the rows of one owner, whose key is their parameter.
  struct OwnedRows {
    PreparedStatement select;
    PreparedStatement deletion;
  };

  OwnedRows& Owned() {
    this->AttachedDatabase();
    if (!owned) throw InvalidOperationException();
    return *owned;
  }

  // Null for a table whose rows have no owner.
  std::unique_ptr<OwnedRows> owned;
};

/// A declared table that extends another one: its key is the key of a row there, and its select has the
/// columns of that table first and its own after them, over the join of both in the static `fromClause`.
/// @tparam BaseT  what the other table reads
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
  /// @return false, with a log entry, when the database refuses
  bool SaveUnder(int64_t ownerKey, U& obj, bool lazy, OwnerRow owner = OwnerRow::Stored) {
    try {
      const bool isStored = owner == OwnerRow::Stored && this->Exists(ownerKey);
      this->SetObjectId(obj, isStored ? ownerKey : -1);
    } catch (const InvalidOperationException&) {
      return false;
    }
    if (!DeclaredTable<Derived, T, U>::Save(obj, lazy)) return false;
    this->SetObjectId(obj, ownerKey);
    return true;
  }
};

/// A table whose rows have no key of their own: each save inserts, and the object id says nothing.
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
